#include "Questions.h"

#include "Autosave.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Questions", text);
}

}  // namespace

SaveAnswer askToSave(QWidget* parent, const QString& name) {
    const QMessageBox::StandardButton answer = QMessageBox::question(
        parent, tr("Unsaved changes"), tr("%1 has changed. Save it?").arg(name),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    switch (answer) {
        case QMessageBox::Save:
            return SaveAnswer::Save;
        case QMessageBox::Discard:
            return SaveAnswer::Discard;
        default:
            return SaveAnswer::Cancel;
    }
}

RecoverAnswer askToRecover(QWidget* parent, const Autosave& autosave) {
    const QString time =
        QLocale().toString(QFileInfo(autosave.fileName()).lastModified(), QLocale::ShortFormat);
    const QString project =
        autosave.projectFile().isEmpty() ? tr("A project without a name") : autosave.projectFile();
    QMessageBox box(
        QMessageBox::Question, tr("Recover changes"),
        tr("%1 was not closed. Its changes up to %2 can be recovered.").arg(project, time),
        QMessageBox::Cancel, parent);
    const QAbstractButton* recover = box.addButton(tr("&Recover"), QMessageBox::AcceptRole);
    const QAbstractButton* discard = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    box.exec();
    if (box.clickedButton() == recover) {
        return RecoverAnswer::Recover;
    }
    return box.clickedButton() == discard ? RecoverAnswer::Discard : RecoverAnswer::Cancel;
}

bool askToSaveDespite(QWidget* parent, const QString& losses) {
    return QMessageBox::warning(
               parent, tr("Not all can be saved"), tr("%1. Save the rest?").arg(losses),
               QMessageBox::Save | QMessageBox::Cancel, QMessageBox::Cancel) == QMessageBox::Save;
}

bool askToReplaceChanged(QWidget* parent, const QString& fileName) {
    QMessageBox box(QMessageBox::Warning, tr("Changed elsewhere"),
                    tr("%1 has been changed by another program since it was opened or saved here. "
                       "Replace what it holds now?")
                        .arg(fileName),
                    QMessageBox::Cancel, parent);
    const QAbstractButton* replace = box.addButton(tr("&Replace"), QMessageBox::DestructiveRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == replace;
}

void tellRemarks(QWidget* parent, const QString& name, const QStringList& remarks) {
    constexpr int MostShown = 10;
    QMessageBox box(QMessageBox::Information, tr("Imported"),
                    tr("%1 was imported. Look at these:").arg(name), QMessageBox::Ok, parent);
    QString shown = remarks.mid(0, MostShown).join(QLatin1Char('\n'));
    if (remarks.size() > MostShown) {
        shown += QLatin1Char('\n') +
                 tr("and %1 more, under the details.").arg(remarks.size() - MostShown);
        box.setDetailedText(remarks.join(QLatin1Char('\n')));
    }
    box.setInformativeText(shown);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

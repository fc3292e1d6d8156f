#include "PictureExport.h"

#include "MainWindow.h"
#include "OperatingPoint.h"
#include "ProjectManager.h"
#include "Settings.h"
#include "Workbench.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QMetaObject>
#include <QStatusBar>

namespace {

const QString MarginKey = QStringLiteral("PictureMargin");
constexpr double Margin = 20;  // scene units

QString suffixOf(PictureFormat format) {
    for (const QString& suffix : pictureSuffixes()) {
        if (pictureFormatOf(QStringLiteral("x") + suffix) == format) {
            return suffix.mid(1);
        }
    }
    return {};
}

}  // namespace

PictureExport::PictureExport(Workbench* workbench, MainWindow* window)
    : QObject(window), m_workbench(workbench), m_window(window) {}

void PictureExport::exportAs(PictureFormat format) {
    const QString suffix = suffixOf(format);
    const QFileInfo project(m_workbench->projectManager()->projectFileName());
    const bool hasFile = !project.filePath().isEmpty();
    QFileDialog dialog(m_window, tr("Export as %1").arg(suffix.toUpper()),
                       hasFile ? project.absolutePath() : QDir::homePath());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(tr("%1 files (*.%2)").arg(suffix.toUpper(), suffix));
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile((hasFile ? project.completeBaseName() : tr("Untitled")) + QLatin1Char('.') +
                      suffix);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    // What hangs at the pointer is no part of the drawing.
    QMetaObject::invokeMethod(m_workbench->editorWidget(), "stopPlacing");
    const QString file = dialog.selectedFiles().first();
    QString error;
    std::unique_ptr<ValueItems> values;
    if (m_withValues && m_withValues->isChecked() &&
        !(values = operatingPointItems(*m_workbench, &error))) {
        QMessageBox::information(m_window, tr("Cannot export"), error);
        return;
    }
    if (m_workbench->savePicture({format, file}, &error)) {
        m_window->statusBar()->showMessage(tr("Wrote %1").arg(QDir::toNativeSeparators(file)));
    } else if (!error.isEmpty()) {
        QMessageBox::information(m_window, tr("Cannot export"), error);
    }
}

void PictureExport::followMargin(QAction* action) {
    action->setCheckable(true);
    const auto apply = [this](bool on) {
        m_workbench->editorWidget()->setProperty("PictureMargin", on ? Margin : 0.0);
    };
    action->setChecked(Settings().value(MarginKey, false).toBool());
    apply(action->isChecked());
    connect(action, &QAction::toggled, this, [apply](bool on) {
        Settings().setValue(MarginKey, on);
        apply(on);
    });
}

void PictureExport::followValues(QAction* action) {
    m_withValues = action;
    action->setCheckable(true);
}

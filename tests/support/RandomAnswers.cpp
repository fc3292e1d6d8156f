#include "RandomAnswers.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QRandomGenerator>
#include <QSpinBox>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

namespace {

/// Those that can be chosen, of sub-menus too.
QList<QAction*> entriesOf(const QMenu* menu) {
    QList<QAction*> entries;
    for (QAction* action : menu->actions()) {
        if (!action->isEnabled() || !action->isVisible() || action->isSeparator()) {
            continue;
        }
        entries.append(action->menu() ? entriesOf(action->menu()) : QList<QAction*>{action});
    }
    return entries;
}

}  // namespace

int numberIn(const char* variable, int usual) {
    bool isSet = false;
    const int value = qEnvironmentVariableIntValue(variable, &isSet);
    return isSet ? value : usual;
}

RandomAnswers::RandomAnswers(QRandomGenerator* random) : m_random(*random) {
    qApp->installEventFilter(this);
}

bool RandomAnswers::eventFilter(QObject* watched, QEvent* event) {
    auto* window = event->type() == QEvent::Show ? qobject_cast<QWidget*>(watched) : nullptr;
    if (window && (qobject_cast<QMenu*>(window) || qobject_cast<QDialog*>(window))) {
        QTimer::singleShot(0, window, [this, window] { answer(window); });
    }
    return false;
}

QString RandomAnswers::word() {
    const QStringList words = {"", "R1", "4.7k", "{2*k}", "k", "a b", "Ω<&]]>", "-1e400", "100"};
    return words.at(m_random.bounded(words.size()));
}

void RandomAnswers::answer(QWidget* window) {
    if (!window->isVisible()) {
        return;
    }
    if (auto* menu = qobject_cast<QMenu*>(window)) {
        choose(menu);
        return;
    }
    const QPointer<QDialog> dialog = qobject_cast<QDialog*>(window);
    if (auto* box = qobject_cast<QMessageBox*>(window)) {
        const QList<QAbstractButton*> buttons = box->buttons();
        buttons.at(m_random.bounded(buttons.size()))->click();
    } else if (auto* fileDialog = qobject_cast<QFileDialog*>(window)) {
        fileDialog->setOption(QFileDialog::DontConfirmOverwrite);
        if (!files.isEmpty() && m_random.bounded(3)) {
            fileDialog->selectFile(files.at(m_random.bounded(files.size())));
            QMetaObject::invokeMethod(fileDialog, "accept");
        }
    } else {
        fill(dialog);
        if (dialog && m_random.bounded(3)) {
            QMetaObject::invokeMethod(dialog, "accept");
        }
    }
    if (dialog && dialog->isVisible()) {
        dialog->reject();
    }
}

void RandomAnswers::choose(QMenu* menu) {
    const QList<QAction*> entries = entriesOf(menu);
    QAction* entry = m_random.bounded(6) && !entries.isEmpty()
                         ? entries.at(m_random.bounded(entries.size()))
                         : nullptr;
    if (entry && menu->actions().contains(entry)) {
        menu->setActiveAction(entry);
        QTest::keyClick(menu, Qt::Key_Return);
        return;
    }
    const QPointer<QAction> chosen = entry;
    menu->close();
    if (chosen) {
        chosen->trigger();
    }
}

void RandomAnswers::fill(QDialog* dialog) {
    const QPointer<QDialog> open = dialog;
    QList<QPointer<QWidget>> fields;
    for (QWidget* field : dialog->findChildren<QWidget*>()) {
        if (field->isVisible() && field->isEnabled() && m_random.bounded(2)) {
            fields.append(field);
        }
    }
    for (const QPointer<QWidget>& field : qAsConst(fields)) {
        if (!open) {
            return;
        }
        if (auto* line = qobject_cast<QLineEdit*>(field)) {
            line->setText(word());
        } else if (auto* text = qobject_cast<QTextEdit*>(field)) {
            text->insertPlainText(word());
        } else if (auto* number = qobject_cast<QSpinBox*>(field)) {
            number->setValue(m_random.bounded(-10, 200));
        } else if (auto* choice = qobject_cast<QComboBox*>(field)) {
            choice->setCurrentIndex(m_random.bounded(choice->count() + 1) - 1);
        } else if (auto* box = qobject_cast<QCheckBox*>(field)) {
            box->click();
        } else if (auto* view = qobject_cast<QAbstractItemView*>(field)) {
            view->setCurrentIndex(view->indexAt({m_random.bounded(100), m_random.bounded(100)}));
            QTest::keyClick(view, Qt::Key_Space);
        } else if (auto* button = qobject_cast<QAbstractButton*>(field)) {
            // Which may open a dialog of its own, or close this one.
            if (m_random.bounded(8) == 0) {
                button->click();
            }
        }
    }
}

#include "DialogDriver.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace {

QString entriesOf(const QMenu& menu) {
    QStringList entries;
    for (const QAction* action : menu.actions()) {
        entries << (action->isSeparator() ? QStringLiteral("-") : action->text());
    }
    return entries.join(QLatin1Char('|'));
}

void dismiss(QWidget* window) {
    if (auto* dialog = qobject_cast<QDialog*>(window)) {
        dialog->reject();
    } else {
        window->close();
    }
}

}  // namespace

DialogDriver::DialogDriver() {
    qApp->installEventFilter(this);
}

DialogDriver::~DialogDriver() {
    EXPECT_TRUE(m_answers.isEmpty())
        << m_answers.size() << " dialogs or menus were expected and never opened";
}

void DialogDriver::queue(Answer answer) {
    m_answers.append(std::move(answer));
}

void DialogDriver::accept() {
    queue([](QWidget* window) { QMetaObject::invokeMethod(window, "accept"); });
}

void DialogDriver::reject() {
    queue([](QWidget* window) { QMetaObject::invokeMethod(window, "reject"); });
}

void DialogDriver::chooseFile(const QString& fileName) {
    queue([fileName](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        ASSERT_NE(dialog, nullptr) << "not a file dialog: " << qPrintable(window->windowTitle());
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        dialog->selectFile(fileName);
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

void DialogDriver::chooseEntry(const QString& text) {
    queue([text](QWidget* window) {
        auto* menu = qobject_cast<QMenu*>(window);
        ASSERT_NE(menu, nullptr) << "not a menu: " << qPrintable(window->windowTitle());
        for (QAction* action : menu->actions()) {
            if (action->text() == text && action->isEnabled() && action->isVisible()) {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
                return;
            }
        }
        ADD_FAILURE() << "no entry \"" << qPrintable(text) << "\" in "
                      << qPrintable(entriesOf(*menu));
        menu->close();
    });
}

void DialogDriver::closeMenu() {
    queue(&dismiss);
}

bool DialogDriver::eventFilter(QObject* watched, QEvent* event) {
    auto* window = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Show && window && window->isWindow() &&
        (qobject_cast<QDialog*>(window) || qobject_cast<QMenu*>(window))) {
        // Its own event loop runs first, as a user's answer would come.
        QTimer::singleShot(0, this, [this, guarded = QPointer<QWidget>(window)] {
            if (guarded && guarded->isVisible()) {
                answer(guarded);
            }
        });
    }
    return QObject::eventFilter(watched, event);
}

void DialogDriver::answer(QWidget* window) {
    titles << window->windowTitle();
    if (const auto* box = qobject_cast<QMessageBox*>(window)) {
        texts << box->text();
    } else if (const auto* menu = qobject_cast<QMenu*>(window)) {
        texts << entriesOf(*menu);
    } else {
        texts << QString();
    }
    const QPointer<QWidget> guarded(window);
    if (m_answers.isEmpty()) {
        ADD_FAILURE() << "nobody expected \"" << qPrintable(titles.last())
                      << "\": " << qPrintable(texts.last());
    } else {
        m_answers.takeFirst()(window);
    }
    if (guarded && guarded->isVisible()) {
        dismiss(guarded);
    }
}

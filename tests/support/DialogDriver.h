#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>

class QMenu;

/// Answers the dialogs and menus that the code under test opens and waits for. Answers are queued
/// before the code runs; each is given to the next dialog or menu that opens, nested ones included.
/// A dialog that no answer waits for is closed and fails the test, and so does an answer that is
/// left when the driver goes.
class DialogDriver : public QObject {
public:
    using Answer = std::function<void(QWidget*)>;

    DialogDriver();
    ~DialogDriver() override;

    void queue(Answer answer);
    void accept();
    void reject();
    /// The next dialog asks for a file: this one is chosen.
    void chooseFile(const QString& fileName);
    /// The next menu: the entry with this text is chosen, and must be there and enabled.
    void chooseEntry(const QString& text);
    void closeMenu();

    /// Of everything that opened, in order. A menu's text is its entries, divided by "|".
    QStringList titles;
    QStringList texts;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answer(QWidget* window);

    QList<Answer> m_answers;
};

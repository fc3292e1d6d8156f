#pragma once

#include <QObject>
#include <QStringList>

class QDialog;
class QMenu;
class QRandomGenerator;
class QWidget;

/// What an environment variable says, or the usual number.
int numberIn(const char* variable, int usual);

/// Answers whatever opens: chooses any entry of a menu or none, fills in anything in a dialog, and
/// accepts or rejects. Nothing stays open that code could wait for.
class RandomAnswers : public QObject {
public:
    explicit RandomAnswers(QRandomGenerator* random);

    /// What is chosen where a file is asked for; none if there are none.
    QStringList files;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answer(QWidget* window);
    void choose(QMenu* menu);
    void fill(QDialog* dialog);
    QString word();

    QRandomGenerator& m_random;
};

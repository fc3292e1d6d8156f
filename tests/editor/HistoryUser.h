#pragma once

#include "DrawingTest.h"

#include <QApplication>
#include <QRandomGenerator>

/// One thing that a user does: what it means in detail depends on the drawing and on the seed.
struct UserStep {
    int kind;
    quint32 seed;
};

/// Says yes or no to whatever is asked, as was last set.
class Answers : public QObject {
public:
    Answers() { qApp->installEventFilter(this); }
    bool yes = true;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// A user who does anything, in an editor with a complete history.
class HistoryUser : public DrawingTest {
protected:
    HistoryUser();
    ~HistoryUser() override;

    static constexpr int StepKinds = 24;
    void perform(const UserStep& step);
    /// An empty drawing, with nothing selected, copied or under way.
    void startAnew();
    /// What `describe` tells and a project holds, after a turn of the event loop.
    QByteArray state();
    /// Performs the steps, then undoes and redoes all. Empty, or what is wrong.
    QString mistakeIn(const QVector<UserStep>& steps);
    int undoable() const;

private:
    QPointF point();
    QPointF terminalPoint();
    CCircuitEditorElementItem* anyElement();
    QGraphicsItem* anyBox();
    ICircuitNode* anyNet();
    void draw(int kind);
    void wire();
    void selectAndDo();
    void useClipboard();
    void annotate();
    void changeBox();
    void changeParameters();
    void changeProperty();
    void changeOutputs();
    void cutNet();

    QRandomGenerator m_random;
    Answers m_answers;
};

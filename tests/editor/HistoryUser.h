#pragma once

#include "DrawingTest.h"
#include "RandomAnswers.h"

#include <QRandomGenerator>

#include <functional>
#include <vector>

/// One thing that a user does: what it means in detail depends on the drawing and on the seed.
struct UserStep {
    int kind;
    quint32 seed;
};

/// A user who does anything, in an editor with a complete history, and more rarely without.
class HistoryUser : public DrawingTest {
protected:
    HistoryUser();
    ~HistoryUser() override;

    static constexpr int StepKinds = 32;
    /// The kinds below leave the editor's properties and collaborators as they are.
    static constexpr int SteadyKinds = 28;
    void perform(const UserStep& step);
    /// An empty drawing, with nothing selected, copied or under way.
    void startAnew();
    /// What `describe` tells and a project holds, after a turn of the event loop.
    QByteArray state();
    /// Performs the steps, then undoes and redoes all. Empty, or what is wrong.
    QString mistakeIn(const QVector<UserStep>& steps);
    /// The same in a process of its own, whose end may be the mistake.
    QString mistakeInChild(const QVector<UserStep>& steps);
    /// As few steps as show a mistake: takes out what it doesn't need.
    void cutDown(QVector<UserStep>* steps, QString* mistake);
    static QString text(const QVector<UserStep>& steps);
    static QVector<UserStep> steps(const QByteArray& text);
    int undoable() const;

private:
    QPointF point();
    QPointF terminalPoint();
    CCircuitEditorElementItem* anyElement();
    QGraphicsItem* anyBox();
    ICircuitNode* anyNet();
    void oneOf(const std::vector<std::function<void()>>& ways);
    void createAnything();
    void placeTwo();
    void wire();
    void selectAndDo();
    void useClipboard();
    void annotate();
    void changeBox();
    void changeParameters();
    void changeProperty();
    void changeOutputs();
    void cutNet();
    void openMenu();
    void pickOutput();
    void switchProperty();
    void reload();
    /// Takes one of the editor's collaborators away, or gives all back.
    void changeCollaborators();
    void giveCollaborators();
    void setProperties(bool on);
    /// What must hold after each step; empty if it does.
    QStringList breaches();

    QRandomGenerator m_random;
    RandomAnswers m_answers{&m_random};
    /// What the steps themselves have found.
    QStringList m_mistakes;
    bool m_isComplete = true;
    /// Every ability is on, and no collaborator is missing.
    bool m_isAllOn = true;
    /// They were so all the time.
    bool m_isSteady = true;
};

#pragma once

#include <QAction>
#include <QByteArray>
#include <QPointer>

/// Puts what an object has to say behind an action's own text: "Undo R1 Element movement". Belongs
/// to the action.
class ActionText : public QObject {
    Q_OBJECT

public:
    /// `method` is an invokable of the object that answers a QString.
    ActionText(QAction* action, QObject* object, QByteArray method);

public slots:
    void refresh();

private:
    QAction* m_action;
    QString m_ownText;
    QPointer<QObject> m_object;
    QByteArray m_method;
};

#pragma once

#include <QList>
#include <QObject>
#include <QUndoCommand>

#include <memory>

class CUndoRedoStack;
class CUndoRedoStackData;

/// A command of the editor's history, which the stack keeps informed about the objects it names.
class CUndoRedoCmdBase : public QUndoCommand {
public:
    ~CUndoRedoCmdBase() override;

    bool mergeWith(const QUndoCommand* other) override;

    /// A referenced object is dying: `object` is good as a key only.
    virtual void referenceObjectDestroyed(QObject* object);
    /// Another command has re-created the object `old` as `now`.
    virtual void referenceObjectChanged(QObject* old, QObject* now);

    /// The objects to watch for this command; filled by the constructor of the command.
    QList<QObject*> referenceObjects;
    /// Set while the command belongs to a stack.
    CUndoRedoStack* stack = nullptr;
};

/// The editor's history. Commands record what was already done: `push` never runs `redo()`. Beside
/// its two stacks it watches the objects that commands refer to, because model objects can die
/// while commands still name them, and re-created objects are different objects. Owns its commands.
class CUndoRedoStack : public QObject {
    Q_OBJECT

public:
    explicit CUndoRedoStack(QObject* parent);
    ~CUndoRedoStack() override;

    /// Takes ownership, unless the command's id differs from that of the command on top: such a
    /// command is neither stored nor deleted. A command that the top merges is deleted at once.
    void push(QUndoCommand* cmd);
    /// While set, `push` deletes what it is given: another history records everything, and enters
    /// it with `pushComplete`.
    void setComplete(bool on);
    /// Takes ownership; a command that the top merges is deleted at once. What was undone can't be
    /// redone any more.
    void pushComplete(QUndoCommand* cmd);
    /// Takes the command out, and gives its ownership to the caller.
    void remove(QUndoCommand* cmd);

    int count() const;
    /// How many of them can be undone.
    int undoCount() const;
    /// Always true: the truthful state travels in `canUndoChanged` and `canRedoChanged`.
    bool canUndo() const;
    bool canRedo() const;
    QString undoText() const;
    QString redoText() const;

    /// Whether objects are watched for commands on one of the two stacks only: it always holds, and
    /// checkers ask.
    bool watchesOwnCommandsOnly() const;

    /// Hands on the pointer of an object that a command has just re-created. Works only for an
    /// `old` that is still watched.
    void notifyObjectPointerChange(QObject* old, QObject* now);

public slots:
    void clear();
    void undo();
    void redo();

signals:
    void canUndoChanged(bool val);
    void canRedoChanged(bool val);
    void stackCleared();
    void undone(QString text);
    void redone(QString text);
    void countChanged(int count);

protected slots:
    void on_object_destroyed(QObject* obj);

private:
    void append(QUndoCommand* cmd);
    void addCommand(CUndoRedoCmdBase* cmd);
    void removeCommand(CUndoRedoCmdBase* cmd);
    void discardRedoCommands();
    void emitCanChanged();

    std::unique_ptr<CUndoRedoStackData> d;
};

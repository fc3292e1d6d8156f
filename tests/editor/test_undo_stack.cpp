// The history: order, merging, discarding and the watching of objects.

#include "CUndoRedo.h"
#include "WarningGuard.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <memory>

namespace {

struct Journal {
    QStringList lines;
    int alive = 0;
};

class Command : public CUndoRedoCmdBase {
public:
    Command(Journal& journal, const QString& name, QList<QObject*> objects = {})
        : m_journal(journal) {
        setText(name);
        referenceObjects = std::move(objects);
        ++m_journal.alive;
    }
    ~Command() override { --m_journal.alive; }

    int id() const override { return commandId; }
    void undo() override {
        m_journal.lines << QStringLiteral("undo ") + text();
        delete killAtUndo.release();
    }
    void redo() override { m_journal.lines << QStringLiteral("redo ") + text(); }
    bool mergeWith(const QUndoCommand*) override { return merges; }
    void referenceObjectDestroyed(QObject* object) override {
        m_journal.lines << QStringLiteral("%1 lost %2").arg(text(), name(object));
    }
    void referenceObjectChanged(QObject*, QObject* now) override {
        m_journal.lines << QStringLiteral("%1 got %2").arg(text(), now->objectName());
    }
    static QString name(QObject* object) {
        // In its destructor only the base is left, with the name.
        return object->objectName();
    }

    bool merges = false;
    int commandId = -1;
    std::unique_ptr<QObject> killAtUndo;

private:
    Journal& m_journal;
};

std::unique_ptr<QObject> named(const char* name) {
    auto object = std::make_unique<QObject>();
    object->setObjectName(QString::fromLatin1(name));
    return object;
}

class UndoStack : public testing::Test {
protected:
    UndoStack() {
        announceLog(QStringLiteral("Undo: "));
        announceLog(QStringLiteral("Redo: "));
    }

    Command* push(const char* name, QList<QObject*> objects = {}) {
        auto* command = new Command(journal, QString::fromLatin1(name), std::move(objects));
        stack->push(command);
        return command;
    }
    int redoCount() {
        int count = 0;
        while (!stack->redoText().isEmpty()) {
            stack->redo();
            ++count;
        }
        return count;
    }

    Journal journal;
    std::unique_ptr<CUndoRedoStack> stack = std::make_unique<CUndoRedoStack>(nullptr);
};

}  // namespace

TEST_F(UndoStack, PushRecordsAndNeverExecutes) {
    QSignalSpy canUndo(stack.get(), &CUndoRedoStack::canUndoChanged);
    QSignalSpy canRedo(stack.get(), &CUndoRedoStack::canRedoChanged);
    QSignalSpy count(stack.get(), &CUndoRedoStack::countChanged);
    QSignalSpy undone(stack.get(), &CUndoRedoStack::undone);
    stack->push(nullptr);
    EXPECT_TRUE(canUndo.isEmpty() && count.isEmpty());
    push("a");
    push("b");
    EXPECT_TRUE(journal.lines.isEmpty());
    EXPECT_EQ(stack->undoText(), QStringLiteral("b"));
    stack->undo();
    EXPECT_EQ(stack->redoText(), QStringLiteral("b"));
    EXPECT_EQ(undone.at(0).at(0).toString(), QStringLiteral("b"));
    EXPECT_EQ(loggedCount(QStringLiteral("Undo: b")), 1);
    stack->undo();
    EXPECT_EQ(canUndo.last().at(0).toBool(), false);
    stack->redo();
    EXPECT_EQ(canUndo.last().at(0).toBool(), true);
    EXPECT_EQ(journal.lines, (QStringList{"undo b", "undo a", "redo a"}));
    EXPECT_EQ(count.size(), 2);  // undo and redo don't change the count
    EXPECT_EQ(stack->count(), 2);
}

TEST_F(UndoStack, APushDiscardsTheTopHalfOfTheRedoCommands) {
    const struct {
        int undone;
        int left;
    } rows[] = {{1, 0}, {2, 1}, {3, 1}, {4, 2}, {5, 2}};
    for (const auto& row : rows) {
        stack->clear();
        for (int i = 0; i < row.undone; ++i) {
            push("old");
        }
        for (int i = 0; i < row.undone; ++i) {
            stack->undo();
        }
        QSignalSpy canRedo(stack.get(), &CUndoRedoStack::canRedoChanged);
        push("new");
        EXPECT_EQ(canRedo.last().at(0).toBool(), row.left > 0);
        EXPECT_EQ(journal.alive, row.left + 1);
        EXPECT_EQ(redoCount(), row.left);
    }
}

TEST_F(UndoStack, MergedAndForeignCommands) {
    Command* top = push("top");
    top->merges = true;
    QSignalSpy count(stack.get(), &CUndoRedoStack::countChanged);
    push("merged");
    EXPECT_EQ(journal.alive, 1);
    ASSERT_EQ(count.size(), 1);
    EXPECT_EQ(count.at(0).at(0).toInt(), 1);
    // Another id: neither stored nor deleted, but the signals go out.
    auto foreign = std::make_unique<Command>(journal, QStringLiteral("foreign"));
    foreign->commandId = 7;
    stack->push(foreign.get());
    EXPECT_EQ(stack->count(), 1);
    EXPECT_EQ(foreign->stack, nullptr);
    EXPECT_EQ(count.size(), 2);
    // A command that is none of the editor's takes no part in the watching.
    top->merges = false;
    stack->push(new QUndoCommand(QStringLiteral("plain")));
    stack->undo();
    EXPECT_EQ(stack->redoText(), QStringLiteral("plain"));
}

TEST_F(UndoStack, CommandsLearnOfADeathOnEitherStack) {
    auto object = named("x");
    push("a", {object.get(), nullptr});
    push("b", {object.get()});
    stack->undo();
    journal.lines.clear();
    object.reset();
    EXPECT_EQ(journal.lines, (QStringList{"a lost x", "b lost x"}));
}

TEST_F(UndoStack, ACommandIsNotToldWhatDiesDuringItsOwnUndo) {
    auto object = named("x");
    push("other", {object.get()});
    Command* command = push("own", {object.get()});
    command->killAtUndo = std::move(object);
    stack->undo();
    EXPECT_EQ(journal.lines, (QStringList{"undo own", "other lost x"}));
}

TEST_F(UndoStack, HandsOnThePointerOfALivingObjectOnly) {
    auto old = named("old");
    auto now = named("now");
    push("a", {old.get()});
    push("b", {now.get()});
    stack->notifyObjectPointerChange(old.get(), nullptr);
    stack->notifyObjectPointerChange(nullptr, now.get());
    EXPECT_TRUE(journal.lines.isEmpty());
    stack->notifyObjectPointerChange(old.get(), now.get());
    EXPECT_EQ(journal.lines, QStringList{"a got now"});
    old.reset();  // no key any more
    journal.lines.clear();
    now.reset();
    EXPECT_EQ(journal.lines, (QStringList{"b lost now", "a lost now"}));

    // A death comes first: what was told of it stays inert.
    auto dead = named("dead");
    QObject* key = dead.get();
    push("c", {key});
    dead.reset();
    journal.lines.clear();
    auto heir = named("heir");
    stack->notifyObjectPointerChange(key, heir.get());
    EXPECT_TRUE(journal.lines.isEmpty());
}

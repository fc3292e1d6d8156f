// The project manager with parts that record how they are called.

#include "PendingFile.h"
#include "ProjectManager.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

QStringList calls;

}  // namespace

class RecordingPart : public QObject, public IProjectPart {
    Q_OBJECT
    Q_INTERFACES(IProjectPart)

public:
    explicit RecordingPart(const QString& id) : m_id(id) {}

    QString value = "empty";
    bool refuses = false;

    QObject* containerObject() override { return this; }
    QString projectPartID() override { return m_id; }
    bool newProjectPart() override {
        value = "empty";
        return note("new");
    }
    bool loadProjectPart(QDomDocument, QDomElement element) override {
        value = element.attribute("Value");
        emit projectPartModified();
        // As parts report the changes of their items.
        QMetaObject::invokeMethod(this, "projectPartModified", Qt::QueuedConnection);
        return note("load") && !refuses;
    }
    bool initializeProjectPart() override { return note("initialize"); }
    bool saveProjectPart(QDomDocument, QDomElement element) override {
        element.setAttribute("Value", value);
        return value != "nothing";
    }
    bool closeProjectPart() override { return note("close"); }

signals:
    void projectPartModified() override;

private:
    bool note(const char* call) {
        calls.append(m_id + ' ' + call);
        return true;
    }

    QString m_id;
};

class ProjectParts : public testing::Test {
protected:
    ProjectParts() {
        manager.addPart(&outputs);
        manager.addPart(&circuit);
        manager.addPart(&circuit);  // found twice
        calls.clear();
    }

    bool load(const QByteArray& parts, QString* reason) {
        const auto file = ProjectFile::fromBytes(
            "<VortelProject Format=\"1\">" + parts + "</VortelProject>", reason);
        return manager.load(*file, "b.vprj", reason);
    }

    RecordingPart outputs{"Outputs"};
    RecordingPart circuit{"VortelCircuit"};
    ProjectManager manager;
    QString reason;
};

TEST_F(ProjectParts, CallsThePartsInOrder) {
    manager.newProject();
    EXPECT_EQ(calls, QStringList({"VortelCircuit new", "Outputs new", "VortelCircuit initialize",
                                  "Outputs initialize"}));
    calls.clear();
    EXPECT_TRUE(
        load("<ProjectPart ID='Outputs' Value='o'/><ProjectPart ID='VortelCircuit'/>", &reason));
    EXPECT_EQ(calls,
              QStringList({"Outputs close", "VortelCircuit close", "VortelCircuit load",
                           "Outputs load", "VortelCircuit initialize", "Outputs initialize"}));
    EXPECT_EQ(outputs.value, "o");
    calls.clear();
    // What the file lacks starts empty.
    EXPECT_TRUE(load("<ProjectPart ID='VortelCircuit' Value='c'/>", &reason));
    EXPECT_TRUE(calls.contains("Outputs new"));
    EXPECT_EQ(outputs.value, "empty");
    manager.close();
    manager.close();
    EXPECT_EQ(calls.count("Outputs close"), 2);
}

TEST_F(ProjectParts, OnlyTheUsersChangesCount) {
    QSignalSpy modified(&manager, &ProjectManager::modifiedChanged);
    EXPECT_TRUE(load("<ProjectPart ID='VortelCircuit' Value='c'/>", &reason));
    QCoreApplication::processEvents();
    EXPECT_FALSE(manager.isModified());
    EXPECT_EQ(modified.count(), 0);
    emit outputs.projectPartModified();
    EXPECT_TRUE(manager.isModified());
    emit outputs.projectPartModified();
    EXPECT_EQ(modified.count(), 1);
    const QTemporaryDir folder;
    EXPECT_TRUE(manager.save(folder.filePath("x.vprj"), &reason));
    EXPECT_FALSE(manager.isModified());
    EXPECT_EQ(manager.projectFileName(), folder.filePath("x.vprj"));
    circuit.value = "unreported";
    EXPECT_TRUE(manager.checkModified());
}

TEST_F(ProjectParts, AutosavesWhatNobodyReportsUntilItSucceeds) {
    const QTemporaryDir folder;
    const QString autosave = folder.filePath(".x.vprj.autosave");
    const auto isThere = [&] { return QFile::exists(autosave); };
    // Of a program that ended while it wrote it.
    QFile cutShort(autosave + ".lock");
    ASSERT_TRUE(cutShort.open(QIODevice::WriteOnly));
    manager.newProject();
    EXPECT_TRUE(manager.save(folder.filePath("x.vprj"), &reason));
    ASSERT_TRUE(QFile::setPermissions(folder.filePath("x.vprj"), QFile::ReadOwner));
    manager.setAutosaveInterval(1);
    circuit.value = "1";
    ASSERT_TRUE(QTest::qWaitFor(isThere));
    EXPECT_TRUE(manager.isModified());
    const auto others = QFile::ReadGroup | QFile::ReadOther;
    EXPECT_EQ(QFile::permissions(autosave) & others, 0);
    PendingFile pending(folder.filePath("y"));
    EXPECT_EQ(QFile::permissions(pending.temporaryName()) & others, 0);
    QSignalSpy failures(&manager, &ProjectManager::autosaveFailed);
    ASSERT_TRUE(QFile::remove(autosave) && QDir().mkdir(autosave));
    circuit.value = "2";
    EXPECT_TRUE(QTest::qWaitFor([&] { return failures.count() >= 2; }));
    ASSERT_TRUE(QDir().rmdir(autosave));
    EXPECT_TRUE(QTest::qWaitFor(isThere));
    manager.close();
    EXPECT_FALSE(isThere());
}

TEST_F(ProjectParts, WhatWasOpenSurvivesAPartThatRefuses) {
    manager.newProject("a.vprj");
    circuit.value = "mine";
    emit circuit.projectPartModified();
    outputs.refuses = true;
    EXPECT_FALSE(
        load("<ProjectPart ID='VortelCircuit' Value='c'/><ProjectPart ID='Outputs'/>", &reason));
    EXPECT_EQ(reason, "its part \"Outputs\" cannot be loaded");
    EXPECT_EQ(circuit.value, "mine");
    EXPECT_TRUE(manager.isModified());
    EXPECT_EQ(manager.projectFileName(), "a.vprj");
}

TEST_F(ProjectParts, KeepsThePartsOfOtherPrograms) {
    EXPECT_TRUE(
        load("<ProjectPart ID='Future'><New/></ProjectPart>"
             "<ProjectPart ID='Outputs' Value='o'/>",
             &reason));
    outputs.value = "nothing";  // it has nothing to save, and what it had isn't a stranger's
    EXPECT_TRUE(manager.content().toBytes().contains("<New/>"));
    // Another project has none of it.
    manager.newProject();
    EXPECT_FALSE(manager.content().toBytes().contains("<New/>"));

    // A part that has died is no part any more.
    auto dying = std::make_unique<RecordingPart>("Dying");
    manager.addPart(dying.get());
    dying.reset();
    EXPECT_TRUE(load("<ProjectPart ID='Dying' Value='d'/>", &reason));
    EXPECT_EQ(manager.content().part("Dying").attribute("Value"), "d");
}

#include "test_project_manager.moc"

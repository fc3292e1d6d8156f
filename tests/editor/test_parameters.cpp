// The dialogs of the global parameters and the text boxes that show one.

#include "CCircuitEditorGlobaParamTextBox.h"
#include "DialogDriver.h"
#include "DrawingTest.h"

#include <QGraphicsSceneHoverEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeView>

#include <cstring>

namespace {

class Parameters : public EditorTest {
protected:
    Parameters() {
        QObject::connect(editor.get(), &CCircuitEditor::projectPartModified, [this] { ++reports; });
        circuit.addGlobalVariable(QStringLiteral("gain"), 2.5, true);
        circuit.addGlobalVariable(QStringLiteral("count"), 3, false);
        circuit.addStringGlobalVariable(QStringLiteral("mode"), QStringLiteral("fast"));
        reports = 0;
    }

    /// Calls a slot as the menu does, and lets its dialog be used; what is open after that is
    /// closed by Escape.
    void open(const char* slot, const std::function<void()>& use, QPointF point = {}) {
        driver.queue([=](QWidget* opened) {
            dialog = opened;
            use();
        });
        call(slot, point);
    }
    void call(const char* slot, QPointF point = {}) {
        const bool takesPoint = std::strstr(slot, "insert");
        QMetaObject::invokeMethod(editor.get(), slot,
                                  takesPoint ? Q_ARG(QPointF, point) : QGenericArgument());
    }
    template <class Widget>
    Widget* part(const char* name) {
        return dialog->findChild<Widget*>(QString::fromLatin1(name));
    }
    QTreeView* table() { return part<QTreeView>("lstGlobalVariables"); }
    void select(const std::vector<const char*>& names) {
        const QAbstractItemModel* model = table()->model();
        for (const char* name : names) {
            const QModelIndex index =
                model->match(model->index(0, 0), Qt::DisplayRole, name).value(0);
            // On the second column, too, which can't be selected.
            for (const QModelIndex& cell : {index, index.siblingAtColumn(1)}) {
                QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                                  table()->visualRect(cell).center());
            }
        }
    }
    void push(const char* text) {
        for (auto* button : dialog->findChildren<QPushButton*>()) {
            if (button->text() == QLatin1String(text)) {
                button->click();
                return;
            }
        }
        ADD_FAILURE() << "no button " << text;
    }
    /// The dialog's labels and buttons, the default one in brackets, and its table.
    QString look() {
        QStringList texts{dialog->windowTitle(), part<QLabel>("label")->text(),
                          part<QLabel>("label_2")->text()};
        for (auto* button : dialog->findChildren<QPushButton*>()) {
            texts << (button->isDefault() ? '[' + button->text() + ']' : button->text());
        }
        const QAbstractItemModel* model = table()->model();
        for (int row = -1; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column : {0, 1}) {
                cells << (row < 0 ? model->headerData(column, Qt::Horizontal)
                                  : model->index(row, column).data())
                             .toString();
            }
            texts << cells.join(':');
        }
        return texts.join('|');
    }
    QString names() {
        QStringList found;
        for (int i = 0; i < circuit.globalVariableCount(); ++i) {
            found << circuit.globalVariableName(i);
        }
        return found.join(' ');
    }

    DialogDriver driver;
    QWidget* dialog = nullptr;
    int reports = 0;
};

}  // namespace

TEST_F(Parameters, AreAddedByADialog) {
    const auto add = [this](const QString& name, const char* kind, const char* end) {
        open("on_addGlobalVariable", [=] {
            QTest::keyClicks(part<QLineEdit>("txtVariableName"), name);
            if (kind) {
                part<QRadioButton>(kind)->click();
            }
            QMetaObject::invokeMethod(dialog, end);
        });
    };
    circuit.clear();
    add(QStringLiteral("a b"), nullptr, "accept");
    add(QStringLiteral("n"), "rbInteger", "accept");
    add(QString::fromUtf8("s\u00a0\t1"), "rbString", "accept");
    EXPECT_EQ(names(), QStringLiteral("ab n s1"));
    EXPECT_TRUE(circuit.isRealGlobalVariable(0));
    EXPECT_EQ(circuit.globalVariableValue(0), QVariant(0));
    EXPECT_FALSE(circuit.isRealGlobalVariable(1) || circuit.isStringGlobalVariable(1));
    EXPECT_TRUE(circuit.isStringGlobalVariable(2));
    reports = 0;
    add(QStringLiteral("x"), nullptr, "reject");
    EXPECT_EQ(reports, 0);
    add(QString(), nullptr, "accept");
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(names(), QStringLiteral("ab n s1"));
    open("on_addGlobalVariable", [this] {
        QStringList texts{dialog->windowTitle(), part<QLabel>("label")->text(),
                          part<QGroupBox>("groupBox")->title()};
        for (auto* kind : dialog->findChildren<QRadioButton*>()) {
            texts << kind->text();
        }
        EXPECT_EQ(texts.join('|'), QStringLiteral("Add Global Parameter|Variable &Name|Data Type|"
                                                  "&String|&Integer|&Real"));
    });
}

TEST_F(Parameters, AreRenamedAndRemovedByADialog) {
    open("on_removeGlobalVariable", [this] {
        EXPECT_EQ(look(),
                  QStringLiteral(
                      "Edit/Remove Gloable Parameters|Select one or more variables and click on "
                      "'Remove Selected' to remove them.|Select any element and hit the F2 key to "
                      "edit the variable name. Click 'Save Changes' button to save the changes.|"
                      "Remove Selected|[Save Changes]|Name:Type|gain:Real|count:Integer|"
                      "mode:String"));
        table()->setCurrentIndex(table()->model()->index(0, 0));
        QTest::keyClick(table(), Qt::Key_F2);
        auto* line = table()->findChild<QLineEdit*>();
        ASSERT_NE(line, nullptr);
        QTest::keyClicks(line, QStringLiteral("my var"));
        QTest::keyClick(line, Qt::Key_Return);
        QCoreApplication::processEvents();
        EXPECT_TRUE(dialog->isVisible());
        dialog->close();
    });
    EXPECT_EQ(names(), QStringLiteral("myvar count mode"));
    EXPECT_EQ(reports, 1);
    open("on_removeGlobalVariable", [this] { push("Save Changes"); });
    EXPECT_EQ(reports, 1);
    open("on_removeGlobalVariable", [this] {
        select({"count", "myvar"});
        push("Remove Selected");
    });
    EXPECT_EQ(names(), QStringLiteral("mode"));
    EXPECT_GT(reports, 1);
}

TEST_F(Parameters, AreShownInAColumnOfTextBoxes) {
    const char* insert = "on_insertGlobalVarTextBox";
    open(insert, [this] {
        EXPECT_EQ(look(),
                  QStringLiteral("Insert global parameter text boxes|Select one or more global "
                                 "parmaeters and click insert to add global parameter text boxes||"
                                 "[Insert]|Name:Value|gain:2.5|count:3|mode:fast"));
        push("Insert");
    });
    open(insert, [this] { select({"gain"}); });
    EXPECT_EQ(editor->globalParamTextBoxCount() + reports, 0);
    open(insert,
         [this] {
             select({"mode", "gain"});
             push("Insert");
         },
         {40, 70});
    EXPECT_EQ(reports, 1);
    ASSERT_EQ(editor->globalParamTextBoxCount(), 2);
    CCircuitEditorGlobaParamTextBox* box = editor->globalParamTextBox(0);
    const CCircuitEditorGlobaParamTextBox* second = editor->globalParamTextBox(1);
    EXPECT_EQ(box->pos(), QPointF(40, 70));
    EXPECT_EQ(second->pos(), box->rect().bottomLeft() + QPointF(0, 5));
    EXPECT_EQ(second->text(), QStringLiteral("gain = 2.5"));
    EXPECT_EQ(editor->textBoxCount(), 0);

    circuit.setGlobalVariableValue(2, QStringLiteral("a mode that is slow"));
    EXPECT_EQ(box->text(), QStringLiteral("mode = a mode that is slow"));
    // The name is also a part of the value.
    circuit.changeGlobalVariableName(2, QStringLiteral("m"));
    EXPECT_EQ(box->text(), QStringLiteral("m = a m that is slow"));
    const int width =
        QFontMetrics(box->QGraphicsTextItem::font()).boundingRect(box->text()).width();
    EXPECT_EQ(box->rect().width(), width + 15);
    QGraphicsSceneHoverEvent leave(QEvent::GraphicsSceneHoverLeave);
    editor->scene()->sendEvent(box, &leave);
    EXPECT_EQ(box->rect(), QRectF(40, 70, width + 10, box->rect().height()));
    circuit.setGlobalVariableValue(2, 7);
    EXPECT_EQ(box->text(), QStringLiteral("m = 7"));
    circuit.removeGlobalVariable(QStringLiteral("m"));
    EXPECT_EQ(box->text(), QStringLiteral("m = 7"));
    delete box;
    EXPECT_EQ(editor->globalParamTextBoxCount(), 1);
}

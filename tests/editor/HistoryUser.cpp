#include "HistoryUser.h"

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "COutputVariablesWidget.h"
#include "CUndoRedo.h"
#include "CompleteHistory.h"
#include "ICircuitOutputVariable.h"
#include "Invariants.h"
#include "OutputVariable.h"
#include "WarningGuard.h"

#include <QApplication>
#include <QClipboard>
#include <QDomDocument>
#include <QFile>
#include <QHash>
#include <QMap>
#include <QMetaProperty>
#include <QTreeWidget>

#include <algorithm>
#include <iterator>

#include <sys/wait.h>
#include <unistd.h>

namespace {

const char* const Types[] = {"Resistor.Basic", "NPN.Semiconductors", "Ground.Basic", "And.Digital",
                             "Capacitor.Basic"};

/// The element as text in which only differences of content show: numbers count from `first`.
QString canonical(const QDomElement& element, int first) {
    QMap<QString, QString> attributes;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i) {
        const QDomAttr attribute = map.item(i).toAttr();
        const bool isNumber = attribute.name() == QLatin1String("ID") ||
                              attribute.name() == QLatin1String("ElementID");
        attributes.insert(attribute.name(), isNumber
                                                ? QString::number(attribute.value().toInt() - first)
                                                : attribute.value());
    }
    QString text = element.tagName();
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        text += QStringLiteral(" %1=%2").arg(it.key(), it.value());
    }
    text += QLatin1Char('\n');
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        text += child.isElement() ? canonical(child.toElement(), first)
                                  : child.nodeValue() + QLatin1Char('\n');
    }
    return text;
}

/// The first line that the other text hasn't got at that place, and what leads to it.
QString firstDifference(const QByteArray& text, const QByteArray& other) {
    const QList<QByteArray> lines = text.split('\n');
    const QList<QByteArray> others = other.split('\n');
    int i = 0;
    while (i < lines.size() && i < others.size() && lines.at(i) == others.at(i)) {
        ++i;
    }
    return QString::fromUtf8(lines.mid(qMax(0, i - 2), 5).join('\n'));
}

/// The editor's properties that are on or off, but for the one that forbids all.
QVector<QMetaProperty> abilities() {
    QVector<QMetaProperty> result;
    const QMetaObject& meta = CCircuitEditor::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        if (property.userType() == QMetaType::Bool && qstrcmp(property.name(), "ReadOnly") != 0) {
            result.append(property);
        }
    }
    return result;
}

}  // namespace

HistoryUser::HistoryUser() {
    // Else most of the time goes into lines of the grid.
    editor->setGridType(QStringLiteral("dotted"));
    announceLog(QStringLiteral("on_fontSize_valueChanged"));
}

HistoryUser::~HistoryUser() {
    startAnew();
}

void HistoryUser::setProperties(bool on) {
    for (const QMetaProperty& property : abilities()) {
        property.write(editor, on);
    }
}

void HistoryUser::startAnew() {
    giveCollaborators();
    setProperties(true);
    m_isComplete = true;
    m_isSteady = true;
    m_isAllOn = true;
    m_mistakes.clear();
    editor->stopPlacing();
    framework.component->setManualConnectionMode(false);
    editor->setMode(CCircuitEditor::EditMode);
    key(Qt::Key_Escape);
    circuit.setTitle(QString());
    editor->newProjectPart();
    clipboard.clear();
    QApplication::clipboard()->clear();
    editor->resetTransform();
    editor->centerOn(0, 0);
    turnEventLoop();
    editor->markSaved();
}

QByteArray HistoryUser::state() {
    if (!editor->keepsTextStyles()) {
        // Boxes are stored with the colour that an element lends them while the pointer is on it.
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(editor->viewport(), &leave);
    }
    turnEventLoop();
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("Project"));
    editor->saveProjectPart(document, root);
    framework.component->outputVariablesWidget()->saveProjectPart(document, root);
    const int first =
        root.firstChildElement(QStringLiteral("CircuitElement")).attribute("ID").toInt();
    return editor->describe() + canonical(root, first).toUtf8();
}

int HistoryUser::undoable() const {
    return editor->undoStack()->undoCount();
}

QString HistoryUser::mistakeIn(const QVector<UserStep>& steps) {
    startAnew();
    QMap<int, QByteArray> states{{0, state()}};
    const auto check = [this, &states](const QString& when) {
        const QByteArray now = state();
        QStringList mistakes = breaches();
        if (!m_isComplete) {
            // Undo brings back what its commands hold, and no more.
            states.clear();
            return mistakes.isEmpty() ? QString()
                                      : when + QStringLiteral(": ") + mistakes.join('\n');
        }
        mistakes += editor->completeHistory()->differences();
        const auto known = states.constFind(undoable());
        if (known == states.constEnd()) {
            states.insert(undoable(), now);
        } else if (*known != now) {
            mistakes << QStringLiteral("with %1 entries the drawing was\n%2\nand is\n%3")
                            .arg(undoable())
                            .arg(firstDifference(*known, now), firstDifference(now, *known));
        }
        return mistakes.isEmpty() ? QString()
                                  : when + QStringLiteral(": ") + mistakes.join(QLatin1Char('\n'));
    };
    for (int i = 0; i < steps.size(); ++i) {
        const int reached = undoable();
        const bool wasUndone = !editor->redoText().isEmpty();
        perform(steps.at(i));
        turnEventLoop();
        if (steps.at(i).kind >= SteadyKinds) {
            m_isSteady = false;
            states.clear();
        }
        if (wasUndone && steps.at(i).kind > 1 && editor->redoText().isEmpty()) {
            // A new entry has taken the place of those that were undone.
            while (!states.isEmpty() && states.lastKey() > reached) {
                states.erase(std::prev(states.end()));
            }
        }
        const QString mistake = check(QStringLiteral("step %1").arg(i));
        if (!mistake.isEmpty()) {
            return mistake;
        }
    }
    const auto runThrough = [&](bool isUndo) -> QString {
        for (int guard = editor->undoStack()->count(); guard > 0; --guard) {
            isUndo ? editor->undo() : editor->redo();
            const QString mistake = check(isUndo ? QStringLiteral("undo to %1").arg(undoable())
                                                 : QStringLiteral("redo to %1").arg(undoable()));
            if (!mistake.isEmpty()) {
                return mistake;
            }
        }
        return {};
    };
    const QString undone = runThrough(true);
    if (!undone.isEmpty()) {
        return undone;
    }
    if (m_isSteady && (undoable() != 0 || !editor->isAsSaved())) {
        return QStringLiteral("the beginning is not the saved state");
    }
    return runThrough(false);
}

QString HistoryUser::mistakeInChild(const QVector<UserStep>& steps) {
    int ends[2];
    if (pipe(ends) != 0) {
        return QStringLiteral("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        const QByteArray mistake = mistakeIn(steps).toUtf8();
        const ssize_t size = write(ends[1], mistake.constData(), size_t(mistake.size()));
        _exit(size == mistake.size() && !HasFailure() ? 0 : 1);
    }
    close(ends[1]);
    QFile answer;
    EXPECT_TRUE(answer.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
    const QByteArray mistake = answer.readAll();
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return mistake.isEmpty() && status != 0
               ? QStringLiteral("the process ended with %1").arg(status)
               : QString::fromUtf8(mistake);
}

QStringList HistoryUser::breaches() {
    QStringList result = invariantBreaches(*editor) + unannouncedLog() + m_mistakes;
    if (!editor->hasSpatialIndex()) {
        return result;
    }
    // Asks every item, in the order from the front to the back that an index has its list in.
    const QPointF place = m_random.bounded(2) ? terminalPoint() : point() + QPointF(7, 3);
    QList<QGraphicsItem*> found;
    for (QGraphicsItem* item : editor->scene()->items()) {
        if (item->isVisible() && item->sceneBoundingRect().intersects({place, QSizeF(1, 1)}) &&
            item->contains(item->mapFromScene(place))) {
            found.append(item);
        }
    }
    if (editor->scene()->items(place) != found) {
        result
            << QStringLiteral("the index answers others at %1, %2").arg(place.x()).arg(place.y());
    }
    return result;
}

QPointF HistoryUser::point() {
    return {m_random.bounded(-12, 13) * 20.0, m_random.bounded(-9, 10) * 20.0};
}

CCircuitEditorElementItem* HistoryUser::anyElement() {
    const int count = editor->circuit() ? circuit.elementCount() : 0;
    return count ? editor->elementItem(circuit.element(m_random.bounded(count))) : nullptr;
}

QPointF HistoryUser::terminalPoint() {
    const CCircuitEditorElementItem* item = anyElement();
    if (!item) {
        return point();
    }
    const QStringList names = item->element()->elementNodeNames();
    return item->nodeItem(names.at(m_random.bounded(names.size())))->mapToScene(QPointF(0, 0));
}

ICircuitNode* HistoryUser::anyNet() {
    const int count = editor->circuit() ? circuit.nodeCount() : 0;
    return count ? circuit.node(m_random.bounded(count)) : nullptr;
}

QGraphicsItem* HistoryUser::anyBox() {
    const int texts = editor->textBoxCount();
    const int properties = editor->elementPropertyTextBoxCount();
    const int count = texts + properties + editor->globalParamTextBoxCount();
    const int chosen = count ? m_random.bounded(count) : -1;
    if (chosen < 0) {
        return nullptr;
    }
    if (chosen < texts) {
        return editor->textBox(chosen);
    }
    if (chosen < texts + properties) {
        return editor->elementPropertyTextBox(chosen - texts);
    }
    return editor->globalParamTextBox(chosen - texts - properties);
}

void HistoryUser::perform(const UserStep& step) {
    m_random.seed(step.seed);
    switch (step.kind) {
        case 0:
            editor->undo();
            break;
        case 1:
            editor->redo();
            break;
        case 14:
        case 15:
        case 16:
            selectAndDo();
            break;
        case 17:
            useClipboard();
            break;
        case 18:
            annotate();
            break;
        case 19:
            changeBox();
            break;
        case 20:
            changeParameters();
            break;
        case 21:
            changeProperty();
            break;
        case 22:
            changeOutputs();
            break;
        case 23:
            cutNet();
            break;
        case 24:
        case 25:
            openMenu();
            break;
        case 26:
            pickOutput();
            break;
        case 27:
            doubleClick(m_random.bounded(2) ? terminalPoint() + QPointF(12, 3) : point());
            break;
        case 28:
        case 29:
            switchProperty();
            break;
        case 30:
            reload();
            break;
        case 31:
            changeCollaborators();
            break;
        default:
            draw(step.kind);
            break;
    }
}

void HistoryUser::draw(int kind) {
    switch (kind) {
        case 2:
        case 3: {
            explorer.selected = QString::fromLatin1(Types[m_random.bounded(5)]);
            const QPointF place = point();
            const QGraphicsItem* there = editor->itemAt(at(place));
            if (!there || there->type() < TextBoxItemType) {  // whose dialogs would open
                doubleClick(place);
            }
            break;
        }
        case 4:
            editor->startPlacing(QString::fromLatin1(Types[m_random.bounded(5)]));
            click(point());
            key(m_random.bounded(2) ? Qt::Key_R : Qt::Key_F);
            click(terminalPoint());
            key(Qt::Key_Escape);
            break;
        case 5:
        case 6:
        case 7:
            wire();
            break;
        case 8:
        case 9:
            drag(terminalPoint() + QPointF(15, 0), terminalPoint());
            break;
        case 10:
            drag(terminalPoint() + QPointF(12, 3), point());
            break;
        case 11:
            drag(point(), terminalPoint());
            break;
        case 12:
            m_random.bounded(2) ? editor->snapToGrid() : editor->bringToCenter();
            break;
        default:
            moveTo(point());
            break;
    }
}

void HistoryUser::wire() {
    framework.component->setManualConnectionMode(true);
    click(terminalPoint());
    for (int corners = m_random.bounded(3); corners > 0; --corners) {
        click(point());
    }
    click(terminalPoint());
    framework.component->setManualConnectionMode(false);
}

void HistoryUser::selectAndDo() {
    const Qt::Key keys[] = {Qt::Key_R,    Qt::Key_F,     Qt::Key_Delete, Qt::Key_Left,
                            Qt::Key_Down, Qt::Key_Right, Qt::Key_Up,     Qt::Key_Backspace};
    const QPointF corner = point();
    const QPointF other = point();
    switch (m_random.bounded(5)) {
        case 0:
            drag(corner, other, Qt::ControlModifier);
            key(keys[m_random.bounded(7)], Qt::ShiftModifier);
            break;
        case 1:
            drag(corner, other, Qt::ControlModifier);
            drag((corner + other) / 2, point());
            break;
        case 2:
            if (ICircuitNode* net = anyNet()) {
                editor->nodeItem(net)->setSelected(true);
                m_random.bounded(2) ? key(Qt::Key_Delete) : editor->eraseSelection();
            }
            break;
        default:
            click(terminalPoint() + QPointF(12, 3));
            key(keys[m_random.bounded(8)]);
            break;
    }
}

void HistoryUser::useClipboard() {
    switch (m_random.bounded(6)) {
        case 0:
            editor->selectAll();
            editor->cut();
            break;
        case 1:
            editor->selectAll();
            key(Qt::Key_Right);
            break;
        case 2:
            editor->selectAll();
            key(Qt::Key_Delete);
            break;
        default:
            drag(point(), point(), Qt::ControlModifier);
            // Not without bounds: copies of copies double.
            if (editor->scene()->items().size() < 150) {
                editor->copy();
                m_random.bounded(2) ? editor->paste(point()) : editor->duplicate();
                click(point());
            }
            break;
    }
}

void HistoryUser::annotate() {
    CCircuitEditorElementItem* item = anyElement();
    const QPointF place = point();
    if (item && m_random.bounded(2)) {
        QMetaObject::invokeMethod(item, m_random.bounded(2)
                                            ? "createElementPropertyTextBoxesForDisplayProperties"
                                            : "createElementPropertyTextBoxForCaptionProperty");
    } else if (m_random.bounded(2)) {
        editor->addTextBox(place)->setText(QStringLiteral("a{|b|}{|?|}c"));
    } else {
        circuit.addGlobalVariable(QStringLiteral("k"), 1, true);
        auto* box = editor->addGlobalParamTextBox(place);
        box->setGlobalParameterName(QStringLiteral("k"));
        box->setText(QStringLiteral("k = 1"));
    }
}

void HistoryUser::changeBox() {
    QGraphicsItem* item = anyBox();
    if (!item) {
        return;
    }
    const QRectF rect = item->sceneBoundingRect();
    auto* text = dynamic_cast<CCircuitEditorTextBox*>(item);
    switch (m_random.bounded(6)) {
        case 0:
            drag(rect.center(), point());
            break;
        case 1:
            drag(rect.bottomRight() - QPointF(3, 3), point());
            break;
        case 2:
            item->setSelected(true);
            item->setFocus();
            key(m_random.bounded(2) ? Qt::Key_Delete : Qt::Key_Left);
            break;
        case 3:
            if (text) {
                text->setText(QStringLiteral("t%1").arg(m_random.bounded(9)));
            }
            break;
        case 4:
            if (text) {
                QTextCharFormat bold;
                bold.setFontWeight(QFont::Bold);
                text->setRuns({{m_random.bounded(2), 1, bold}});
                text->setFillColor(QColor(m_random.bounded(255), 0, 0));
                text->setTextColor(QColor(0, m_random.bounded(255), 0));
            }
            break;
        default:
            if (text) {
                text->editText();
            }
            break;
    }
}

void HistoryUser::changeParameters() {
    const QString name = QStringLiteral("k%1").arg(m_random.bounded(3));
    const int count = circuit.globalVariableCount();
    switch (m_random.bounded(5)) {
        case 0:
            circuit.addGlobalVariable(name, m_random.bounded(9), m_random.bounded(2));
            break;
        case 1:
            circuit.addStringGlobalVariable(name, QStringLiteral("text"));
            break;
        case 2:
            circuit.removeGlobalVariable(name);
            break;
        case 3:
            if (count) {
                circuit.changeGlobalVariableName(m_random.bounded(count), name);
            }
            break;
        default:
            panel.setObject(&circuit, false);
            if (count && m_random.bounded(2)) {
                panel.edit(circuit.globalVariableName(m_random.bounded(count)),
                           QString::number(m_random.bounded(9)));
            } else {
                panel.edit(QStringLiteral("Title"), name);
            }
            break;
    }
}

void HistoryUser::changeProperty() {
    CCircuitEditorElementItem* item = anyElement();
    if (!item) {
        return;
    }
    QObject* object = item->element()->containerObject();
    panel.setObject(object, false);
    const QString word = QStringLiteral("x%1").arg(m_random.bounded(5));
    switch (m_random.bounded(5)) {
        case 0:
            panel.edit(QStringLiteral("Name"), word);
            break;
        case 1:
            panel.edit(QStringLiteral("Caption"), word);
            break;
        case 2:
            panel.edit(QStringLiteral("Rotation"), m_random.bounded(4));
            break;
        case 3:
            if (ICircuitNode* net = anyNet()) {
                panel.setObject(net->containerObject(), false);
                panel.edit(
                    m_random.bounded(3) ? QStringLiteral("Name") : QStringLiteral("WireClearance"),
                    m_random.bounded(3) ? QVariant(word) : QVariant(30));
            }
            break;
        default: {
            auto* properties = qobject_cast<IEditableProperties*>(object);
            if (properties->propertyCount() > 0) {
                panel.edit(properties->propertyName(0),
                           m_random.bounded(2) ? QStringLiteral("4.7k") : QStringLiteral("k1"));
            }
            break;
        }
    }
}

void HistoryUser::changeOutputs() {
    CCircuitEditorElementItem* item = anyElement();
    COutputVariablesWidget* rows = framework.component->outputVariablesWidget();
    auto* list = rows->findChild<QTreeWidget*>();
    const int count = circuit.outputVariableCount();
    ICircuitOutputVariable* variable =
        count ? circuit.outputVariable(m_random.bounded(count)) : nullptr;
    const int action = m_random.bounded(8);
    if (action < 3 && item) {
        ICircuitNode* net = anyNet();
        ICircuitElement* element = item->element();
        if (action == 0) {
            circuit.addOutputVariable(element, QStringLiteral("i"));
        } else if (action == 1) {
            circuit.addOutputVariable(element,
                                      element->elementNode(element->elementNodeNames().first()));
        } else if (net) {
            circuit.addOutputVariable(net);
        }
    } else if (action < 5 && list->topLevelItemCount() > 0) {
        list->setCurrentItem(list->topLevelItem(m_random.bounded(list->topLevelItemCount())));
        action == 3 ? rows->on_cmdUp_clicked() : rows->on_cmdDown_clicked();
    } else if (variable && action == 5) {
        variable->setName(QStringLiteral("v%1").arg(m_random.bounded(4)));
    } else if (variable && action == 6) {
        variable->setAC(!variable->isAC());
    } else if (variable) {
        circuit.removeOutputVariable(variable);
    }
}

void HistoryUser::cutNet() {
    ICircuitNode* net = anyNet();
    CCircuitEditorElementItem* item = anyElement();
    switch (net ? m_random.bounded(3) : 3) {
        case 0:
            solver.breakConnection(net->elementNode(m_random.bounded(net->elementNodeCount())),
                                   net);
            break;
        case 1:
            solver.breakConnection(net);
            break;
        case 2:
            if (item) {
                solver.disconnectElement(item->element());
            }
            break;
        default:
            break;
    }
}

void HistoryUser::openMenu() {
    const QGraphicsItem* box = anyBox();
    switch (m_random.bounded(4)) {
        case 0:
            rightClick(point());
            break;
        case 1:
            rightClick(box ? box->sceneBoundingRect().center() : point());
            break;
        case 2:
            // A wire has its menu where it leaves a terminal.
            rightClick(terminalPoint());
            break;
        default:
            rightClick(terminalPoint() + QPointF(12, 3));
            break;
    }
}

void HistoryUser::pickOutput() {
    editor->setMode(CCircuitEditor::OutVarSelectionMode);
    click(terminalPoint() + (m_random.bounded(2) ? QPointF() : QPointF(12, 3)));
    key(Qt::Key_Tab);
    editor->setMode(CCircuitEditor::EditMode);
}

void HistoryUser::switchProperty() {
    const QVector<QMetaProperty> all = abilities();
    const QMetaProperty property = all.at(m_random.bounded(all.size()));
    if (qstrcmp(property.name(), "CompleteHistory") == 0 && !m_isComplete &&
        !editor->isReadOnly()) {
        giveCollaborators();
    }
    property.write(editor, !property.read(editor).toBool());
    if (m_random.bounded(10) == 0) {
        editor->setReadOnly(!editor->isReadOnly());
    }
    m_isComplete = editor->isCompleteHistory();
    m_isAllOn = std::all_of(all.begin(), all.end(), [this](const QMetaProperty& ability) {
        return ability.read(editor).toBool();
    });
}

void HistoryUser::reload() {
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("Project"));
    COutputVariablesWidget* outputs = framework.component->outputVariablesWidget();
    if (!editor->circuit() || !editor->saveProjectPart(document, root)) {
        return;
    }
    // What isn't saved, such as sizes that follow from the text, is lost the first time.
    QByteArray before;
    QByteArray after;
    for (int round = 0; round < 2; ++round) {
        before = after;
        outputs->saveProjectPart(document, root);
        editor->closeProjectPart();
        if (editor->loadProjectPart(document, root)) {
            outputs->loadProjectPart(document, root);
        }
        after = state();
        root = document.createElement(QStringLiteral("Project"));
        editor->saveProjectPart(document, root);
    }
    if (m_isAllOn && after != before) {
        m_mistakes << QStringLiteral("after another reload the drawing was\n%1\nand is\n%2")
                          .arg(firstDifference(before, after), firstDifference(after, before));
    }
}

void HistoryUser::giveCollaborators() {
    editor->setReadOnly(false);
    editor->setXmlUtils(&xmlUtils);
    editor->setQObjectLoadSave(&loadSave);
    editor->setCircuitElementFactory(&factory);
    editor->setElementExplorer(&explorer);
    editor->setPropertyEditor(&panel);
    editor->setClipboard(&clipboard);
    if (editor->circuitSolver() != &solver) {
        editor->setCircuitSolver(&solver);
    }
}

void HistoryUser::changeCollaborators() {
    // A history that is to be complete needs them all.
    editor->setCompleteHistory(false);
    m_isComplete = false;
    m_isAllOn = false;
    switch (m_random.bounded(10)) {
        case 0:
            editor->setXmlUtils(nullptr);
            break;
        case 1:
            editor->setQObjectLoadSave(nullptr);
            break;
        case 2:
            editor->setCircuitElementFactory(nullptr);
            break;
        case 3:
            editor->setElementExplorer(nullptr);
            break;
        case 4:
            editor->setPropertyEditor(nullptr);
            break;
        case 5:
            editor->setClipboard(nullptr);
            break;
        case 6:
            editor->setCircuitSolver(nullptr);
            break;
        default:
            giveCollaborators();
            break;
    }
}

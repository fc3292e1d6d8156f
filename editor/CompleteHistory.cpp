// The complete history as a listener: steps, what they touch, and the entries they become.

#include "CompleteHistory.h"

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitElementPropertyTextBox.h"
#include "CUndoRedo.h"
#include "HistoryEar.h"
#include "ICircuitElement.h"
#include "ICircuitGlobalVariableModifiedSignalSupport.h"
#include "ICircuitNode.h"

using namespace HistoryRecords;

namespace {

/// An entry on the editor's stack.
class CCompleteHistoryCmd : public CUndoRedoCmdBase {
public:
    CCompleteHistoryCmd(CompleteHistory* history, Entry entry, int stateBefore, int stateAfter)
        : m_history(history),
          m_entry(std::move(entry)),
          m_stateBefore(stateBefore),
          m_stateAfter(stateAfter) {}

    void undo() override { m_history->apply(m_entry, false, m_stateBefore); }
    void redo() override { m_history->apply(m_entry, true, m_stateAfter); }

    void setRun(bool isPart, bool isRepeat) {
        m_isInRun = isPart;
        m_isRepeat = isRepeat;
    }
    bool mergeWith(const QUndoCommand* other) override {
        const auto* next = dynamic_cast<const CCompleteHistoryCmd*>(other);
        if (!next || !m_isInRun || !next->m_isRepeat || next->m_stateBefore != m_stateAfter ||
            next->text() != text() || !m_entry.append(next->m_entry)) {
            return false;
        }
        m_stateAfter = next->m_stateAfter;
        return true;
    }

private:
    CompleteHistory* m_history;
    Entry m_entry;
    int m_stateBefore;
    int m_stateAfter;
    bool m_isInRun = false;
    bool m_isRepeat = false;
};

}  // namespace

CompleteHistory::CompleteHistory(CCircuitEditorData* data) : d(data) {
    m_settleTimer.setSingleShot(true);
    m_settleTimer.setInterval(0);
    connect(&m_settleTimer, &QTimer::timeout, this, &CompleteHistory::settle);
    d->undoStack->setComplete(true);
    bind();
}

CompleteHistory::~CompleteHistory() {
    if (d->undoStack) {
        d->undoStack->clear();
        d->undoStack->setComplete(false);
    }
}

CompleteHistory* CompleteHistory::of(const CCircuitEditor* editor) {
    return editor ? editor->completeHistory() : nullptr;
}

void CompleteHistory::bind() {
    if (m_boundCircuit) {
        QObject::disconnect(m_boundCircuit, nullptr, this, nullptr);
    }
    qDeleteAll(m_ears);
    m_ears.clear();
    m_elements.clear();
    m_nets.clear();
    m_resolving.clear();
    ICircuit* circuit = d->circuitEditor->circuit();
    m_boundCircuit = circuit ? circuit->containerObject() : nullptr;
    if (circuit) {
        listenToCircuit();
        for (int i = 0; i < circuit->elementCount(); ++i) {
            on_elementAdded(circuit->element(i));
        }
        for (int i = 0; i < circuit->nodeCount(); ++i) {
            on_nodeAdded(circuit->node(i));
        }
    }
    for (auto& mirror : m_boxes) {
        mirror.clear();
    }
    for (CCircuitEditorTextBox* box : qAsConst(d->textBoxes)) {
        enlist(box);
    }
    for (CCircuitElementPropertyTextBox* box : qAsConst(d->elementPropertyTextBoxes)) {
        enlist(box);
    }
    for (CCircuitEditorGlobaParamTextBox* box : qAsConst(d->globalParamTextBoxes)) {
        enlist(box);
    }
    restart();
}

void CompleteHistory::listenToCircuit() {
    const QObject* object = m_boundCircuit;
    connect(object, SIGNAL(elementAdded(ICircuitElement*)),
            SLOT(on_elementAdded(ICircuitElement*)));
    connect(object, SIGNAL(elementRemoved(ICircuitElement*)),
            SLOT(on_elementRemoved(ICircuitElement*)));
    connect(object, SIGNAL(nodeAdded(ICircuitNode*)), SLOT(on_nodeAdded(ICircuitNode*)));
    connect(object, SIGNAL(nodeRemoved(ICircuitNode*)), SLOT(on_nodeRemoved(ICircuitNode*)));
    connect(object, SIGNAL(globalVariableAdded(QString)), SLOT(touchCircuit()));
    connect(object, SIGNAL(globalVariableRemoved(QString)), SLOT(touchCircuit()));
    if (qobject_cast<ICircuitGlobalVariableModifiedSignalSupport*>(m_boundCircuit.data())) {
        connect(object, SIGNAL(globalVariableNameModified(QString, QString)), SLOT(touchCircuit()));
        connect(object, SIGNAL(globalVariableValueModified(QString, QString)),
                SLOT(touchCircuit()));
    }
    const char* const outputSignals[] = {SIGNAL(outputVariableAdded(ICircuitOutputVariable*)),
                                         SIGNAL(outputVariableEdited(ICircuitOutputVariable*)),
                                         SIGNAL(outputVariableRemoved(ICircuitOutputVariable*))};
    for (const char* signal : outputSignals) {
        connect(object, signal, SLOT(touchOutputs()));
    }
}

void CompleteHistory::on_elementAdded(ICircuitElement* element) {
    if (!element || m_elements.idOf(element) != NoId) {
        return;
    }
    const Id id = m_reborn != NoId ? m_reborn : ++m_lastId;
    m_elements.add(element, id);
    const QObject* object = element->containerObject();
    earOf(id)->hear(object, {SIGNAL(elementChanged()), SIGNAL(assignedModelChanged()),
                             SIGNAL(propertyChanged(QString))});
    if (object->metaObject()->indexOfMethod("resolveControlNodesAndBranches()") >= 0) {
        m_resolving.insert(id);
    }
    changed();
}

void CompleteHistory::on_elementRemoved(ICircuitElement* element) {
    if (const Id id = m_elements.idOf(element)) {
        forgetEar(id, element->containerObject());
        m_elements.remove(element);
        changed();
    }
}

void CompleteHistory::on_nodeAdded(ICircuitNode* node) {
    if (!node || m_nets.idOf(node) != NoId) {
        return;
    }
    const Id id = m_reborn != NoId ? m_reborn : ++m_lastId;
    m_nets.add(node, id);
    earOf(id)->hear(node->containerObject(),
                    {SIGNAL(nodeChanged()), SIGNAL(elementNodeAdded(ICircuitElementNode*)),
                     SIGNAL(elementNodeRemoved(ICircuitElementNode*))});
    changed();
}

void CompleteHistory::on_nodeRemoved(ICircuitNode* node) {
    if (const Id id = m_nets.idOf(node)) {
        forgetEar(id, node->containerObject());
        m_nets.remove(node);
        changed();
    }
}

HistoryEar* CompleteHistory::earOf(Id id) {
    HistoryEar*& ear = m_ears[id / HistoryEar::Most];
    if (!ear) {
        ear = new HistoryEar(this);
    }
    return ear;
}

void CompleteHistory::forgetEar(Id id, const QObject* object) {
    HistoryEar* ear = earOf(id);
    ear->forget(object);
    if (ear->isIdle()) {
        m_ears.remove(id / HistoryEar::Most);
        ear->deleteLater();
    }
}

void CompleteHistory::touchObject(QObject* object) {
    if (m_elements.touch(qobject_cast<ICircuitElement*>(object)) ||
        m_nets.touch(qobject_cast<ICircuitNode*>(object))) {
        changed();
    }
}

void CompleteHistory::touch(QGraphicsItem* item) {
    bool isKnown = false;
    if (const auto* element = qgraphicsitem_cast<CCircuitEditorElementItem*>(item)) {
        isKnown = m_elements.touch(element->element());
    } else if (const auto* wire = qgraphicsitem_cast<CCircuitEditorNodeItem*>(item)) {
        isKnown = m_nets.touch(wire->circuitNode());
    } else {
        for (auto& mirror : m_boxes) {
            isKnown = mirror.touch(item) || isKnown;
        }
    }
    if (isKnown) {
        changed();
    }
}

void CompleteHistory::touchCircuit() {
    m_circuitTouched = true;
    changed();
}

void CompleteHistory::touchOutputs() {
    m_outputsTouched = true;
    changed();
}

void CompleteHistory::enlist(QGraphicsItem* box) {
    m_boxes[kindOf(box)].add(box, m_reborn != NoId ? m_reborn : ++m_lastId);
    changed();
}

void CompleteHistory::delist(QGraphicsItem* box) {
    // Only its address counts: it may be dying.
    m_dismissed.remove(box);
    for (auto& mirror : m_boxes) {
        mirror.remove(box);
    }
    changed();
}

void CompleteHistory::dismiss(QGraphicsItem* box) {
    m_dismissed.insert(box);
    touch(box);
}

void CompleteHistory::changed() {
    if (!m_applying && !m_toldChange && m_state == m_savedState) {
        // At once, and not only when the step has ended; it may be taken back then.
        m_toldChange = true;
        emit savedStateChanged(false);
    }
    if (m_depth == 0 && !m_applying && !m_settleTimer.isActive()) {
        m_settleTimer.start();
    }
}

bool CompleteHistory::isPending() const {
    return m_circuitTouched || m_outputsTouched || !m_elements.touched().isEmpty() ||
           !m_nets.touched().isEmpty() ||
           std::any_of(std::begin(m_boxes), std::end(m_boxes),
                       [](const auto& mirror) { return !mirror.touched().isEmpty(); });
}

void CompleteHistory::begin(const QString& text) {
    if (m_depth == 0) {
        settle();
        m_text.clear();
        m_run = NoRun;
    }
    ++m_depth;
    if (m_text.isEmpty()) {
        m_text = text;
    }
}

void CompleteHistory::end() {
    if (--m_depth == 0) {
        commit(m_text);
    }
}

void CompleteHistory::joinRun(bool isRepeat) {
    m_run = isRepeat ? RepeatInRun : FirstOfRun;
}

void CompleteHistory::beginGesture() {
    endGesture();
    m_inGesture = true;
    begin(QString());
}

void CompleteHistory::endGesture() {
    if (m_inGesture) {
        m_inGesture = false;
        end();
    }
}

void CompleteHistory::settle() {
    if (m_depth == 0 && !m_applying) {
        commit(QString());
    }
}

void CompleteHistory::absorb() {
    if (isPending()) {
        settleDrawing();
        takeEntry();
    }
}

void CompleteHistory::restart() {
    absorb();
    // Entries that name what is gone for good.
    d->undoStack->clear();
    m_circuitTouched = true;
    m_outputsTouched = true;
    takeEntry();
    m_state = ++m_lastState;
}

void CompleteHistory::commit(const QString& text) {
    m_settleTimer.stop();
    if (!isPending()) {
        return;
    }
    settleDrawing();
    Entry entry = takeEntry();
    if (!entry.isEmpty()) {
        const QString name = text.isEmpty() ? textOf(entry) : text;
        const int before = m_state;
        m_state = ++m_lastState;
        auto* command = new CCompleteHistoryCmd(this, std::move(entry), before, m_state);
        command->setText(name);
        // The saved state stays one that can be come back to.
        command->setRun(m_run != NoRun, m_run == RepeatInRun && before != m_savedState);
        d->undoStack->pushComplete(command);
        // A listener may switch the history off, or take the editor away.
        const QPointer<CompleteHistory> self(this);
        emit d->circuitEditor->projectPartModified();
        if (!self) {
            return;
        }
    }
    tellState();
}

void CompleteHistory::settleDrawing() {
    for (QGraphicsItem* box : QSet<QGraphicsItem*>(m_dismissed)) {
        delete box;  // takes itself out
    }
    QSet<CCircuitEditorElementItem*> captioned;
    const auto& boxes = m_boxes[PropertyBoxes];
    for (const Id id : boxes.touched()) {
        const auto* box = static_cast<CCircuitElementPropertyTextBox*>(boxes.object(id));
        ICircuitElement* element =
            box ? box->element() : m_elements.object(boxes.states().value(id).element);
        captioned.insert(d->circuitEditor->elementItem(element));
    }
    for (CCircuitEditorElementItem* item : qAsConst(captioned)) {
        if (item) {
            item->settlePropertyTextBoxes();
        }
    }
    for (const Id id : m_elements.touched()) {
        if (auto* item = d->circuitEditor->elementItem(m_elements.object(id))) {
            item->updateCircuitNodes();
        }
    }
    for (const Id id : m_nets.touched()) {
        if (auto* item = d->circuitEditor->nodeItem(m_nets.object(id))) {
            item->updateNode();
        }
    }
}

Entry CompleteHistory::takeEntry() {
    const auto state = [this](auto* object) { return capture(object); };
    Entry entry;
    entry.elements = m_elements.takeChanges(state);
    entry.nets = m_nets.takeChanges(state);
    for (int kind = 0; kind < BoxKindCount; ++kind) {
        entry.boxes[kind] = m_boxes[kind].takeChanges(state);
    }
    if (m_circuitTouched) {
        m_circuitTouched = false;
        const QVector<ParameterState> parameters = captureParameters();
        entry.parameters = {m_parameters, parameters};
        m_parameters = parameters;
        entry.titleBefore = m_title;
        m_title = captureTitle();
        entry.titleAfter = m_title;
    }
    if (m_outputsTouched) {
        m_outputsTouched = false;
        const QVector<OutputState> outputs = captureOutputs();
        entry.outputs = {m_outputs, outputs};
        m_outputs = outputs;
    }
    return entry;
}

void CompleteHistory::markSaved() {
    if (m_depth == 0 && d->undoStack->count() == 0) {
        absorb();
    }
    settle();
    m_toldChange = false;
    m_savedState = m_state;
}

void CompleteHistory::forgetSaved() {
    m_savedState = -1;
}

bool CompleteHistory::isAsSaved() const {
    return m_state == m_savedState && !isPending();
}

void CompleteHistory::tellState() {
    m_toldChange = false;
    emit savedStateChanged(m_state == m_savedState);
}

QStringList CompleteHistory::differences() {
    settle();
    QStringList result;
    const auto compare = [this, &result](const auto& mirror, const char* kind) {
        for (auto it = mirror.states().begin(); it != mirror.states().end(); ++it) {
            auto* object = mirror.object(it.key());
            if (!object || !(capture(object) == std::make_optional(it.value()))) {
                result << QStringLiteral("%1 %2 has changed unseen")
                              .arg(QLatin1String(kind))
                              .arg(it.key());
            }
        }
        if (mirror.states().size() != mirror.ids().size()) {
            result << QStringLiteral("%1: %2 are known, %3 are there")
                          .arg(QLatin1String(kind))
                          .arg(mirror.states().size())
                          .arg(mirror.ids().size());
        }
    };
    compare(m_elements, "element");
    compare(m_nets, "net");
    for (const auto& mirror : m_boxes) {
        compare(mirror, "box");
    }
    if (!(captureParameters() == m_parameters) || captureTitle() != m_title) {
        result << QStringLiteral("parameters or title have changed unseen");
    }
    if (!(captureOutputs() == m_outputs)) {
        result << QStringLiteral("output variables have changed unseen");
    }
    return result;
}

#include "EditorTest.h"

#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorElementNodeItem.h"
#include "CCircuitEditorNodeItem.h"
#include "Invariants.h"

const ElementLibrary& shippedLibrary() {
    static const std::unique_ptr<ElementLibrary> library = [] {
        auto loaded = std::make_unique<ElementLibrary>();
        loaded->load(QStringLiteral(VORTEL_SOURCE_DIR "/workbench/library"));
        return loaded;
    }();
    return *library;
}

EditorTest::EditorTest() : editor(std::make_unique<CCircuitEditor>()) {
    editor->setCircuitElementFactory(&factory);
    editor->setXmlUtils(&xmlUtils);
    editor->setQObjectLoadSave(&loadSave);
    editor->setCircuitSolver(&solver);
}

EditorTest::~EditorTest() {
    if (editor) {
        const QStringList breaches = invariantBreaches(*editor);
        EXPECT_TRUE(breaches.isEmpty()) << qPrintable(breaches.join(QLatin1Char('\n')));
    }
}

CircuitElement* EditorTest::add(const char* type, QPointF position) {
    ICircuitElement* element = factory.createElement(QString::fromLatin1(type));
    EXPECT_NE(element, nullptr) << type;
    circuit.addElement(element);
    itemOf(element)->setPos(position);
    return CircuitElement::from(element);
}

CircuitElement* EditorTest::element(const QString& name) {
    for (int i = 0; i < circuit.elementCount(); ++i) {
        if (circuit.element(i)->name() == name) {
            return CircuitElement::from(circuit.element(i));
        }
    }
    return nullptr;
}

ICircuitElementNode* EditorTest::terminal(const QString& name) {
    CircuitElement* owner = element(name.section(QLatin1Char('.'), 0, 0));
    return owner ? owner->elementNode(name.section(QLatin1Char('.'), 1)) : nullptr;
}

ICircuitNode* EditorTest::join(const char* first, const char* second) {
    return solver.makeConnection(terminal(QString::fromLatin1(first)),
                                 terminal(QString::fromLatin1(second)));
}

CCircuitEditorElementItem* EditorTest::itemOf(ICircuitElement* element) {
    return editor->elementItem(element);
}

CCircuitEditorNodeItem* EditorTest::itemOf(ICircuitNode* node) {
    return editor->nodeItem(node);
}

CCircuitEditorElementNodeItem* EditorTest::itemOf(ICircuitElementNode* terminal) {
    return qgraphicsitem_cast<CCircuitEditorElementNodeItem*>(editor->itemFor(terminal));
}

QPointF EditorTest::placeOf(const char* terminalName) {
    return itemOf(terminal(QString::fromLatin1(terminalName)))->mapToScene(QPointF(0, 0));
}

std::vector<QPointF> pathPoints(const QPainterPath& path) {
    std::vector<QPointF> result;
    for (int i = 0; i < path.elementCount(); ++i) {
        result.push_back(path.elementAt(i));
    }
    return result;
}

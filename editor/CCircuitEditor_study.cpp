// The inside of a sub-circuit, drawn as its stored project has it and not tied to its signals.

#include "CCircuitEditorData.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "CCircuitEditorTextBox.h"
#include "CircuitGeometry.h"
#include "DummyCircuitSolver.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitNode.h"
#include "ISubCircuitElementDesc.h"
#include "QtSeriesXml.h"
#include "RecordFields.h"

#include <Plexa/DomAccess.h>

#include <QApplication>
#include <QElapsedTimer>

#include <cmath>

namespace {

/// The project that the description of a sub-circuit stores; an empty document if there is none.
QDomDocument storedProject(ICircuit* circuit, IXmlUtils* xmlUtils) {
    QDomDocument project;
    auto* element = qobject_cast<ICircuitElement*>(circuit->containerObject());
    void* answer = nullptr;
    if (element) {
        element->desc()->queryInterface(QStringLiteral("ISubCircuitElementDesc"), &answer);
    }
    if (!answer || !xmlUtils) {
        return project;
    }
    const QDomElement file =
        Plexa::DomAccess(static_cast<ISubCircuitElementDesc*>(answer)->subCircuitInfo())
            .query(QStringLiteral("CircuitInfo.VortelProjectFile"))
            .element();
    QByteArray packed;
    xmlUtils->loadBinaryData(file, packed);
    if (packed.isEmpty() || !QtSeries::readXml(&project, qUncompress(packed))) {
        project.clear();
    }
    return project;
}

/// The wait cursor, from the first step after half a second on.
class LateWaitCursor {
public:
    LateWaitCursor() { m_time.start(); }
    ~LateWaitCursor() {
        if (m_isShown) {
            QApplication::restoreOverrideCursor();
        }
    }
    Q_DISABLE_COPY(LateWaitCursor)

    void step() {
        if (!m_isShown && m_time.hasExpired(Patience)) {
            m_isShown = true;
            QApplication::setOverrideCursor(Qt::WaitCursor);
        }
    }

private:
    static constexpr qint64 Patience = 500;  // ms
    QElapsedTimer m_time;
    bool m_isShown = false;
};

QPointF wholePosition(const QDomElement& record) {
    const QPointF position = RecordFields::storedPosition(record);
    return {std::trunc(position.x()), std::trunc(position.y())};
}

/// The stored wire, its points cut down to whole numbers.
QPainterPath wholePath(const QDomElement& record) {
    QList<QDomElement> points;
    const QDomElement shape = record.firstChildElement(QStringLiteral("Shape"));
    const QString tag = QStringLiteral("ShapeElement");
    for (QDomElement point = shape.firstChildElement(tag); !point.isNull();
         point = point.nextSiblingElement(tag)) {
        points.append(point);
    }
    return RecordFields::storedPath(points, wholePosition);
}

}  // namespace

void CCircuitEditor::setCircuit(ICircuit* circuit) {
    if (!circuit || !d->scene) {
        return;
    }
    d->circuit = circuit;
    d->circuitSolver = new DummyCircuitSolver(circuit, this);
    auto* element = qobject_cast<ICircuitElement*>(circuit->containerObject());
    LateWaitCursor cursor;
    const QDomDocument project = storedProject(circuit, d->xmlUtils);
    cursor.step();
    if (!element || project.documentElement().isNull()) {
        return;
    }
    const Plexa::DomAccess access(project);
    showElements(circuit, access.query(QStringLiteral("ProjectPart.CircuitElement")).elements());
    cursor.step();
    showNodes(circuit, access.query(QStringLiteral("ProjectPart.CircuitNode")).elements());
    for (const QDomElement& record :
         access.query(QStringLiteral("ProjectPart.TextBox")).elements()) {
        d->loadTextBox(record);
    }
    for (const QDomElement& record :
         access.query(QStringLiteral("ProjectPart.EPTextBox")).elements()) {
        d->loadElementPropertyTextBox(record, circuit);
    }
}

void CCircuitEditor::showElements(ICircuit* circuit, const QList<QDomElement>& records) {
    for (int i = 0; i < circuit->elementCount(); ++i) {
        ICircuitElement* element = circuit->element(i);
        if (!element || d->elementItemMap.contains(element)) {
            continue;
        }
        unhighlight();
        CCircuitEditorElementItem* item = makeItem(element);
        // A missing record has no attributes: the element stands at the origin.
        item->setPos(RecordFields::storedPosition(records.value(i)));
        snapToGrid(item);
    }
}

void CCircuitEditor::showNodes(ICircuit* circuit, const QList<QDomElement>& records) {
    for (int i = 0; i < circuit->nodeCount(); ++i) {
        ICircuitNode* node = circuit->node(i);
        if (!node || d->nodeItemMap.contains(node)) {
            continue;
        }
        unhighlight();
        CCircuitEditorNodeItem* item = makeItem(node);
        item->setManuallyConnected(false);
        const QPainterPath path = wholePath(records.value(i));
        if (!path.isEmpty() || !d->routeEmptyShapes) {
            item->addShape(path, true);
        }
    }
}

bool CCircuitEditor::isStudy() const {
    QObject* solver = d->circuitSolver ? d->circuitSolver->containerObject() : nullptr;
    return qobject_cast<DummyCircuitSolver*>(solver);
}

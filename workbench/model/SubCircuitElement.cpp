#include "SubCircuitElement.h"

#include "CircuitElementNode.h"
#include "CircuitNode.h"
#include "CircuitSolver.h"
#include "ControlledElement.h"
#include "ObjectLoadSave.h"
#include "SubCircuitDescription.h"
#include "SubCircuitProject.h"

#include <QHash>

SubCircuitElement::SubCircuitElement(SubCircuitDescription* description, QObject* parent)
    : CircuitElement(description, parent), m_type(description) {}

SubCircuitElement::~SubCircuitElement() = default;

Circuit& SubCircuitElement::inside() {
    if (!m_inside) {
        build();
    }
    return *m_inside;
}

void SubCircuitElement::build() {
    m_inside = std::make_unique<Circuit>();
    m_inside->setFace(this);
    for (const QDomElement& record :
         SubCircuitProject::records(m_type->data().inside, "GlobalVar")) {
        m_inside->addGlobalVariable(record.attribute(QStringLiteral("Name")),
                                    record.attribute(QStringLiteral("Value")),
                                    record.attribute(QStringLiteral("IsReal")).toInt() != 0);
    }
    buildElements();
    buildNodes();
    for (const QPointer<CircuitElement>& element : qAsConst(m_elements)) {
        if (auto* controlled = qobject_cast<ControlledElement*>(element)) {
            controlled->resolveControlNodesAndBranches();
        }
    }
}

void SubCircuitElement::buildElements() {
    ObjectLoadSave persistence;
    const QVector<ElementDescription*>& types = m_type->innerDescriptions();
    const QList<QDomElement> records =
        SubCircuitProject::records(m_type->data().inside, "CircuitElement");
    for (int i = 0; i < records.size(); ++i) {
        const QDomElement& record = records.at(i);
        ElementDescription* type = types.value(i);
        CircuitElement* element = type ? type->createElement() : nullptr;
        m_elements.append(element);
        if (element) {
            // The name first: the circuit would give another one.
            persistence.load(element, record.ownerDocument(), record);
            m_inside->addElement(element);
        }
    }
}

void SubCircuitElement::buildNodes() {
    QHash<QString, CircuitElement*> elementById;
    const QList<QDomElement> elements =
        SubCircuitProject::records(m_type->data().inside, "CircuitElement");
    for (int i = elements.size() - 1; i >= 0; --i) {
        elementById.insert(elements.at(i).attribute(QStringLiteral("ID")), m_elements.at(i));
    }
    ObjectLoadSave persistence;
    CircuitSolver solver(m_inside.get());
    ICircuitSolver& connections = solver;
    const QString terminalTag = QStringLiteral("ElementNode");
    for (const QDomElement& record :
         SubCircuitProject::records(m_type->data().inside, "CircuitNode")) {
        CircuitElementNode* first = nullptr;
        for (QDomElement part = record.firstChildElement(terminalTag); !part.isNull();
             part = part.nextSiblingElement(terminalTag)) {
            CircuitElement* element =
                elementById.value(part.attribute(QStringLiteral("ElementID")));
            auto* terminal = CircuitElementNode::from(
                element ? element->elementNode(part.attribute(QStringLiteral("Name"))) : nullptr);
            // A terminal that two records claim would make one net of them.
            if (!terminal || terminal->node()) {
                continue;
            }
            if (!first) {
                first = terminal;
            } else if (terminal != first) {
                connections.makeConnection(first, terminal);
            }
        }
        CircuitNode* node = first ? first->node() : nullptr;
        m_nodes.append(node);
        if (node) {
            node->setName(record.attribute(QStringLiteral("Name")));
            persistence.load(node, record.ownerDocument(), record);
        }
    }
}

ICircuitNode* SubCircuitElement::innerNode(const QString& terminalName) {
    for (const TerminalData& terminal : m_type->data().terminals) {
        if (terminal.name == terminalName) {
            return inside().nodes(terminal.innerNet).value(0);
        }
    }
    return nullptr;
}

int SubCircuitElement::elementCount() {
    inside();
    return m_elements.size();
}

ICircuitElement* SubCircuitElement::element(int index) {
    inside();
    return m_elements.value(index);
}

int SubCircuitElement::nodeCount() {
    inside();
    return m_nodes.size();
}

ICircuitNode* SubCircuitElement::node(int index) {
    inside();
    return m_nodes.value(index);
}

QList<ICircuitNode*> SubCircuitElement::nodes(QString name) {
    return inside().nodes(name);
}

int SubCircuitElement::globalVariableCount() {
    return inside().globalVariableCount();
}

QString SubCircuitElement::globalVariableName(int index) {
    return inside().globalVariableName(index);
}

bool SubCircuitElement::isRealGlobalVariable(int index) {
    return inside().isRealGlobalVariable(index);
}

QVariant SubCircuitElement::globalVariableValue(int index) {
    return inside().globalVariableValue(index);
}

ICircuitOutputVariable* SubCircuitElement::addOutputVariable(ICircuitElement*, QString) {
    return nullptr;
}

ICircuitOutputVariable* SubCircuitElement::addOutputVariable(ICircuitElement*,
                                                             ICircuitElementNode*) {
    return nullptr;
}

ICircuitOutputVariable* SubCircuitElement::addOutputVariable(ICircuitNode*) {
    return nullptr;
}

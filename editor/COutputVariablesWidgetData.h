#pragma once

#include "CCircuitEditor.h"
#include "ICircuit.h"
#include "IPropertyEditor.h"
#include "IXmlUtils.h"
#include "InterfacePointer.h"
#include "ui_COutputVariablesWidget.h"

#include <QPointer>

class COutputVariablesWidgetDelegate;
class ICircuitOutputVariable;

/// Private data of the output variables panel, shared by its sources and its delegate: the form's
/// widgets, the collaborators, and what is read from the circuit. Owns none of them.
class COutputVariablesWidgetData : public Ui_COutputVariablesWidget {
public:
    QPointer<CCircuitEditor> circuitEditor;
    InterfacePointer<ICircuit> circuit;
    InterfacePointer<IXmlUtils> xmlUtils;
    COutputVariablesWidgetDelegate* delegate = nullptr;
    InterfacePointer<IPropertyEditor> propertyEditor;
    /// Whether Control was held when the Add Variable button was last pressed.
    bool ctrlPressed = false;

    /// Node type letter of the variable's node, else of its terminal, else empty.
    static QString nodeType(ICircuitOutputVariable* variable);
    /// The text of the variable's row, such as "out=nodev_of_n5".
    QString outvarText(ICircuitOutputVariable* variable) const;
    /// Name of the net that the terminal is on, as its element tells it; may be empty.
    QString externalNodeName(ICircuitElement* element, ICircuitElementNode* elementNode) const;
    // Each the first of that name in the circuit, or null.
    ICircuitElement* findCircuitElement(QString name) const;
    ICircuitElementNode* findCircuitElementNode(ICircuitElement* element, QString name) const;
    ICircuitNode* findCircuitNode(QString name) const;
};

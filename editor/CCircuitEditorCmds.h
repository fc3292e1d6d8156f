#pragma once

#include "ICircuit.h"
#include "ICircuitElementFactory.h"
#include "ICircuitSolver.h"
#include "IPropertyEditor.h"
#include "IQObjectLoadSave.h"
#include "IXmlUtils.h"
#include "InterfacePointer.h"

#include <QPointer>

class CCircuitEditor;

/// The collaborators of the undo commands, which are built far from the editor. Written only when
/// the component is announced; each reads as null when it is missing or gone.
namespace CCircuitEditorCmds {

extern InterfacePointer<IPropertyEditor> PropertyEditor;
extern InterfacePointer<ICircuitSolver> CircuitSolver;
extern InterfacePointer<ICircuitElementFactory> CircuitElementFactory;
extern InterfacePointer<IXmlUtils> XmlUtils;
extern InterfacePointer<IQObjectLoadSave> QObjectLoadSave;
extern QPointer<CCircuitEditor> CircuitEditor;
extern InterfacePointer<ICircuit> Circuit;

}  // namespace CCircuitEditorCmds

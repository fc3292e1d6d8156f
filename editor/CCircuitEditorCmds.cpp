#include "CCircuitEditorCmds.h"

#include "CCircuitEditor.h"

namespace CCircuitEditorCmds {

InterfacePointer<IPropertyEditor> PropertyEditor;
InterfacePointer<ICircuitSolver> CircuitSolver;
InterfacePointer<ICircuitElementFactory> CircuitElementFactory;
InterfacePointer<IXmlUtils> XmlUtils;
InterfacePointer<IQObjectLoadSave> QObjectLoadSave;
QPointer<CCircuitEditor> CircuitEditor;
InterfacePointer<ICircuit> Circuit;

}  // namespace CCircuitEditorCmds

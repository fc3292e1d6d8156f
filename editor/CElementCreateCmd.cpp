#include "CElementCreateCmd.h"

CElementCreateCmd::CElementCreateCmd(ICircuitElement* element)
    : CElementExistenceCmd(element, true) {}

void CElementCreateCmd::undo() {
    removeElement();
}

void CElementCreateCmd::redo() {
    recreateElement();
}

#include "CElementDeleteCmd.h"

CElementDeleteCmd::CElementDeleteCmd(ICircuitElement* element)
    : CElementExistenceCmd(element, false) {}

void CElementDeleteCmd::undo() {
    recreateElement();
}

void CElementDeleteCmd::redo() {
    removeElement();
}

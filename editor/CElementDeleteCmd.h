#pragma once

#include "CElementExistenceCmd.h"

/// An element was deleted. Undo brings back a new element with its properties and without wires.
class CElementDeleteCmd : public CElementExistenceCmd {
public:
    /// Made while the element is still whole.
    explicit CElementDeleteCmd(ICircuitElement* element);

    // Not const, and so not the id that the stack compares.
    using CUndoRedoCmdBase::id;
    int id() { return 5; }

    void undo() override;
    void redo() override;
};

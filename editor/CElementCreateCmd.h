#pragma once

#include "CElementExistenceCmd.h"

/// An element was created. Undo takes it out of the circuit, redo makes a new one like it.
class CElementCreateCmd : public CElementExistenceCmd {
public:
    /// Made when the element has its place.
    explicit CElementCreateCmd(ICircuitElement* element);

    // Not const, and so not the id that the stack compares.
    using CUndoRedoCmdBase::id;
    int id() { return 5; }

    void undo() override;
    void redo() override;
};

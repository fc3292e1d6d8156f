#pragma once

#include "CCircuitEditorElementItem.h"
#include "CUndoRedo.h"

#include <QPointF>
#include <QPointer>

/// An element was moved. Moves of one element in a row are one step of the history. Inert once the
/// item is gone, until the element comes back.
class CElementMoveCmd : public CUndoRedoCmdBase {
public:
    /// Positions in scene units, as they were before the element settled on the grid.
    CElementMoveCmd(CCircuitEditorElementItem* item, QPointF oldPos, QPointF newPos);

    // Not const, and so not the id that the stack compares: merging is up to mergeWith() alone.
    using CUndoRedoCmdBase::id;
    int id() { return 1; }

    bool mergeWith(const QUndoCommand* other) override;
    void undo() override;
    void redo() override;
    void referenceObjectDestroyed(QObject* object) override;
    void referenceObjectChanged(QObject* old, QObject* now) override;

private:
    void moveTo(const QPointF& position);

    QPointer<CCircuitEditorElementItem> m_item;
    QObject* m_itemObject = nullptr;
    QPointF m_oldPos;
    QPointF m_newPos;
};

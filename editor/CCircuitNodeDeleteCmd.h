#pragma once

#include "CUndoRedo.h"

#include <QList>
#include <QPointer>
#include <QString>

class ICircuitElement;
class ICircuitNode;

/// A net of two terminals was deleted. Undo joins them again in a new net, routed by the editor.
class CCircuitNodeDeleteCmd : public CUndoRedoCmdBase {
public:
    /// Made while the net is still whole.
    explicit CCircuitNodeDeleteCmd(ICircuitNode* node);

    // Not const, and so not the id that the stack compares.
    using CUndoRedoCmdBase::id;
    int id() { return 4; }

    void undo() override;
    void redo() override;
    void referenceObjectDestroyed(QObject* object) override;
    void referenceObjectChanged(QObject* old, QObject* now) override;

private:
    struct SElementNode {
        QString nodeName;
        ICircuitElement* element = nullptr;
        QObject* elementObject = nullptr;
    };

    // Null while the net is out of the circuit.
    ICircuitNode* m_node = nullptr;
    QObject* m_nodeObject = nullptr;
    QPointer<QObject> m_nodeGuard;
    QList<SElementNode> m_elementNodes;
};

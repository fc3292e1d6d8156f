#pragma once

#include "CUndoRedo.h"

#include <QPointer>
#include <QString>

class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;

/// Two terminals were joined into a new net, or a terminal was joined to a net. The wire's shape is
/// not recorded: what comes back is routed by the editor.
class CElementConnectionCmd : public CUndoRedoCmdBase {
public:
    CElementConnectionCmd(ICircuitElementNode* a, ICircuitElementNode* b, ICircuitNode* node);
    CElementConnectionCmd(ICircuitElementNode* a, ICircuitNode* node);

    // Not const, and so not the id that the stack compares.
    using CUndoRedoCmdBase::id;
    int id() { return 3; }

    void undo() override;
    void redo() override;
    void referenceObjectDestroyed(QObject* object) override;
    void referenceObjectChanged(QObject* old, QObject* now) override;

private:
    enum ConnectionType { Unset = 0, TwoTerminals = 1, TerminalToNode = 2 };

    /// One terminal, by pointer while its element lives, and by name for when it comes back.
    struct End {
        void bind(ICircuitElementNode* terminal);

        ICircuitElementNode* elementNode = nullptr;
        ICircuitElement* element = nullptr;
        QObject* elementObject = nullptr;
        QString elementNodeName;
    };

    void bindNode(ICircuitNode* node);
    /// Null once the net is known to be dead or found to be so.
    ICircuitNode* livingNode() const;

    ConnectionType m_connectionType = Unset;
    ICircuitNode* m_node = nullptr;
    // The key by which the stack knows the net, also after its death.
    QObject* m_nodeObject = nullptr;
    // A net may die while this command runs, when nobody tells it.
    QPointer<QObject> m_nodeGuard;
    End m_end1;
    End m_end2;
    End m_end3;
};

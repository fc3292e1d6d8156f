#pragma once

#include "ICircuitElementNode.h"

#include <QDialog>
#include <QList>
#include <QMetaType>

#include <memory>

class CCircuitEditor;
class CDeleteCircuitNodeDialogData;
class ICircuit;
class ICircuitNode;

/// Shows a net on the editor's own scene, beside a list of what can be taken out of it: the whole
/// net, or single terminals but the first two. Changes nothing itself; the wire stays selected.
class CDeleteCircuitNodeDialog : public QDialog {
    Q_OBJECT

public:
    explicit CDeleteCircuitNodeDialog(QWidget* parent);
    ~CDeleteCircuitNodeDialog() override;

    CCircuitEditor* circuitEditor() const;
    /// Takes the editor's circuit, too. Must be given before the net.
    void setCircuitEditor(CCircuitEditor* editor);
    ICircuit* circuit() const;
    void setCircuit(ICircuit* circuit);
    ICircuitNode* circuitNode() const;
    /// Null empties the list.
    void setCirucitNode(ICircuitNode* node);

    bool deleteWholeNode() const;
    /// The terminals whose rows are checked, in row order.
    QList<ICircuitElementNode*> selectedElementNodes() const;

    bool eventFilter(QObject* object, QEvent* event) override;

protected slots:
    /// Selects the wire and zooms to it.
    void fitNodeInView();

private:
    std::unique_ptr<CDeleteCircuitNodeDialogData> d;
};

Q_DECLARE_METATYPE(ICircuitElementNode*)

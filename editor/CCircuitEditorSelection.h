#pragma once

#include <QList>

#include <memory>

class CCircuitEditor;
class CCircuitEditorElementItem;
class CCircuitEditorSelectionData;
class ICircuitElement;
class QGraphicsItem;

/// What the user has selected in one editor, captured at the moment of selecting.
class CCircuitEditorSelection {
public:
    explicit CCircuitEditorSelection(CCircuitEditor* editor);
    ~CCircuitEditorSelection();

    /// Forgets the capture.
    void reset();
    /// Adds the item's element to the capture.
    void initFromItem(CCircuitEditorElementItem* item);
    /// A captured item is dying.
    void forgetItem(QGraphicsItem* item);

    /// In the order of capture.
    const QList<QGraphicsItem*>& itemList() const;
    const QList<ICircuitElement*>& elementList() const;

private:
    std::unique_ptr<CCircuitEditorSelectionData> d;
};

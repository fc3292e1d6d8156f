#pragma once

#include <QList>

#include <memory>

class CCircuitEditor;
class CCircuitEditorSelectionData;
class ICircuitElement;
class QGraphicsItem;
class QRectF;

/// What the user has selected in one editor, captured at the moment of selecting.
class CCircuitEditorSelection {
public:
    explicit CCircuitEditorSelection(CCircuitEditor* editor);
    ~CCircuitEditorSelection();

    CCircuitEditor* circuitEditor() const;

    /// Forgets the capture.
    void reset();
    /// Adds an element to the capture; any other kind of item resets it.
    void initFromItem(QGraphicsItem* item);
    /// Captures what the rectangle, in scene units, touches: elements, and nets all of whose
    /// elements are captured.
    void initFromSelectionRect(const QRectF& rect);
    /// A captured item is dying.
    void forgetItem(QGraphicsItem* item);

    /// In the order of capture.
    QList<QGraphicsItem*> itemList() const;
    QList<ICircuitElement*> elementList() const;

private:
    std::unique_ptr<CCircuitEditorSelectionData> d;
};

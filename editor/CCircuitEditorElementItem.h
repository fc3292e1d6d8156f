#pragma once

#include "ItemTypes.h"

#include <QGraphicsRectItem>
#include <QList>
#include <QObject>

#include <memory>

class CCircuitEditor;
class CCircuitEditorElementItemData;
class CCircuitEditorElementNodeItem;
class CCircuitEditorNodeItem;
class CCircuitElementPropertyTextBox;
class ICircuitElement;
class ICircuitElementNode;

/// The picture of one circuit element. The item's origin is the element's anchor: the picture lies
/// around it, the terminals are child items in the same coordinates, and the rotation is a
/// transform about it. A flip is applied while painting only. Child of the editor as a QObject;
/// owns its terminal items and deletes the property text boxes that it lists; knows, without owning
/// them, the wires that touch the element.
class CCircuitEditorElementItem : public QObject, public QGraphicsRectItem {
    Q_OBJECT

public:
    enum { Type = ElementItemType };

    /// Adds itself to the editor's scene.
    explicit CCircuitEditorElementItem(CCircuitEditor* editor);
    ~CCircuitEditorElementItem() override;

    ICircuitElement* element() const;
    CCircuitEditor* circuitEditor() const;
    /// Null for a terminal that the element doesn't have.
    CCircuitEditorElementNodeItem* nodeItem(ICircuitElementNode* elementNode) const;
    CCircuitEditorElementNodeItem* nodeItem(const QString& name) const;

    /// Shows another element; null shows none.
    void setElement(ICircuitElement* element);
    /// Reads picture, place of the terminals and rotation anew from the model.
    void reloadElement();
    void updateToolTip();
    /// Opens the help file of the element's type, or tells that there is none.
    void showHelpFile();
    /// The one way to change the item's cursor.
    void setCursor2(const QCursor& cursor);

    // The wires that touch the element, each once. An element with a wire can't be dragged.
    void addCircuitNodeItem(CCircuitEditorNodeItem* item);
    void removeCircuitNodeItem(CCircuitEditorNodeItem* item);
    int circuitNodeItemCount() const;
    /// Null for an index out of range.
    CCircuitEditorNodeItem* circuitNodeItem(int index) const;
    /// The terminals have joined nets, or left them.
    void forgetNets();
    /// Re-routes the automatic ones among them.
    void updateCircuitNodes();

    /// The property text boxes of this element, which keep their entries themselves. Whoever asks
    /// may change the list: the boxes' formats follow from the event loop.
    QList<CCircuitElementPropertyTextBox*>& propertyTextBoxList();
    QList<CCircuitElementPropertyTextBox*> propertyTextBoxes() const;

    /// Behind the boxes while the pointer is on the element.
    static QColor hoveredBoxColor();

    /// While set, this item may be moved even though it is wired.
    void setInternalMoveMode(bool on);
    bool isInternalMoveMode() const;

    /// Joins each terminal to the terminals and wires at its place.
    void joinWhatItLiesOn();
    /// Moves the item though it may be wired. Doesn't count as a drag.
    void putBack(const QPointF& position);
    /// Gives the boxes now the formats that they would get from the event loop.
    void settlePropertyTextBoxes();

    // QGraphicsItem
    int type() const override { return Type; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

signals:
    /// The item is about to move by `dp`, in scene units.
    void moved(QPointF dp);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

protected slots:
    void slotAssignedModelChanged();
    /// Shows the inside of a sub-circuit in a modal window, for reading only.
    void studySubCircuit();

private slots:
    void createElementPropertyTextBoxesForDisplayProperties();
    void createElementPropertyTextBoxForCaptionProperty();
    void updatePropertyTextBoxTextFormats();

private:
    bool isLocked() const;
    void tellClick(const QGraphicsSceneMouseEvent* event);
    /// Records the move, then makes it: a locked element refuses, and the record stays.
    void moveByCommand(const QPointF& step);
    void finishDrag();
    void connectAtDrop(CCircuitEditorElementNodeItem* terminal);
    void setHoverCursor();
    void setBoxBackgrounds(const QColor& color);
    /// Puts all boxes in a column beside the element, below it if it is wider than tall.
    void stackPropertyTextBoxes();
    void showOutputVariables();
    void askForMove(QWidget* parent);
    void clearElement();
    void paintSelection(QPainter* painter, const QStyleOptionGraphicsItem* option,
                        const QRectF& frame) const;

    std::unique_ptr<CCircuitEditorElementItemData> d;
};

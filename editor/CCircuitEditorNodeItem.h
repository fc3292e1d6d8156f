#pragma once

#include "ItemTypes.h"

#include <QGraphicsItem>
#include <QSet>

#include <memory>

class CCircuitEditor;
class CCircuitEditorElementItem;
class CCircuitEditorNodeItemData;
class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;

/// The drawing of one net: a path with one sub-path per terminal. An automatic wire is routed anew
/// whenever something moves; a manual one was given from outside and is left alone until it is
/// made automatic again. The path is held in item coordinates, which are scene coordinates as long
/// as the item stands at the origin.
class CCircuitEditorNodeItem : public QGraphicsItem {
public:
    enum { Type = NodeItemType };

    /// Adds itself to the editor's scene.
    explicit CCircuitEditorNodeItem(CCircuitEditor* editor);
    ~CCircuitEditorNodeItem() override;

    /// Whether the net holds a terminal of the element other than the given one.
    static bool joins(ICircuitNode* node, ICircuitElement* element, ICircuitElementNode* except);

    ICircuitNode* circuitNode() const;
    bool isManuallyConnected() const;
    QColor color() const;
    /// The wire, as drawn and as saved.
    QPainterPath internalShape() const;

    /// Routes the automatic wires among the items and at the elements among them, each once. To be
    /// called when all have moved: while an element moves its wires are routed from where it was.
    static void updateWiresOf(const QList<QGraphicsItem*>& items);

    /// Binds the net, once. The net's first terminal gives the wire its colour for good.
    void setCircuitNode(ICircuitNode* node);
    /// False routes the wire anew.
    void setManuallyConnected(bool value);
    /// Routes an automatic wire; a manual one is left alone.
    void updateNode();
    void updateToolTip();
    /// Replaces the path, or adds to it a path in scene coordinates, and makes the wire manual.
    void addShape(QPainterPath path, bool replace);
    /// Takes the branch of the third or a later terminal out of the drawing and makes the wire
    /// manual. For one of two terminals the whole net is removed. False if nothing was done.
    bool removeShapeFor(ICircuitElementNode* elementNode);
    void moveNodeBy(double dx, double dy);

    /// Terminals that the route passes by: they are about to leave the net.
    void setLeftOut(const QSet<ICircuitElementNode*>& terminals);

    /// An element item has taken this wire into its list, or out of it.
    void setHeldBy(CCircuitEditorElementItem* item, bool isHeld);

    // QGraphicsItem
    int type() const override { return Type; }
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    bool contains(const QPointF& point) const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;

private:
    void touchHistory();
    void paintJunctions(QPainter* painter, const QPen& pen);
    void reportModified();

    std::unique_ptr<CCircuitEditorNodeItemData> d;
};

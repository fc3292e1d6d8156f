#pragma once

#include "ItemTypes.h"

#include <QGraphicsRectItem>

#include <memory>

class CCircuitEditorElementItem;
class CCircuitEditorElementNodeItemData;
class ICircuitElementNode;

/// The marker of one terminal: a disc of fixed size in a hit area of one grid cell. Always a child
/// of an element item, in whose unrotated coordinates it stands.
class CCircuitEditorElementNodeItem : public QGraphicsRectItem {
public:
    enum { Type = ElementNodeItemType };

    explicit CCircuitEditorElementNodeItem(CCircuitEditorElementItem* parent);
    ~CCircuitEditorElementNodeItem() override;

    ICircuitElementNode* elementNode() const;
    CCircuitEditorElementItem* elementItem() const;

    /// Shows another terminal; null shows none.
    void setElementNode(ICircuitElementNode* node);
    /// Reads place, colour and name anew from the model.
    void reloadNode();
    /// The terminal may have joined a net, or left it.
    void forgetNets();

    // QGraphicsItem
    int type() const override { return Type; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;

private:
    /// Whether the terminal is on no net and that is to be shown.
    bool isOpen();

    std::unique_ptr<CCircuitEditorElementNodeItemData> d;
};

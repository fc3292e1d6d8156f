#include "BareScene.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitEditorNodeItem.h"
#include "ICircuitElement.h"
#include "ICircuitElementVisual.h"

#include <QGraphicsRectItem>
#include <QGraphicsSvgItem>
#include <QPen>

namespace {

void copyElement(const CCircuitEditorElementItem& original, BareScene::Elements elements,
                 QGraphicsScene* scene) {
    auto* item = new QGraphicsRectItem(original.rect());
    item->setPen(elements == BareScene::Symbols ? QPen(Qt::NoPen) : original.pen());
    item->setPos(original.pos());
    item->setTransform(original.transform());
    item->setFlags(original.flags());
    item->setZValue(original.zValue());
    for (const QGraphicsItem* child : original.childItems()) {
        const auto& marker = static_cast<const QGraphicsRectItem&>(*child);
        auto* disc = new QGraphicsEllipseItem(-2, -2, 4, 4, item);
        disc->setPos(marker.pos());
        disc->setBrush(marker.brush());
        disc->setPen(marker.pen());
    }
    if (elements == BareScene::Symbols) {
        auto* symbol = new QGraphicsSvgItem(item);
        symbol->setSharedRenderer(original.element()->visual()->renderer());
        symbol->setCacheMode(QGraphicsItem::NoCache);
        symbol->setFlag(QGraphicsItem::ItemStacksBehindParent);
        symbol->setPos(original.rect().topLeft());
    }
    scene->addItem(item);
}

}  // namespace

BareScene::BareScene(const CCircuitEditor& original, Elements elements) {
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    scene.setSceneRect(original.scene()->sceneRect());
    for (const QGraphicsItem* item : original.scene()->items()) {
        if (const auto* element = qgraphicsitem_cast<const CCircuitEditorElementItem*>(item)) {
            copyElement(*element, elements, &scene);
        } else if (const auto* wire = qgraphicsitem_cast<const CCircuitEditorNodeItem*>(item)) {
            scene.addPath(wire->internalShape(), QPen(QBrush(wire->color(), Qt::SolidPattern), 2.0,
                                                      Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        }
    }
    view.setScene(&scene);
    view.setRenderHints(original.renderHints());
    view.setSceneRect(original.sceneRect());
}

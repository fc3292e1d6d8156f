#pragma once

#include <QGraphicsScene>

#include <memory>

class CCircuitEditorSceneData;

/// The scene of one editor. It adds a highlighted item, which is drawn with a translucent mark over
/// everything else, in captured pictures too.
class CCircuitEditorScene : public QGraphicsScene {
    Q_OBJECT

public:
    explicit CCircuitEditorScene(QObject* parent);
    ~CCircuitEditorScene() override;

    /// The item is not owned; whoever deletes it takes it out of here first. Null for none.
    void setHighlightedItem(QGraphicsItem* item);
    QGraphicsItem* highlightedItem() const;

    /// To be called when an item that is being dragged won't get its release, be it that it dies.
    void forgetDrag();

protected:
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    std::unique_ptr<CCircuitEditorSceneData> d;
};

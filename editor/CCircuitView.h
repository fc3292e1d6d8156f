#pragma once

#include <QGraphicsView>
#include <QPointer>
#include <QRectF>

class CCircuitEditor;
class CElementPropertySelectionDialog;

/// The miniature of the main editor's drawing in a selection dialog, which it tells what the user
/// picks. Shows the editor's own scene, whose items get no event from here.
class CCircuitView : public QGraphicsView {
    Q_OBJECT

public:
    explicit CCircuitView(CElementPropertySelectionDialog* dialog);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    CElementPropertySelectionDialog* m_dialog = nullptr;
    QPointer<CCircuitEditor> m_editor;
    // What is fitted into the view, in scene units.
    QRectF m_fitRect;
};

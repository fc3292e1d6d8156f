#include "CanvasPalette.h"

#include "ICanvas.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPalette>

namespace {

/// Ink on paper; what marks a selection is the desktop's.
QPalette paper() {
    QPalette palette(QColor(239, 239, 239));
    palette.setColor(QPalette::Highlight, QApplication::palette().color(QPalette::Highlight));
    return palette;
}

}  // namespace

void CanvasPalette::prepare() {
    // Qt asks for this one when a text item is made, and for no widget: those bring their own.
    QApplication::setPalette(paper(), "QWidgetTextControl");
}

void CanvasPalette::apply(ICanvas* canvas) {
    if (canvas) {
        canvas->graphicsView()->viewport()->setPalette(paper());
        canvas->graphicsScene()->setPalette(paper());
    }
}

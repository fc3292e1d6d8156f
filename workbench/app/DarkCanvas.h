#pragma once

#include <QGraphicsEffect>

class QAction;
class QImage;
class QWidget;

/// Shows a canvas, which is ink on white paper, as light ink on a dark ground: each colour keeps
/// its hue, and light becomes dark. Only the screen is like that; pictures and paper stay white,
/// and so does what is saved.
class DarkCanvas : public QGraphicsEffect {
    Q_OBJECT

public:
    /// Lets the action, which is made checkable, switch it for the widget. At first the desktop's
    /// palette decides; what the user chooses is remembered.
    static void follow(QAction* action, QWidget* viewport);

    /// The colour on the dark canvas for one on paper.
    static QRgb darkened(QRgb color);

protected:
    void draw(QPainter* painter) override;

private:
    using QGraphicsEffect::QGraphicsEffect;

    static void darken(QImage* image, const QRect& part);
    /// Draws and darkens no more than what is asked for. False if the device doesn't let it: what
    /// is drawn for the effect is always the whole canvas.
    bool drawInPlace(QPainter* painter);
};

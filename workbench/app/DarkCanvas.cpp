#include "DarkCanvas.h"

#include "Settings.h"

#include <QAction>
#include <QGuiApplication>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPalette>
#include <QWidget>

#include <algorithm>

namespace {

const QString Key = QStringLiteral("DarkCanvas");
// What white becomes: a ground that is not quite black tires the eye less.
constexpr int Ground = 30;
constexpr int Lightest = 255;

bool isDesktopDark() {
    return QGuiApplication::palette().base().color().lightness() < Lightest / 2;
}

}  // namespace

QRgb DarkCanvas::darkened(QRgb color) {
    const auto [least, most] = std::minmax({qRed(color), qGreen(color), qBlue(color)});
    // The lightness the other way round; differences of the parts, and so hue and chroma, stay.
    const int shift = Lightest - least - most;
    const auto part = [shift](int value) {
        return Ground + (value + shift) * (Lightest - Ground) / Lightest;
    };
    return qRgb(part(qRed(color)), part(qGreen(color)), part(qBlue(color)));
}

void DarkCanvas::darken(QImage* image, const QRect& part) {
    const QRect area = part & image->rect();
    // Most neighbours are of one colour.
    QRgb last = qRgb(Lightest, Lightest, Lightest);
    QRgb lastDark = darkened(last);
    for (int y = area.top(); y <= area.bottom(); ++y) {
        auto* pixels = reinterpret_cast<QRgb*>(image->scanLine(y));
        for (int x = area.left(); x <= area.right(); ++x) {
            if (pixels[x] != last) {
                last = pixels[x];
                lastDark = darkened(last);
            }
            pixels[x] = lastDark;
        }
    }
}

bool DarkCanvas::drawInPlace(QPainter* painter) {
    QPaintDevice* device = painter->device();
    const QRegion parts = painter->paintEngine()->systemClip();
    auto* image = device->devType() == QInternal::Image ? static_cast<QImage*>(device) : nullptr;
    const bool isTaken = image && (image->format() == QImage::Format_RGB32 ||
                                   image->format() == QImage::Format_ARGB32_Premultiplied);
    if (!isTaken || parts.isEmpty()) {
        return false;
    }
    drawSource(painter);
    for (const QRect& part : parts) {
        darken(image, part);
    }
    return true;
}

void DarkCanvas::draw(QPainter* painter) {
    if (drawInPlace(painter)) {
        return;
    }
    QPoint offset;
    const QPixmap shown = sourcePixmap(Qt::DeviceCoordinates, &offset, QGraphicsEffect::NoPad);
    QImage image = shown.toImage().convertToFormat(QImage::Format_RGB32);
    darken(&image, image.rect());
    const QTransform before = painter->worldTransform();
    painter->setWorldTransform(QTransform());
    painter->drawImage(offset, image);
    painter->setWorldTransform(before);
}

void DarkCanvas::follow(QAction* action, QWidget* viewport) {
    action->setCheckable(true);
    const auto apply = [viewport](bool on) {
        // The widget owns it, and deletes it for the next.
        viewport->setGraphicsEffect(on ? new DarkCanvas(viewport) : nullptr);
    };
    action->setChecked(Settings().value(Key, isDesktopDark()).toBool());
    apply(action->isChecked());
    QObject::connect(action, &QAction::toggled, viewport, [apply](bool on) {
        Settings().setValue(Key, on);
        apply(on);
    });
}

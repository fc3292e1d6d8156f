#include "ThemedIcon.h"

#include "QtSeriesIcon.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleOption>

namespace {

constexpr int Middle = 128;
// Of 255: what is more colourful keeps its colour.
constexpr int LargestGreySaturation = 60;

QPixmap lightened(const QPixmap& picture) {
    QImage image = picture.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = QColor::fromRgb(line[x]).toHsl();
            if (color.lightness() < Middle && color.hslSaturation() <= LargestGreySaturation) {
                const QColor light =
                    QColor::fromHsl(color.hslHue(), color.hslSaturation(), 255 - color.lightness());
                line[x] = (light.rgb() & RGB_MASK) | (line[x] & ~RGB_MASK);
            }
        }
    }
    return QPixmap::fromImage(image);
}

class ThemedEngine : public QtSeries::IconProxy {
public:
    using IconProxy::IconProxy;

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const QSize size = rect.size() * painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap(size, mode, state));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        if (QApplication::palette().color(QPalette::Window).lightness() >= Middle) {
            return picture(size, mode, state);
        }
        const QPixmap light = lightened(picture(size, QIcon::Normal, state));
        QStyleOption option;
        option.palette = QApplication::palette();
        return mode == QIcon::Normal
                   ? light
                   : QApplication::style()->generatedIconPixmap(mode, light, &option);
    }
    QIconEngine* clone() const override { return new ThemedEngine(*this); }
};

}  // namespace

QIcon themedIcon(const QString& file) {
    return QIcon(new ThemedEngine(QIcon(file)));
}

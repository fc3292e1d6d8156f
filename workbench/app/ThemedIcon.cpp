#include "ThemedIcon.h"

#include <QApplication>
#include <QIconEngine>
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

class ThemedEngine : public QIconEngine {
public:
    explicit ThemedEngine(const QIcon& icon) : m_icon(icon) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const QSize size = rect.size() * painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap(size, mode, state));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        if (QApplication::palette().color(QPalette::Window).lightness() >= Middle) {
            return m_icon.pixmap(size, mode, state);
        }
        const QPixmap picture = lightened(m_icon.pixmap(size, QIcon::Normal, state));
        QStyleOption option;
        option.palette = QApplication::palette();
        return mode == QIcon::Normal
                   ? picture
                   : QApplication::style()->generatedIconPixmap(mode, picture, &option);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return m_icon.actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) const override {
        return m_icon.availableSizes(mode, state);
    }
    void virtual_hook(int id, void* data) override {
        if (id == QIconEngine::IsNullHook) {
            *static_cast<bool*>(data) = m_icon.isNull();
        } else {
            QIconEngine::virtual_hook(id, data);
        }
    }
    QIconEngine* clone() const override { return new ThemedEngine(*this); }

private:
    QIcon m_icon;
};

}  // namespace

QIcon themedIcon(const QString& file) {
    return QIcon(new ThemedEngine(QIcon(file)));
}

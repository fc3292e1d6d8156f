#pragma once

#include <QPaintDevice>

#include <memory>

class QIODevice;
class QPainter;
class QSvgRenderer;
class SvgPaintEngine;

/// A paint device that writes what is painted on it as SVG while it is being painted: only what
/// recurs is held in memory. A symbol, a disc or a pixmap that comes again is written once and then
/// referred to. Coordinates are the painter's; the file states no size and no view box. A clip
/// isn't written.
class SvgPicture : public QPaintDevice {
public:
    /// The target is open for writing and outlives the picture. Fonts given in points count at
    /// `resolution` dots per inch.
    SvgPicture(QIODevice* target, int resolution);
    ~SvgPicture() override;

    /// What the painter paints on, if it is one of these; else null.
    static SvgPicture* under(const QPainter* painter);

    /// Paints as `renderer->render(painter, renderer->viewBoxF())` does. The renderer must stay as
    /// it is until the painter has ended.
    void drawSymbol(QPainter* painter, QSvgRenderer* renderer);
    /// False once the target has taken less than it was given.
    bool isWhole() const;

    // QPaintDevice
    QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    int m_resolution;
    std::unique_ptr<SvgPaintEngine> m_engine;
};

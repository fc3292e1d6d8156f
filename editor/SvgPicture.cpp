#include "SvgPicture.h"

#include "SvgText.h"
#include "XmlText.h"

#include <QBuffer>
#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QSvgRenderer>

#include <cmath>
#include <utility>

using namespace SvgText;

namespace {

constexpr int BufferSize = 1 << 16;

/// What Qt's own writer can't write, either: the painter draws it in another way.
const QPaintEngine::PaintEngineFeatures Features(QPaintEngine::AllFeatures &
                                                 ~QPaintEngine::PatternBrush &
                                                 ~QPaintEngine::PerspectiveTransform &
                                                 ~QPaintEngine::ConicalGradientFill &
                                                 ~QPaintEngine::PorterDuff);

bool isTranslation(const QTransform& transform) {
    return transform.type() <= QTransform::TxTranslate;
}

/// Whether lengths stay as they are, and thereby pens.
bool isRigid(const QTransform& t) {
    return t.type() <= QTransform::TxTranslate ||
           (t.type() <= QTransform::TxRotate &&
            std::abs(t.m11() * t.m11() + t.m12() * t.m12() - 1) < 1e-12 &&
            std::abs(t.m21() * t.m21() + t.m22() * t.m22() - 1) < 1e-12);
}

}  // namespace

class SvgPaintEngine final : public QPaintEngine {
public:
    SvgPaintEngine(QIODevice* target, int resolution)
        : QPaintEngine(Features), m_target(target), m_resolution(resolution) {}

    bool begin(QPaintDevice*) override;
    bool end() override;
    void updateState(const QPaintEngineState& state) override;
    void drawPath(const QPainterPath& path) override;
    void drawEllipse(const QRectF& rect) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawPixmap(const QRectF& rect, const QPixmap& pixmap, const QRectF& source) override;
    void drawImage(const QRectF& rect, const QImage& image, const QRectF& source,
                   Qt::ImageConversionFlags flags) override;
    void drawTextItem(const QPointF& position, const QTextItem& text) override;
    Type type() const override { return SVG; }

    void drawSymbol(QPainter* painter, QSvgRenderer* renderer);
    bool isWhole() const { return m_isWhole; }

private:
    QByteArray& out() { return m_symbol ? *m_symbol : m_buffer; }
    QByteArray newId() { return QByteArray::number(++m_lastId, 36).prepend('s'); }
    QByteArray idOfSymbol(QPainter* painter, QSvgRenderer* renderer);
    QByteArray idOfGradient();
    QByteArray shapeStyle();
    void openGroup(const QByteArray& style);
    void closeGroup();
    void define(const QByteArray& id, const QByteArray& content);
    void use(const QByteArray& id, const QTransform& transform, double opacity);
    void appendImage(const QRectF& rect, const QImage& image);
    void flush();

    QIODevice* m_target;
    int m_resolution;
    QByteArray m_buffer;
    // Where the symbol that is being recorded goes; null otherwise.
    QByteArray* m_symbol = nullptr;
    // Of the group that is open, with a blank before it; empty if none is.
    QByteArray m_group;
    bool m_isWhole = true;
    int m_lastId = 0;
    QHash<const QSvgRenderer*, QByteArray> m_symbols;
    // What is defined, by its content.
    QHash<QByteArray, QByteArray> m_ids;

    QPen m_pen;
    QBrush m_brush;
    QFont m_font;
    QTransform m_transform;
    double m_opacity = 1;
};

bool SvgPaintEngine::begin(QPaintDevice*) {
    m_buffer =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
        "version=\"1.2\" baseProfile=\"tiny\">\n<g fill-rule=\"evenodd\">\n";
    return m_target->isWritable();
}

bool SvgPaintEngine::end() {
    closeGroup();
    m_buffer += "</g>\n</svg>\n";
    flush();
    return m_isWhole;
}

void SvgPaintEngine::flush() {
    m_isWhole = m_isWhole && m_target->write(m_buffer) == m_buffer.size();
    m_buffer.resize(0);
    m_buffer.reserve(BufferSize);
}

void SvgPaintEngine::updateState(const QPaintEngineState& state) {
    m_pen = state.pen();
    m_brush = state.brush();
    m_font = state.font();
    m_transform = state.transform();
    m_opacity = state.opacity();
}

void SvgPaintEngine::openGroup(const QByteArray& style) {
    if (!m_symbol && m_buffer.size() > BufferSize) {
        flush();
    }
    if (style == m_group) {
        return;
    }
    closeGroup();
    m_group = style;
    if (!style.isEmpty()) {
        out() += "<g" + style + ">\n";
    }
}

void SvgPaintEngine::closeGroup() {
    if (!m_group.isEmpty()) {
        out() += "</g>\n";
        m_group.clear();
    }
}

void SvgPaintEngine::define(const QByteArray& id, const QByteArray& content) {
    openGroup(QByteArray());
    out() += "<defs><g id=\"" + id + "\">" + content + "</g></defs>\n";
}

void SvgPaintEngine::use(const QByteArray& id, const QTransform& transform, double opacity) {
    openGroup(QByteArray());  // the content would inherit what it leaves unsaid
    QByteArray& text = out();
    text += "<use xlink:href=\"#" + id + '"';
    if (isTranslation(transform)) {
        appendAttribute(text, "x", transform.dx());
        appendAttribute(text, "y", transform.dy());
    } else {
        appendTransform(text, transform);
    }
    if (opacity != 1) {
        appendAttribute(text, "opacity", opacity);
    }
    text += "/>\n";
}

QByteArray SvgPaintEngine::idOfGradient() {
    QByteArray content;
    appendGradient(content, *m_brush.gradient(), m_brush.transform(), "?");
    QByteArray& id = m_ids[content];
    if (id.isEmpty()) {
        id = newId();
        out() += "<defs>" + content.replace("id=\"?\"", "id=\"" + id + '"') + "</defs>\n";
    }
    return id;
}

QByteArray SvgPaintEngine::shapeStyle() {
    QByteArray style;
    style.reserve(200);
    if (m_brush.gradient()) {
        appendAttribute(style, "fill", "url(#" + idOfGradient() + ')');
    } else {
        appendFill(style, m_brush);
    }
    appendPen(style, m_pen);
    if (m_opacity != 1) {
        appendAttribute(style, "opacity", m_opacity);
    }
    return style;
}

void SvgPaintEngine::drawPath(const QPainterPath& path) {
    if (path.isEmpty() || (m_pen.style() == Qt::NoPen && m_brush.style() == Qt::NoBrush)) {
        return;
    }
    openGroup(shapeStyle());
    QByteArray& text = out();
    text += "<path";
    if (m_pen.style() != Qt::NoPen && m_pen.isCosmetic()) {
        text += " vector-effect=\"non-scaling-stroke\"";
    }
    if (m_brush.style() != Qt::NoBrush && path.fillRule() == Qt::WindingFill) {
        text += " fill-rule=\"nonzero\"";
    }
    if (isRigid(m_transform) && !m_brush.gradient()) {
        appendPath(text, m_transform.map(path));
    } else {
        appendPath(text, path);
        appendTransform(text, m_transform);
    }
    text += "/>\n";
}

void SvgPaintEngine::drawEllipse(const QRectF& rect) {
    const bool isDisc = rect.width() == rect.height() && m_pen.brush().style() <= Qt::SolidPattern;
    if (m_symbol || !isDisc || m_brush.style() > Qt::SolidPattern || !isRigid(m_transform)) {
        QPaintEngine::drawEllipse(rect);
        return;
    }
    // Terminals by the ten thousand.
    QByteArray disc = "<circle";
    appendAttribute(disc, "r", rect.width() / 2);
    appendFill(disc, m_brush);
    appendPen(disc, m_pen);
    if (m_pen.style() != Qt::NoPen && m_pen.isCosmetic()) {
        disc += " vector-effect=\"non-scaling-stroke\"";
    }
    disc += "/>";
    QByteArray& id = m_ids[disc];
    if (id.isEmpty()) {
        id = newId();
        define(id, disc);
    }
    const QPointF center = m_transform.map(rect.center());
    use(id, QTransform::fromTranslate(center.x(), center.y()), m_opacity);
}

void SvgPaintEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    if (count < 1) {
        return;
    }
    QPainterPath path(points[0]);
    for (int i = 1; i < count; ++i) {
        path.lineTo(points[i]);
    }
    if (mode == PolylineMode) {
        const QBrush brush = std::exchange(m_brush, QBrush());
        drawPath(path);
        m_brush = brush;
        return;
    }
    path.closeSubpath();
    path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    drawPath(path);
}

void SvgPaintEngine::appendImage(const QRectF& rect, const QImage& image) {
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QBuffer::WriteOnly);
    image.save(&buffer, "PNG");
    QByteArray& text = out();
    text += "<image";
    appendAttribute(text, "x", rect.x());
    appendAttribute(text, "y", rect.y());
    appendAttribute(text, "width", rect.width());
    appendAttribute(text, "height", rect.height());
    text += " preserveAspectRatio=\"none\" xlink:href=\"data:image/png;base64,";
    text += data.toBase64() + "\"/>";
}

void SvgPaintEngine::drawImage(const QRectF& rect, const QImage& image, const QRectF& source,
                               Qt::ImageConversionFlags) {
    QByteArray group;
    appendTransform(group, m_transform);
    if (m_opacity != 1) {
        appendAttribute(group, "opacity", m_opacity);
    }
    openGroup(group);
    appendImage(rect, source.toRect() == image.rect() ? image : image.copy(source.toRect()));
    out() += '\n';
}

void SvgPaintEngine::drawPixmap(const QRectF& rect, const QPixmap& pixmap, const QRectF& source) {
    drawImage(rect, pixmap.toImage(), source, Qt::AutoColor);
}

void SvgPaintEngine::drawTextItem(const QPointF& position, const QTextItem& text) {
    if (m_pen.style() == Qt::NoPen) {
        return;
    }
    const QString string = xmlText(text.text());
    if (string.isEmpty()) {
        QPaintEngine::drawTextItem(position, text);  // glyphs without a text
        return;
    }
    QByteArray style;
    appendColor(style, "fill", m_pen.color());
    style += " stroke=\"none\" xml:space=\"preserve\"";
    appendFont(style, text.font(), m_resolution);
    if (m_opacity != 1) {
        appendAttribute(style, "opacity", m_opacity);
    }
    openGroup(style);
    QByteArray& line = out();
    line += "<text";
    const bool isMoved = isTranslation(m_transform);
    const QPointF start = isMoved ? m_transform.map(position) : position;
    appendAttribute(line, "x", start.x());
    appendAttribute(line, "y", start.y());
    if (!isMoved) {
        appendTransform(line, m_transform);
    }
    line += '>' + string.toHtmlEscaped().toUtf8() + "</text>\n";
}

QByteArray SvgPaintEngine::idOfSymbol(QPainter* painter, QSvgRenderer* renderer) {
    QByteArray& id = m_symbols[renderer];
    if (id.isEmpty()) {
        QByteArray content;
        closeGroup();
        m_symbol = &content;
        painter->save();
        painter->setWorldTransform(QTransform());
        painter->setOpacity(1);
        renderer->render(painter, renderer->viewBoxF());
        painter->restore();
        closeGroup();
        m_symbol = nullptr;
        QByteArray& known = m_ids[content];
        if (known.isEmpty()) {
            known = newId();
            define(known, '\n' + content);
        }
        id = known;
    }
    return id;
}

void SvgPaintEngine::drawSymbol(QPainter* painter, QSvgRenderer* renderer) {
    const QByteArray id = idOfSymbol(painter, renderer);
    use(id, painter->combinedTransform(), painter->opacity());
}

SvgPicture::SvgPicture(QIODevice* target, int resolution)
    : m_resolution(resolution), m_engine(std::make_unique<SvgPaintEngine>(target, resolution)) {}

SvgPicture::~SvgPicture() = default;

SvgPicture* SvgPicture::under(const QPainter* painter) {
    return painter->paintEngine()->type() == QPaintEngine::SVG
               ? dynamic_cast<SvgPicture*>(painter->device())
               : nullptr;
}

void SvgPicture::drawSymbol(QPainter* painter, QSvgRenderer* renderer) {
    m_engine->drawSymbol(painter, renderer);
}

bool SvgPicture::isWhole() const {
    return m_engine->isWhole();
}

QPaintEngine* SvgPicture::paintEngine() const {
    return m_engine.get();
}

int SvgPicture::metric(PaintDeviceMetric metric) const {
    switch (metric) {
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return m_resolution;
        case PdmDepth:
            return 32;
        case PdmNumColors:
        case PdmWidth:
        case PdmHeight:
        case PdmWidthMM:
        case PdmHeightMM:
            return -1;  // it has neither a palette nor a size
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return QPaintDevice::metric(metric);
    }
}

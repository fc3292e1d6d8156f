#include "ElementVisual.h"

#include <QSvgRenderer>

ElementVisual::ElementVisual(QString picture, QByteArray drawing, QPointF offset, QObject* parent)
    : QObject(parent),
      m_picture(std::move(picture)),
      m_drawing(std::move(drawing)),
      m_offset(offset) {}

ElementVisual::~ElementVisual() = default;

QPixmap ElementVisual::pixmap() {
    if (m_pixmap.isNull() && !isVector()) {
        m_pixmap.load(m_picture);
    }
    return m_pixmap;
}

QPointF ElementVisual::pictureOffset() {
    return m_offset;
}

QSvgRenderer* ElementVisual::renderer() {
    if (!m_renderer && isVector()) {
        m_renderer = m_picture.isEmpty() ? std::make_unique<QSvgRenderer>(m_drawing)
                                         : std::make_unique<QSvgRenderer>(m_picture);
    }
    return m_renderer.get();
}

bool ElementVisual::isVector() const {
    return m_picture.isEmpty() || m_picture.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
}

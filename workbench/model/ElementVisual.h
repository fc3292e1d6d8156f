#pragma once

#include "ICircuitElementVisual.h"

#include <QObject>

#include <memory>

/// The picture of an element type, shared by all its elements. The file is read when the picture is
/// first asked for, so that a program without a window can use the types.
class ElementVisual : public QObject, public ICircuitElementVisual {
    Q_OBJECT
    Q_INTERFACES(ICircuitElementVisual)

public:
    /// `picture` is the file name of an SVG or of a bitmap, or is empty, and `drawing` an SVG;
    /// `offset` is in scene units.
    ElementVisual(QString picture, QByteArray drawing, QPointF offset, QObject* parent = nullptr);
    ~ElementVisual() override;

    // IContainer
    QObject* containerObject() override { return this; }

    // ICircuitElementVisual
    QPixmap pixmap() override;
    QPointF pictureOffset() override;
    QSvgRenderer* renderer() override;

private:
    bool isVector() const;

    QString m_picture;
    QByteArray m_drawing;
    QPointF m_offset;
    QPixmap m_pixmap;
    std::unique_ptr<QSvgRenderer> m_renderer;
};

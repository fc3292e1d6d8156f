#pragma once

#include <QWidget>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#endif
#include <QGLWidget>
#else
#include <QOpenGLWidget>
#include <QSurfaceFormat>
#endif

namespace QtSeries {

/// A widget that GL paints, with several samples for each pixel.
inline QWidget* makeGlWidget(QWidget* parent) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return new QGLWidget(QGLFormat(QGL::SampleBuffers), parent);
#else
    constexpr int Samples = 4;
    auto* widget = new QOpenGLWidget(parent);
    QSurfaceFormat format;
    format.setSamples(Samples);
    widget->setFormat(format);
    return widget;
#endif
}

}  // namespace QtSeries

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) && defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

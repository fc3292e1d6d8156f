#include "GlViewport.h"

#include <QGuiApplication>
#include <QOpenGLContext>

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#endif
#include <QGLWidget>

QWidget* makeGlViewport(QWidget* parent) {
    // A platform without windows may own a context and still have nothing to show it in.
    const QString platform = QGuiApplication::platformName();
    QOpenGLContext context;
    if (platform == QLatin1String("offscreen") || platform == QLatin1String("minimal") ||
        !context.create()) {
        return nullptr;
    }
    // Without several samples for each pixel GL loses the lines of a drawing that is zoomed out.
    return new QGLWidget(QGLFormat(QGL::SampleBuffers), parent);
}

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

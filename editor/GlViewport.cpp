#include "GlViewport.h"

#include "QtSeriesGl.h"

#include <QGuiApplication>
#include <QOpenGLContext>

QWidget* makeGlViewport(QWidget* parent) {
    // A platform without windows may own a context and still have nothing to show it in.
    const QString platform = QGuiApplication::platformName();
    QOpenGLContext context;
    if (platform == QLatin1String("offscreen") || platform == QLatin1String("minimal") ||
        !context.create()) {
        return nullptr;
    }
    // Without several samples for each pixel GL loses the lines of a drawing that is zoomed out.
    return QtSeries::makeGlWidget(parent);
}

#pragma once

#include "IContainer.h"

#include <QPixmap>
#include <QPointF>

class QSvgRenderer;

/// How an element looks. The picture is drawn around the element's origin, in scene units.
class ICircuitElementVisual : public virtual IContainer {
public:
    /// Bitmap picture; used only where there is no renderer.
    virtual QPixmap pixmap() = 0;
    /// Offset of the picture's centre from the element's origin.
    virtual QPointF pictureOffset() = 0;
    /// Vector picture, null if there is only a bitmap. Owned by the visual.
    virtual QSvgRenderer* renderer() = 0;

protected:
    ~ICircuitElementVisual() = default;
};

Q_DECLARE_INTERFACE(ICircuitElementVisual, "com.tesmira.ICircuitElementVisual/1.0")

#pragma once

#include "IContainer.h"

#include <QColor>
#include <QPointF>
#include <QString>

class ICircuitElement;

/// A terminal of an element; it lives as long as its element.
class ICircuitElementNode : public virtual IContainer {
public:
    virtual ICircuitElement* element() = 0;
    virtual QString name() = 0;
    /// One letter: "e" electrical, "d" digital, "t" thermal, "p" power, "g" general, "x" mixed.
    virtual QString type() = 0;
    /// In the element's own coordinates: mirrored by a flip, not turned by the rotation.
    virtual QPointF position() = 0;
    /// Colour of the terminal and of a wire that starts at it.
    virtual QColor color() = 0;

protected:
    ~ICircuitElementNode() = default;
};

Q_DECLARE_INTERFACE(ICircuitElementNode, "com.tesmira.ICircuitElementNode/1.0")

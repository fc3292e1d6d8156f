#pragma once

#include "ClipboardData.h"
#include "IContainer.h"

#include <QString>

/// The application's clipboard: several entries, divided into named contexts.
class IClipboard : public virtual IContainer {
public:
    /// Registers a context; a known one is left as it is.
    virtual void addContext(const QString& context) = 0;
    virtual void setActiveContext(const QString& context) = 0;
    /// Adds an entry to the active context.
    virtual void addData(ClipboardData data) = 0;
    /// Number of entries of the active context.
    virtual int dataCount() = 0;
    virtual ClipboardData data(int index) = 0;

protected:
    ~IClipboard() = default;
};

Q_DECLARE_INTERFACE(IClipboard, "com.tesmira.IClipboard/1.0")

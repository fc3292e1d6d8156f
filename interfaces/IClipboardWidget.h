#pragma once

#include "IContainer.h"

/// The view of the clipboard. Its object emits `dataClicked(QString,ClipboardData,int)` with the
/// context, the entry and its index.
class IClipboardWidget : public virtual IContainer {
protected:
    ~IClipboardWidget() = default;
};

Q_DECLARE_INTERFACE(IClipboardWidget, "com.tesmira.IClipboardWidget/1.0")

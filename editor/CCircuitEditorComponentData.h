#pragma once

#include "CCircuitEditor.h"

#include <QPointer>
#include <QString>
#include <QVariantMap>

class QAction;

namespace Plexa {
class AbstractComponent;
}

/// Private data of the component, shared by its sources.
class CCircuitEditorComponentData {
public:
    QString elementDocumentationPath;
    QString circuitFilesPath;
    QPointer<CCircuitEditor> circuitEditor;
    QAction* manualCtorModeAction = nullptr;
    bool useOpenGL = true;
    Plexa::AbstractComponent* elementExplorerComponent = nullptr;
    Plexa::AbstractComponent* propertyEditorComponent = nullptr;
    QVariantMap textBoxColors;
};

#pragma once

#include "CCircuitEditor.h"
#include "COutputVariablesWidget.h"

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
    QPointer<COutputVariablesWidget> outputVariablesWidget;
    QAction* manualCtorModeAction = nullptr;
    /// While the action is made to show the editor's mode, which it must not change in turn.
    bool showingMode = false;
    bool useOpenGL = true;
    Plexa::AbstractComponent* elementExplorerComponent = nullptr;
    Plexa::AbstractComponent* propertyEditorComponent = nullptr;
    QVariantMap textBoxColors;
};

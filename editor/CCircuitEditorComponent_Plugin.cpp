#include "CCircuitEditorComponent_Plugin.h"

#include "CCircuitEditorComponent.h"

QString CCircuitEditorComponent_Plugin::componentName() const {
    return QStringLiteral("CCircuitEditorComponent");
}

void CCircuitEditorComponent_Plugin::registerComponent() {
    registerComponentInfo(QStringLiteral("CCircuitEditorComponent"),
                          &CCircuitEditorComponent::CreateInstance,
                          &CCircuitEditorComponent::staticMetaObject);
}

const QMetaObject* CCircuitEditorComponent_Plugin::componentMeta() const {
    return &CCircuitEditorComponent::staticMetaObject;
}

QString CCircuitEditorComponent_Plugin::buildKey() const {
    return QStringLiteral("Qm7#xP2w");
}

IComponentPlugin* GetComponentPlugin() {
    return new CCircuitEditorComponent_Plugin;
}

#pragma once

#include <Plexa/IComponentPlugin.h>

/// What the library's entry function answers: it makes the component known to the framework.
class CCircuitEditorComponent_Plugin : public IComponentPlugin {
public:
    QString componentName() const override;
    void registerComponent() override;
    const QMetaObject* componentMeta() const override;
    QString buildKey() const override;
};

/// The library's one entry by name; the caller owns the answer.
extern "C" Q_DECL_EXPORT IComponentPlugin* GetComponentPlugin();

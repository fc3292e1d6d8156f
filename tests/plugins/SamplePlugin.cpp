// A plug-in as small as can be, built once for each kind of answer that a host must cope with.

#include <Plexa/AbstractComponent.h>
#include <Plexa/IComponentPlugin.h>

namespace {

Plexa::AbstractComponent* createComponent() {
    auto* component = new Plexa::AbstractComponent;
    component->setObjectName(QStringLiteral("made by the plug-in"));
    return component;
}

class SamplePlugin : public IComponentPlugin {
public:
    QString componentName() const override { return QStringLiteral("Sample"); }
    void registerComponent() override {
        registerComponentInfo(componentName(), createComponent, componentMeta());
    }
    const QMetaObject* componentMeta() const override {
        return &Plexa::AbstractComponent::staticMetaObject;
    }
    QString buildKey() const override {
        return SAMPLE_RIGHT_KEY ? QStringLiteral("Qm7#xP2w") : QStringLiteral("another key");
    }
};

}  // namespace

extern "C" Q_DECL_EXPORT IComponentPlugin* GetComponentPlugin() {
    return SAMPLE_EMPTY ? nullptr : new SamplePlugin;
}

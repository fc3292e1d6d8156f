#include "PluginLoader.h"

#include "IComponentPlugin.h"

#include <QFileInfo>
#include <QLibrary>

#include <memory>

namespace Plexa {

QString loadPlugin(const QString& fileName, QString* error) {
    if (!QFileInfo::exists(fileName)) {
        *error = QStringLiteral("the plug-in %1 does not exist").arg(fileName);
        return {};
    }
    QLibrary library(fileName);
    // A symbol that nobody has is found missing here, and not in the middle of the work.
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library.load()) {
        *error = QStringLiteral("the plug-in %1 cannot be loaded: %2")
                     .arg(fileName, library.errorString());
        return {};
    }
    using Entry = IComponentPlugin* (*)();
    const auto entry = reinterpret_cast<Entry>(library.resolve("GetComponentPlugin"));
    if (!entry) {
        *error = QStringLiteral("the plug-in %1 has no entry \"GetComponentPlugin\"").arg(fileName);
        return {};
    }
    const std::unique_ptr<IComponentPlugin> plugin(entry());
    if (!plugin) {
        *error = QStringLiteral("the plug-in %1 offers no component").arg(fileName);
        return {};
    }
    if (plugin->buildKey() != QLatin1String(BuildKey)) {
        *error = QStringLiteral(
                     "the plug-in %1 was built for another application (build key "
                     "\"%2\")")
                     .arg(fileName, plugin->buildKey());
        return {};
    }
    plugin->registerComponent();
    return plugin->componentName();
}

}  // namespace Plexa

#pragma once

#include "PlexaExport.h"

#include <QString>

namespace Plexa {

/// The key that a plug-in must have been built with.
constexpr char BuildKey[] = "Qm7#xP2w";

/// Loads the shared library, asks its entry `GetComponentPlugin` for the plug-in, checks the build
/// key and lets it register its component. The library stays loaded until the process ends, for
/// its code runs until then. Answers the component's name; on failure an empty name, with one
/// sentence in `*error`.
PLEXA_EXPORT QString loadPlugin(const QString& fileName, QString* error);

}  // namespace Plexa

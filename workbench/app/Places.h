#pragma once

#include <QString>

/// Where the program finds what belongs to it: seen from its own folder, so that an installation
/// can be anywhere. The build folder is laid out in the same way. There must be an application.
namespace Places {

/// A file or folder of the program's data: "gui.json", "library", "icons", "help", "docs",
/// "examples".
QString data(const QString& name);
/// The editor, beside the program or else where its package has it.
QString plugin();

}  // namespace Places

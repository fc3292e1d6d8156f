#pragma once

#include <QStringList>

/// The files that the user has opened or saved last, kept over runs of the program.
namespace RecentFiles {

constexpr int MaximumCount = 10;

/// Absolute names, the latest first; those that are gone are left out.
QStringList list();
void add(const QString& fileName);

}  // namespace RecentFiles

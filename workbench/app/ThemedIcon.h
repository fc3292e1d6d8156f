#pragma once

#include <QIcon>

/// An icon drawn for light windows that can be seen on dark ones, too: there its dark greys are
/// light. Looks at the application's palette whenever it is drawn.
QIcon themedIcon(const QString& file);

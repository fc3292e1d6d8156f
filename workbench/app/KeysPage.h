#pragma once

#include <QString>
#include <QVariant>

class QMenuBar;

/// All keys of the application as a page of HTML: those of every action in the menus, by menu, and
/// behind them `gestures`, a list of maps with "on", "do" and "effect", for what is no action.
QString keysPage(const QMenuBar& menus, const QVariantList& gestures);

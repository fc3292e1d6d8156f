#pragma once

class QWidget;

/// A viewport that paints through GL, for `parent`, which owns it; null where the platform can give
/// no GL context. The plain viewport then stays.
QWidget* makeGlViewport(QWidget* parent);

#pragma once

#include <QPoint>
#include <QString>

#include <optional>

class QWidget;

/// Asks how far something is to be moved, in grid points. Nothing if the user doesn't want to, or
/// if the parent goes while the dialog is open. An empty title leaves the form's own.
std::optional<QPoint> askForDistance(QWidget* parent, const QString& title);

#pragma once

#include <QPoint>
#include <QString>

class QWidget;

/// Asks how far something is to be moved, in grid points. No distance if the user doesn't want to,
/// or if the parent goes while the dialog is open. An empty title leaves the form's own.
QPoint askForDistance(QWidget* parent, const QString& title);

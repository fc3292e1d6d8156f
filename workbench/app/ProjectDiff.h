#pragma once

#include <QJsonObject>
#include <QStringList>

/// What changed from one drawing to the other, a sentence each, in the order elements, nets, texts,
/// parameters, output variables, simulation. Both are as the editor describes them, with what the
/// project says of the simulation under "simulation". An element or net that bears another name but
/// is the same in all else was renamed. Empty if nothing did.
QStringList differencesOf(const QJsonObject& before, const QJsonObject& after);

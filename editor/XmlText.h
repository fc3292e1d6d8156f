#pragma once

#include <QString>

/// The text without the characters that XML forbids, which would make a file unreadable: names come
/// from users, who paste them from anywhere.
QString xmlText(const QString& text);

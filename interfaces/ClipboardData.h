#pragma once

#include <QIcon>
#include <QMetaType>
#include <QString>
#include <QVariant>

/// One entry of the application clipboard, by value.
struct ClipboardData {
    QIcon icon;
    QVariant data;
    QString description;
};

Q_DECLARE_METATYPE(ClipboardData)

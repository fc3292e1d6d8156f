#pragma once

#include "IEditableProperties.h"

/// Index of the first editable property of that name; -1 if there is none, or no properties.
inline int indexOfProperty(IEditableProperties* properties, const QString& name) {
    const int count = properties ? properties->propertyCount() : 0;
    for (int i = 0; i < count; ++i) {
        if (properties->propertyName(i) == name) {
            return i;
        }
    }
    return -1;
}

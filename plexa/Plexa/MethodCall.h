#pragma once

#include "PlexaExport.h"

#include <QVariantList>

class QObject;

namespace Plexa {

/// Calls an invokable method or slot by name: `call` holds the name and the arguments, which are
/// converted to the types that the method declares. False if the object has no such method.
PLEXA_EXPORT bool callMethod(QObject* object, const QVariantList& call);

}  // namespace Plexa

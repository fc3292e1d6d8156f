#include "MethodCall.h"

#include "QtSeries.h"

#include <QMetaMethod>
#include <QObject>

#include <array>

namespace Plexa {

bool callMethod(QObject* object, const QVariantList& call) {
    const QByteArray name = call.value(0).toByteArray();
    const int argumentCount = call.size() - 1;
    const QMetaObject* meta = object->metaObject();
    for (int i = 0; i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.name() != name || method.parameterCount() != argumentCount) {
            continue;
        }
        std::array<QVariant, 4> values;
        std::array<QGenericArgument, 4> arguments;
        bool converted = argumentCount <= static_cast<int>(values.size());
        for (int k = 0; converted && k < argumentCount; ++k) {
            values[k] = call.at(k + 1);
            converted = QtSeries::convert(&values[k], method.parameterType(k));
            arguments[k] = QGenericArgument(values[k].typeName(), values[k].constData());
        }
        if (converted && method.invoke(object, Qt::DirectConnection, arguments[0], arguments[1],
                                       arguments[2], arguments[3])) {
            return true;
        }
    }
    return false;
}

}  // namespace Plexa

#include "PropertyEditorRows.h"

#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitNode.h"
#include "IEditableProperties.h"
#include "IElementBasicParametersDesc.h"
#include "MathUtils.h"

#include <Plexa/DataStore.h>

#include <QCoreApplication>
#include <QHash>
#include <QMetaProperty>
#include <QObject>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("PropertyEditor", text);
}

/// The object's editable properties if the row's place in them is still its own.
IEditableProperties* editableFor(QObject* object, const PropertyRow& row) {
    auto* editable = qobject_cast<IEditableProperties*>(object);
    const bool fits = editable && row.index >= 0 && row.index < editable->propertyCount() &&
                      editable->propertyName(row.index) == row.name;
    return fits ? editable : nullptr;
}

/// Whether the object's type lists the property among its numbers; a circuit's values may all be
/// expressions.
bool isNumber(QObject* object, const QString& name) {
    auto* element = qobject_cast<ICircuitElement*>(object);
    ICircuitElementDesc* type = element ? element->desc() : nullptr;
    void* answer = nullptr;
    if (type) {
        type->queryInterface(QStringLiteral("IElementBasicParametersDesc"), &answer);
    }
    if (!element) {
        return qobject_cast<ICircuit*>(object);
    }
    return answer &&
           static_cast<IElementBasicParametersDesc*>(answer)->realParameters().keys().contains(
               name);
}

IMathUtils::Lookup globalParametersOf(ICircuit* circuit) {
    return [circuit](const QString& name) {
        for (int i = 0; circuit && i < circuit->globalVariableCount(); ++i) {
            if (circuit->globalVariableName(i) == name) {
                const QString value = circuit->globalVariableValue(i).toString();
                return value.isNull() ? QStringLiteral("") : value;
            }
        }
        return QString();
    };
}

QString groupTitle(const QString& group) {
    if (group == QLatin1String("rparams")) {
        return tr("Parameters");
    }
    if (group == QLatin1String("globals")) {
        return tr("Global Parameters");
    }
    return group.isEmpty() ? tr("Other") : group;
}

}  // namespace

bool PropertyRow::isParameter() const {
    return group == groupTitle(QStringLiteral("rparams"));
}

bool PropertyRow::operator==(const PropertyRow& other) const {
    return group == other.group && name == other.name && index == other.index &&
           writable == other.writable;
}

QVariant PropertyRow::value(QObject* object) const {
    if (index < 0) {
        return object->property(name.toUtf8().constData());
    }
    IEditableProperties* editable = editableFor(object, *this);
    return editable ? editable->propertyValue(index) : QVariant();
}

QString PropertyRow::text(QObject* object) const {
    if (index >= 0) {
        IEditableProperties* editable = editableFor(object, *this);
        return editable ? editable->propertyValueString(index) : QString();
    }
    const QVariant current = value(object);
    const QStringList named = choices();
    return named.isEmpty() ? current.toString() : named.value(current.toInt());
}

void PropertyRow::setValue(QObject* object, const QVariant& value) const {
    if (index < 0) {
        object->setProperty(name.toUtf8().constData(), value);
    } else if (IEditableProperties* editable = editableFor(object, *this)) {
        editable->setPropertyValue(index, value);
    }
}

PropertyRow::Note PropertyRow::note(QObject* object) const {
    const QString expression = index < 0 ? QString() : value(object).toString();
    if (!expression.startsWith(QLatin1Char('{')) || !isNumber(object, name)) {
        return {};
    }
    MathUtils math;
    const IMathUtils::Evaluation result =
        math.evaluate(expression, globalParametersOf(circuitOf(object)));
    return result.ok ? Note{expression + QLatin1String(" = ") + math.toEngineering(result.value)}
                     : Note{expression + QLatin1String(": ") + result.problem, true};
}

QStringList PropertyRow::choices() const {
    static const QHash<QString, QStringList> named = {
        {QStringLiteral("Rotation"),
         {QStringLiteral("0°"), QStringLiteral("90°"), QStringLiteral("180°"),
          QStringLiteral("270°")}},
        {QStringLiteral("Flip"), {tr("none"), tr("top to bottom"), tr("left to right")}}};
    return index < 0 ? named.value(name) : QStringList();
}

QStringList PropertyRow::texts(QObject* object) const {
    auto* element = qobject_cast<ICircuitElement*>(object);
    ICircuitElementDesc* type = element ? element->desc() : nullptr;
    if (!type) {
        return {};
    }
    if (isParameter()) {
        return type->info().value(QStringLiteral("choices.") + name).toStringList();
    }
    QStringList models = index < 0 && name == QLatin1String("ModelName")
                             ? type->info().value(QStringLiteral("models")).toStringList()
                             : QStringList();
    if (!models.isEmpty()) {
        // None, and one that another library had.
        models.prepend(QString());
        const QString present = element->modelName();
        if (!models.contains(present)) {
            models.append(present);
        }
    }
    return models;
}

QVector<PropertyRow> propertyRowsOf(QObject* object) {
    QVector<PropertyRow> rows;
    if (!object) {
        return rows;
    }
    const QMetaObject* meta = object->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        rows.append({tr("General"), QString::fromUtf8(property.name()), -1, property.isWritable()});
    }
    if (auto* editable = qobject_cast<IEditableProperties*>(object)) {
        for (int i = 0; i < editable->propertyCount(); ++i) {
            const QString name = editable->propertyName(i);
            if (meta->indexOfProperty(name.toUtf8().constData()) < 0) {
                rows.append({groupTitle(editable->propertyGroup(i)), name, i, true});
            }
        }
    }
    return rows;
}

ICircuit* circuitOf(QObject* object) {
    auto* element = qobject_cast<ICircuitElement*>(object);
    return element ? element->circuit() : qobject_cast<ICircuit*>(object);
}

QString propertyTitleOf(QObject* object) {
    if (auto* element = qobject_cast<ICircuitElement*>(object)) {
        const QString label = element->desc() ? element->desc()->label() : QString();
        return label.isEmpty() ? element->name()
                               : QStringLiteral("%1 (%2)").arg(element->name(), label);
    }
    if (auto* node = qobject_cast<ICircuitNode*>(object)) {
        return tr("Node %1").arg(node->name());
    }
    if (qobject_cast<ICircuit*>(object)) {
        return tr("Circuit");
    }
    return object ? object->objectName() : tr("Nothing selected");
}

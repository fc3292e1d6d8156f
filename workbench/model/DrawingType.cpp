#include "DrawingType.h"

#include "ICircuitElementDesc.h"
#include "SubCircuitProject.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDomElement>
#include <QSet>

namespace DrawingType {

namespace {

constexpr QByteArray::Base64Options Coding =
    QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;
/// Bytes of an inside. What a file claims may be anything.
constexpr quint32 LargestInside = 4u << 20;

QString tr(const char* text) {
    return QCoreApplication::translate("DrawingType", text);
}

QSet<QString> netsOf(const QDomDocument& part) {
    QSet<QString> names;
    for (const QDomElement& record : SubCircuitProject::records(part, "CircuitNode")) {
        names.insert(record.attribute(QStringLiteral("Name")));
    }
    return names;
}

}  // namespace

QString nameFor(const BoxType& box, const QDomDocument& part) {
    const QByteArray packed = qCompress(part.toByteArray(-1), 9).toBase64(Coding);
    return QStringLiteral("%1~%2.%3")
        .arg(box.name().section(QLatin1Char('.'), 0, 0), QLatin1String(packed),
             QLatin1String(Library));
}

std::optional<ElementTypeData> dataOf(const QString& type) {
    const QString end = QLatin1Char('.') + QLatin1String(Library);
    const int mark = type.indexOf(QLatin1Char('~'));
    if (!type.endsWith(end) || mark < 0) {
        return {};
    }
    const auto box =
        BoxType::fromName(type.left(mark) + QLatin1Char('.') + QLatin1String(BoxType::Library));
    QString problem;
    ElementTypeData data;
    data.inside = SubCircuitProject::unpack(
        QByteArray::fromBase64(type.mid(mark + 1, type.size() - mark - 1 - end.size()).toLatin1(),
                               Coding),
        LargestInside, &problem);
    if (!box || !problem.isEmpty()) {
        return {};
    }
    const ElementTypeData looks = box->data();
    data.label = looks.label;
    data.description = tr("The circuit of %1, as it was drawn.").arg(looks.label);
    data.namePrefix = QStringLiteral("X");
    data.category = ICircuitElementDesc::SubCircuitCategory;
    data.drawing = looks.drawing;
    data.terminals = looks.terminals;
    data.spice.known = true;
    const QSet<QString> nets = netsOf(data.inside);
    for (TerminalData& terminal : data.terminals) {
        terminal.innerNet = terminal.name;
        if (!nets.contains(terminal.name)) {
            return {};
        }
    }
    return data;
}

QString shortName(const QString& type) {
    const QByteArray hash = QCryptographicHash::hash(type.toUtf8(), QCryptographicHash::Sha1);
    return type.section(QLatin1Char(';'), 0, 0) + QLatin1Char('_') +
           QLatin1String(hash.toHex().left(8));
}

}  // namespace DrawingType

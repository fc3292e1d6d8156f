#include "TypeMaker.h"

#include "BoxPicture.h"
#include "ElementDescription.h"
#include "ElementLibrary.h"
#include "ElementTypeReader.h"
#include "SubCircuitProject.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineF>
#include <QVector>

#include <algorithm>

namespace {

constexpr int PinDistance = 20;
constexpr int LeadLength = 10;
constexpr int SmallestHalf = 40;

enum Side { Left, Top, Right, Bottom };

struct Pin {
    QString net;
    QString type;
    Side side = Left;
    QPointF port;  ///< where the port stands, in the project's scene
    QPoint place;  ///< on the edge of the picture
};

bool isPort(const QDomElement& record) {
    const QString type = record.attribute(QStringLiteral("ElementType"));
    return type == QLatin1String("Port.Subcircuits") ||
           type == QLatin1String("DigitalPort.Subcircuits");
}

int storedNumber(const QDomElement& record, const char* property) {
    for (QDomElement child = record.firstChildElement(QStringLiteral("Property")); !child.isNull();
         child = child.nextSiblingElement(QStringLiteral("Property"))) {
        if (child.attribute(QStringLiteral("Name")) == QLatin1String(property)) {
            return child.attribute(QStringLiteral("Value")).toInt();
        }
    }
    return 0;
}

/// A port points away from its side.
Side sideOf(const QDomElement& port) {
    const int turn = storedNumber(port, "Rotation") + (storedNumber(port, "Flip") == 2 ? 2 : 0);
    return static_cast<Side>(turn & 3);
}

QVector<Pin> pinsOf(const ElementLibrary& library, const QDomDocument& part) {
    QHash<QString, QDomElement> ports;
    for (const QDomElement& record : SubCircuitProject::records(part, "CircuitElement")) {
        if (isPort(record)) {
            ports.insert(record.attribute(QStringLiteral("ID")), record);
        }
    }
    QVector<Pin> pins;
    for (const QDomElement& net : SubCircuitProject::records(part, "CircuitNode")) {
        for (QDomElement terminal = net.firstChildElement(QStringLiteral("ElementNode"));
             !terminal.isNull();
             terminal = terminal.nextSiblingElement(QStringLiteral("ElementNode"))) {
            const QDomElement port = ports.value(terminal.attribute(QStringLiteral("ElementID")));
            ElementDescription* type =
                library.description(port.attribute(QStringLiteral("ElementType")));
            if (type) {
                pins.append({net.attribute(QStringLiteral("Name")),
                             type->data().terminals.first().type,
                             sideOf(port),
                             {port.attribute(QStringLiteral("X")).toDouble(),
                              port.attribute(QStringLiteral("Y")).toDouble()},
                             {}});
                break;  // a second port adds nothing to the net
            }
        }
    }
    return pins;
}

/// Puts the pins on the edges; answers half the size of the picture.
QSize place(QVector<Pin>& pins) {
    std::stable_sort(pins.begin(), pins.end(), [](const Pin& a, const Pin& b) {
        const bool isUpright = a.side == Left || a.side == Right;
        return a.side != b.side ? a.side < b.side
                                : (isUpright ? a.port.y() < b.port.y() : a.port.x() < b.port.x());
    });
    int count[4] = {};
    for (const Pin& pin : qAsConst(pins)) {
        ++count[pin.side];
    }
    const auto halfFor = [](int number) {
        return std::max(SmallestHalf, (number + 1) * PinDistance / 2);
    };
    const QSize half(halfFor(std::max(count[Top], count[Bottom])),
                     halfFor(std::max(count[Left], count[Right])));
    int used[4] = {};
    for (Pin& pin : pins) {
        const int along = (2 * used[pin.side]++ - (count[pin.side] - 1)) * PinDistance / 2;
        const QPoint places[] = {{-half.width(), along},
                                 {along, -half.height()},
                                 {half.width(), along},
                                 {along, half.height()}};
        pin.place = places[pin.side];
    }
    return half;
}

QByteArray picture(const QVector<Pin>& pins, const QSize& half) {
    const QPoint inwards[] = {{LeadLength, 0}, {0, LeadLength}, {-LeadLength, 0}, {0, -LeadLength}};
    QVector<QLine> leads;
    for (const Pin& pin : pins) {
        leads.append({pin.place, pin.place + inwards[pin.side]});
    }
    const QSize inner = half - QSize(LeadLength, LeadLength);
    return BoxPicture::svg(half, {QPoint(-inner.width(), -inner.height()), 2 * inner}, leads);
}

QByteArray typeText(const QVector<Pin>& pins, const QString& name, const QString& title) {
    QJsonArray terminals;
    for (const Pin& pin : pins) {
        terminals.append(
            QJsonObject{{QStringLiteral("name"), pin.net},
                        {QStringLiteral("type"), pin.type},
                        {QStringLiteral("position"), QJsonArray{pin.place.x(), pin.place.y()}}});
    }
    const QString label = title.isEmpty() ? name : title;
    return QJsonDocument(QJsonObject{{QStringLiteral("label"), label},
                                     {QStringLiteral("description"), label},
                                     {QStringLiteral("namePrefix"), QStringLiteral("X")},
                                     {QStringLiteral("category"), 5},
                                     {QStringLiteral("terminals"), terminals},
                                     {QStringLiteral("inside"), name + QLatin1String(".vprj")},
                                     {QStringLiteral("picture"), name + QLatin1String(".svg")}})
        .toJson();
}

bool write(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

}  // namespace

QString makeSubCircuitType(const ElementLibrary& library, const QString& project,
                           const QString& target) {
    QString problem;
    const QDomDocument part = SubCircuitProject::read(project, &problem);
    if (!problem.isEmpty()) {
        return project + QLatin1String(": ") + problem;
    }
    QVector<Pin> pins = pinsOf(library, part);
    if (pins.isEmpty()) {
        return project + QLatin1String(": there is no port on any of its nets");
    }
    const QString json = target + QLatin1String(".json");
    const QString inside = target + QLatin1String(".vprj");
    if (QFileInfo::exists(json)) {
        return json + QLatin1String(": there is such a type already");
    }
    const QFileInfo info(target);
    const QSize half = place(pins);
    const bool isInPlace = QFileInfo(project) == QFileInfo(inside);
    if (!QDir().mkpath(info.absolutePath()) || !(isInPlace || QFile::copy(project, inside)) ||
        !write(target + QLatin1String(".svg"), picture(pins, half)) ||
        !write(json, typeText(pins, info.fileName(),
                              part.documentElement().attribute(QStringLiteral("Title"))))) {
        return target + QLatin1String(": its files can not be written");
    }
    ElementTypeReader reader(json);
    ElementTypeData data;
    if (reader.read(&data)) {
        return {};
    }
    QFile::remove(json);
    return reader.problems().first();
}

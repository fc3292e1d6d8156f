#include "BoxType.h"

#include "BoxPicture.h"
#include "CircuitElement.h"

#include <QRect>
#include <QStringList>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int Grid = 10;
constexpr int SmallestHalf = 20;
constexpr int LongestLabel = 40;
constexpr int MostTerminals = 200;
constexpr int Farthest = 5000;
constexpr int LetterHeight = 8;
constexpr char ValueParameter[] = "value";

bool isOnGrid(const QPoint& place) {
    return place.x() % Grid == 0 && place.y() % Grid == 0 && std::abs(place.x()) <= Farthest &&
           std::abs(place.y()) <= Farthest;
}

/// Whether an element has something else of that name, or the line of the device means another
/// thing by it.
bool isReserved(const QString& name) {
    static const QStringList words = {QLatin1String(ValueParameter), QStringLiteral("name"),
                                      QStringLiteral("model"), QStringLiteral("branch")};
    return words.contains(name) ||
           CircuitElement::staticMetaObject.indexOfProperty(name.toUtf8()) >= 0;
}

QSize halfOf(const BoxType& box) {
    QSize half(SmallestHalf, SmallestHalf);
    for (const BoxType::Terminal& terminal : box.terminals) {
        half = half.expandedTo({std::abs(terminal.place.x()), std::abs(terminal.place.y())});
    }
    return half;
}

/// A frame that keeps off the terminals at its sides, a lead to each, and the terminals' names.
QByteArray pictureOf(const BoxType& box, const QSize& half) {
    const QRect frame(QPoint(Grid - half.width(), Grid - half.height()),
                      QPoint(half.width() - Grid - 1, half.height() - Grid - 1));
    QVector<QLine> leads;
    QString names;
    for (const BoxType::Terminal& terminal : box.terminals) {
        const QPoint at = terminal.place;
        const int right = frame.x() + frame.width();
        const int bottom = frame.y() + frame.height();
        const QPoint in(std::clamp(at.x(), frame.x(), right),
                        std::clamp(at.y(), frame.y(), bottom));
        const QPoint corner(in.x(), at.y());
        leads << QLine(at, corner) << QLine(corner, in);
        const bool atRight = in.x() == right && at.x() > right;
        const bool atLeft = in.x() == frame.x() && at.x() < frame.x();
        const int y = at.y() > bottom ? bottom - 2 : in.y() + (at.y() < frame.y() ? 8 : 3);
        names +=
            QStringLiteral("<text x=\"%1\" y=\"%2\" text-anchor=\"%3\">%4</text>")
                .arg(in.x() + (atLeft ? 2 : 0) - (atRight ? 2 : 0))
                .arg(y)
                .arg(QLatin1String(atLeft ? "start" : (atRight ? "end" : "middle")), terminal.name);
    }
    leads.erase(std::remove_if(leads.begin(), leads.end(),
                               [](const QLine& lead) { return lead.p1() == lead.p2(); }),
                leads.end());
    return BoxPicture::svg(
        half, frame, leads,
        QStringLiteral(
            "  <g fill=\"#000000\" font-family=\"DejaVu Sans\" font-size=\"%1\">%2</g>\n")
            .arg(LetterHeight)
            .arg(names));
}

}  // namespace

QString BoxType::plain(const QString& text) {
    QString result;
    for (const QChar c : text) {
        const bool fits =
            (c.unicode() < 0x80 && c.isLetterOrNumber()) || QStringLiteral("_+-").contains(c);
        result += fits ? c : QLatin1Char('_');
    }
    return result.left(LongestLabel);
}

QString BoxType::freeName(const QString& wanted) const {
    const QString stem = plain(wanted);
    QString name = stem;
    const auto isTaken = [&] {
        return std::any_of(terminals.begin(), terminals.end(),
                           [&name](const Terminal& terminal) { return terminal.name == name; });
    };
    for (int i = 2; name.isEmpty() || isReserved(name) || isTaken(); ++i) {
        name = QStringLiteral("%1_%2").arg(stem).arg(i);
    }
    return name;
}

QString BoxType::name() const {
    QStringList parts = {label, device.isNull() ? QString() : QString(device)};
    for (const Terminal& terminal : terminals) {
        parts.append(QStringLiteral("%1,%2,%3")
                         .arg(terminal.name)
                         .arg(terminal.place.x())
                         .arg(terminal.place.y()));
    }
    return parts.join(QLatin1Char(';')) + QLatin1Char('.') + QLatin1String(Library);
}

std::optional<BoxType> BoxType::fromName(const QString& name) {
    const QStringList parts = name.section(QLatin1Char('.'), 0, 0).split(QLatin1Char(';'));
    if (name.section(QLatin1Char('.'), 1) != QLatin1String(Library) || parts.size() < 3 ||
        parts.size() > MostTerminals + 2 || parts.at(1).size() > 1) {
        return {};
    }
    BoxType box;
    box.label = parts.at(0);
    box.device = parts.at(1).isEmpty() ? QChar() : parts.at(1).at(0);
    const bool isDevice =
        box.device.isNull() || (box.device >= QLatin1Char('A') && box.device <= QLatin1Char('Z'));
    if (box.label.isEmpty() || box.label != plain(box.label) || !isDevice) {
        return {};
    }
    for (const QString& part : parts.mid(2)) {
        const QStringList fields = part.split(QLatin1Char(','));
        bool isX = false;
        bool isY = false;
        const QPoint place(fields.value(1).toInt(&isX), fields.value(2).toInt(&isY));
        if (fields.size() != 3 || !isX || !isY || !isOnGrid(place) ||
            box.freeName(fields.at(0)) != fields.at(0)) {
            return {};
        }
        box.terminals.append({fields.at(0), place});
    }
    return box;
}

ElementTypeData BoxType::data() const {
    ElementTypeData data;
    data.type = name();
    data.label = label;
    data.description =
        QStringLiteral("Stands for \"%1\", which the library does not have.").arg(label);
    data.namePrefix = device.isNull() ? QStringLiteral("X") : QString(device);
    data.display = QStringList{QLatin1String(ValueParameter)};
    QString line = data.namePrefix + QStringLiteral("${name}");
    for (const Terminal& terminal : terminals) {
        data.terminals.append({terminal.name, QStringLiteral("e"), terminal.place, {}});
        line += QStringLiteral(" ${%1}").arg(terminal.name);
    }
    data.parameters.append({QLatin1String(ValueParameter),
                            label,
                            {},
                            QStringLiteral("What the simulator's line says behind the nets"),
                            ParameterData::Text,
                            {}});
    if (!device.isNull()) {
        data.spice.known = true;
        data.spice.lines = QStringList{line + QStringLiteral(" ${value}")};
    }
    data.drawing = pictureOf(*this, halfOf(*this));
    return data;
}

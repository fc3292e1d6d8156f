#include "AscNets.h"

#include "AscPlacing.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

}  // namespace

AscNets::AscNets(const AscSchematic& schematic, const QVector<AscDevice>& devices,
                 QStringList* remarks)
    : m_remarks(remarks) {
    for (const QLine& wire : schematic.wires) {
        m_wires.addWire(wire);
    }
    for (const AscSchematic::Flag& flag : schematic.flags) {
        m_wires.addPlace(flag.place);
    }
    for (const AscDevice& device : devices) {
        for (const AscDevice::Pin& pin : device.pins) {
            m_wires.addPlace(pin.place);
        }
    }
    m_wires.build();
    QHash<QString, QPoint> named;
    for (const AscSchematic::Flag& flag : schematic.flags) {
        const QString name = flag.isGround() ? QStringLiteral("0") : flag.name.toLower();
        if (named.contains(name)) {
            m_wires.join(flag.place, named.value(name));
        }
        named.insert(name, flag.place);
    }
}

void AscNets::add(const QPoint& place, const ImportedDrawing::Terminal& terminal) {
    m_terminals[m_wires.netOf(place)].append(terminal);
}

void AscNets::name(const AscSchematic::Flag& flag) {
    QString& known = m_names[m_wires.netOf(flag.place)];
    const QString wanted = flag.isGround() ? QStringLiteral("gnd") : flag.name;
    if (known.isEmpty() || wanted == QLatin1String("gnd")) {
        known = wanted;
    } else if (known.compare(wanted, Qt::CaseInsensitive) != 0) {
        m_remarks->append(
            tr("the net %1 is named %2 as well; it keeps the first name").arg(known, wanted));
    }
}

QVector<ImportedDrawing::Net> AscNets::all() {
    const QHash<int, QVector<QLine>> pieces = m_wires.pieces();
    QList<int> ids = QSet<int>(m_terminals.keyBegin(), m_terminals.keyEnd()).values();
    std::sort(ids.begin(), ids.end());
    QSet<QString> names;
    for (const QString& name : qAsConst(m_names)) {
        names.insert(name);
    }
    QVector<ImportedDrawing::Net> result;
    int count = 0;
    for (const int id : qAsConst(ids)) {
        QString name = m_names.value(id);
        while (name.isEmpty() || (!m_names.contains(id) && names.contains(name))) {
            name = QStringLiteral("n%1").arg(++count);
        }
        ImportedDrawing::Net net{name, m_terminals.value(id), {}};
        for (const QLine& piece : pieces.value(id)) {
            net.wires.append({onCanvas(piece.p1()), onCanvas(piece.p2())});
        }
        if (net.terminals.size() > 1) {
            result.append(net);
        }
    }
    for (auto it = pieces.begin(); it != pieces.end(); ++it) {
        const int terminals = m_terminals.value(it.key()).size();
        if (terminals < 2) {
            const QPoint at = it.value().first().p1();
            m_remarks->append(
                tr("the wire at (%1, %2) joins nothing, and is left out").arg(at.x()).arg(at.y()));
        }
    }
    return result;
}

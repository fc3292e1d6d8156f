#include "AscPins.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <limits>

namespace {

/// How far a wire that belongs to a symbol may end from where its pin should be, or from where the
/// symbol is, if nothing is known of its pins.
constexpr int PinReach = 64;
constexpr int SymbolReach = 240;
/// A symbol's file is a page or two.
constexpr qint64 LargestSymbolFile = 1000000;

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

using Places = QVector<QPoint>;

const QHash<QString, Places>& commonPins() {
    static const QHash<QString, Places> table = [] {
        QHash<QString, Places> pins;
        const auto add = [&pins](const char* names, const Places& places) {
            for (const QString& name : QString::fromLatin1(names).split(QLatin1Char(' '))) {
                pins.insert(name, places);
            }
        };
        add("res res2 ind ind2 polyind", {{16, 16}, {16, 96}});
        add("cap polcap diode zener schottky led varactor", {{16, 0}, {16, 64}});
        add("voltage bv", {{0, 16}, {0, 96}});
        add("current load bi", {{0, 0}, {0, 80}});
        add("npn pnp", {{64, 0}, {0, 48}, {64, 96}});
        add("nmos pmos", {{48, 0}, {0, 80}, {48, 96}});
        add("njf pjf", {{48, 0}, {0, 64}, {48, 96}});
        add("sw", {{0, 16}, {0, 96}, {-48, 80}, {-48, 32}});
        return pins;
    }();
    return table;
}

int distance(const QPoint& a, const QPoint& b) {
    return (a - b).manhattanLength();
}

/// The places where a wire ends and nothing else is.
class LooseEnds {
public:
    explicit LooseEnds(const AscSchematic& schematic) {
        for (const QLine& wire : schematic.wires) {
            ++m_ends[key(wire.p1())];
            ++m_ends[key(wire.p2())];
        }
        QSet<QPair<int, int>> flagged;
        for (const AscSchematic::Flag& flag : schematic.flags) {
            flagged.insert(key(flag.place));
            // A name alone, with no wire, names a pin.
            m_bareFlags[key(flag.place)] = !m_ends.contains(key(flag.place));
        }
        for (auto it = m_ends.begin(); it != m_ends.end(); ++it) {
            if (it.value() == 1 && !flagged.contains(it.key())) {
                m_loose.insert(it.key());
            }
        }
        for (auto it = m_bareFlags.begin(); it != m_bareFlags.end(); ++it) {
            if (it.value()) {
                m_loose.insert(it.key());
            }
        }
    }
    bool meets(const QPoint& place) const {
        return m_ends.contains(key(place)) || m_bareFlags.contains(key(place));
    }
    void take(const QPoint& place) { m_loose.remove(key(place)); }
    /// In a stable order: from left to right, then from top to bottom.
    Places places() const {
        Places result;
        for (const QPair<int, int>& place : m_loose) {
            result.append({place.first, place.second});
        }
        std::sort(result.begin(), result.end(), [](const QPoint& a, const QPoint& b) {
            return a.x() != b.x() ? a.x() < b.x() : a.y() < b.y();
        });
        return result;
    }

private:
    static QPair<int, int> key(const QPoint& p) { return {p.x(), p.y()}; }

    QHash<QPair<int, int>, int> m_ends;
    QHash<QPair<int, int>, bool> m_bareFlags;
    QSet<QPair<int, int>> m_loose;
};

class Devices {
public:
    Devices(const AscSchematic& schematic, const QString& folder, QStringList* remarks)
        : m_ends(schematic), m_folder(folder), m_remarks(remarks) {
        for (const AscSchematic::Symbol& symbol : schematic.symbols) {
            m_devices.append(deviceOf(symbol));
        }
    }

    QVector<AscDevice> all() {
        for (const AscDevice& device : qAsConst(m_devices)) {
            for (const AscDevice::Pin& pin : device.pins) {
                m_ends.take(pin.place);
            }
        }
        for (AscDevice& device : m_devices) {
            for (AscDevice::Pin& pin : device.pins) {
                mend(device, pin);
            }
        }
        guess();
        return m_devices;
    }

private:
    AscDevice deviceOf(const AscSchematic::Symbol& symbol) {
        AscDevice device;
        device.symbol = symbol;
        const QString name = QString(symbol.name)
                                 .replace(QLatin1Char('\\'), QLatin1Char('/'))
                                 .section(QLatin1Char('/'), -1);
        device.kind = name.toLower();
        const AscSymbolFile file = fileOf(name);
        device.isBlock = file.isBlock;
        for (auto it = file.attributes.begin(); it != file.attributes.end(); ++it) {
            QString& attribute = device.symbol.attributes[it.key()];
            if (attribute.isEmpty()) {
                attribute = it.value();
            }
        }
        device.isBlock = device.isBlock || isDrawn(device);
        for (const AscSymbolFile::Pin& pin : file.pins) {
            device.pins.append({pin.name, placeOfPin(pin.place, symbol)});
        }
        if (file.pins.isEmpty()) {
            for (const QPoint& pin : commonPins().value(device.kind)) {
                device.pins.append({{}, placeOfPin(pin, symbol)});
            }
        }
        device.arePinsGuessed = device.pins.isEmpty();
        return device;
    }

    bool isDrawn(const AscDevice& device) const {
        const QString prefix = device.symbol.attributes.value(QStringLiteral("Prefix"));
        return prefix.startsWith(QLatin1Char('X'), Qt::CaseInsensitive) && !m_folder.isEmpty() &&
               !fileBeside(m_folder, device.kind + QLatin1String(".asc")).isEmpty();
    }

    AscSymbolFile fileOf(const QString& name) {
        const auto known = m_files.constFind(name);
        if (known != m_files.constEnd()) {
            return *known;
        }
        AscSymbolFile result;
        QFile file(m_folder.isEmpty() ? QString()
                                      : fileBeside(m_folder, name + QLatin1String(".asy")));
        if (!file.fileName().isEmpty() && file.open(QIODevice::ReadOnly)) {
            result = parseAsy(decodeAsc(file.read(LargestSymbolFile)));
        }
        m_files.insert(name, result);
        return result;
    }

    /// A pin that no wire meets while one ends near by is elsewhere than the table says.
    void mend(const AscDevice& device, AscDevice::Pin& pin) {
        if (m_ends.meets(pin.place) || touchesAnother(device, pin)) {
            return;
        }
        const Places places = m_ends.places();
        const auto nearest = std::min_element(
            places.begin(), places.end(), [&pin](const QPoint& a, const QPoint& b) {
                return distance(a, pin.place) < distance(b, pin.place);
            });
        if (nearest != places.end() && distance(*nearest, pin.place) <= PinReach) {
            pin.place = *nearest;
            m_ends.take(pin.place);
            m_remarks->append(
                tr("%1: one of its wires ends beside where the terminal should be, and was taken "
                   "for it")
                    .arg(device.symbol.instance()));
        }
    }
    bool touchesAnother(const AscDevice& device, const AscDevice::Pin& pin) const {
        for (const AscDevice& other : m_devices) {
            for (const AscDevice::Pin& candidate : other.pins) {
                if (&other != &device && candidate.place == pin.place) {
                    return true;
                }
            }
        }
        return false;
    }

    /// Each loose end near a symbol of which nothing is known belongs to the nearest one.
    void guess() {
        for (const QPoint& place : m_ends.places()) {
            AscDevice* nearest = nullptr;
            int least = SymbolReach + 1;
            for (AscDevice& device : m_devices) {
                const int away = distance(device.symbol.place, place);
                if (device.arePinsGuessed && away < least) {
                    least = away;
                    nearest = &device;
                }
            }
            if (nearest) {
                nearest->pins.append({QString::number(nearest->pins.size() + 1), place});
            }
        }
    }

    LooseEnds m_ends;
    QString m_folder;
    QStringList* m_remarks;
    QVector<AscDevice> m_devices;
    QHash<QString, AscSymbolFile> m_files;
};

}  // namespace

QString fileBeside(const QString& folder, const QString& name) {
    const QDir files(folder);
    for (const QString& file : files.entryList(QDir::Files)) {
        if (file.compare(name, Qt::CaseInsensitive) == 0) {
            return files.filePath(file);
        }
    }
    return {};
}

QVector<AscDevice> devicesOf(const AscSchematic& schematic, const QString& folder,
                             QStringList* remarks) {
    return Devices(schematic, folder, remarks).all();
}

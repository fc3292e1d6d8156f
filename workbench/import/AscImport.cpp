#include "AscImport.h"

#include "AscDirectives.h"
#include "AscElements.h"
#include "AscPins.h"
#include "AscPlacing.h"
#include "BoxType.h"
#include "ElementLibrary.h"
#include "SpiceModels.h"
#include "WireGraph.h"
#include "XmlFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRect>

#include <algorithm>
#include <cstdlib>

namespace {

// Of the text in the drawing.
constexpr int LetterWidth = 7;
constexpr int LineHeight = 15;
constexpr int TextMargin = 6;
constexpr int Clearance = 20;

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

/// Sheets have steps of 16, some of 8, and the canvas of 10.
QPoint scaled(const QPoint& place) {
    return {qRound(place.x() * 1.25), qRound(place.y() * 1.25)};
}

int onGrid(double value) {
    return qRound(value / 10) * 10;
}

struct PlacedElement {
    QString type;
    QString name;
    QString caption;
    QString model;
    QVector<QPair<QString, QString>> parameters;
    QPoint position;
    int rotation = 0;
    int flip = 0;
};

struct NetTerminal {
    int element = 0;
    QString name;
    QPoint place;          ///< of the terminal, in the scene
    QVector<QPoint> stub;  ///< to where the wires end
};

class Importer {
public:
    Importer(const AscSchematic& schematic, const ElementLibrary& library,
             const SpiceModels& models)
        : m_schematic(schematic), m_library(library), m_models(models) {
        m_result.remarks = schematic.remarks;
    }

    ImportedProject run(const QString& folder, const QString& title) {
        readDirectives();
        const QVector<AscDevice> devices = devicesOf(m_schematic, folder, &m_result.remarks);
        buildWires(devices);
        AscElements elements(m_library, context(), &m_result.remarks);
        for (AscDevice device : devices) {
            device.symbol.attributes.insert(QStringLiteral("InstName"), freeName(device));
            placeDevice(device, elements.elementOf(device));
        }
        placeFlags();
        write(title);
        return m_result;
    }

private:
    void readDirectives() {
        for (const AscSchematic::Text& text : m_schematic.texts) {
            if (text.isDirective) {
                m_directives.take(text.text, &m_result.remarks);
                m_models.addDirectives(text.text);
            }
        }
    }
    AscContext context() {
        return {m_directives.spelling(),
                [this](const QString& model) { return m_models.contains(model); },
                m_directives.isSmallSignal()};
    }

    void buildWires(const QVector<AscDevice>& devices) {
        for (const QLine& wire : m_schematic.wires) {
            m_wires.addWire(wire);
        }
        for (const AscSchematic::Flag& flag : m_schematic.flags) {
            m_wires.addPlace(flag.place);
        }
        for (const AscDevice& device : devices) {
            for (const AscDevice::Pin& pin : device.pins) {
                m_wires.addPlace(pin.place);
            }
        }
        m_wires.build();
        QHash<QString, QPoint> named;
        for (const AscSchematic::Flag& flag : m_schematic.flags) {
            const QString name = isGround(flag) ? QStringLiteral("0") : flag.name.toLower();
            if (named.contains(name)) {
                m_wires.join(flag.place, named.value(name));
            }
            named.insert(name, flag.place);
        }
    }

    static bool isGround(const AscSchematic::Flag& flag) {
        return flag.name == QLatin1String("0") ||
               flag.name.compare(QLatin1String("gnd"), Qt::CaseInsensitive) == 0;
    }

    QString freeName(const AscDevice& device) {
        const QString wanted = device.symbol.instance();
        const QString stem = wanted.isEmpty() ? QStringLiteral("X") : wanted;
        QString name = wanted;
        for (int i = 1; name.isEmpty() || m_names.contains(name); ++i) {
            name = QStringLiteral("%1_%2").arg(stem).arg(i);
        }
        if (name != wanted) {
            m_result.remarks.append(
                wanted.isEmpty()
                    ? tr("a symbol %1 without a name is %2").arg(device.symbol.name, name)
                    : tr("%1: another element has this name; it is %2").arg(wanted, name));
        }
        m_names.insert(name);
        return name;
    }

    void placeDevice(const AscDevice& device, const ImportedElement& element) {
        if (device.pins.isEmpty()) {
            m_result.remarks.append(tr("%1: %2 is left out: nothing tells where its terminals are")
                                        .arg(element.name, device.symbol.name));
            return;
        }
        QVector<QPoint> pins;
        QPoint sum;
        for (const AscDevice::Pin& pin : device.pins) {
            pins.append(scaled(pin.place));
            sum += pin.place;
        }
        for (const AscDevice::Pin& pin : device.pins) {
            const QPoint way = sum / device.pins.size() - pin.place;
            const bool isLevel = std::abs(way.x()) > std::abs(way.y());
            m_inward[{pin.place.x(), pin.place.y()}].append(
                isLevel ? QPoint(way.x() > 0 ? 1 : -1, 0) : QPoint(0, way.y() > 0 ? 1 : -1));
        }
        if (element.type.isEmpty()) {
            placeBox(device, element, pins);
            return;
        }
        QVector<QPointF> terminals;
        const ElementDescription* type = m_library.description(element.type);
        for (const QString& name : element.terminals) {
            for (const TerminalData& terminal : type->data().terminals) {
                if (terminal.name == name) {
                    terminals.append(terminal.position);
                }
            }
        }
        const AscPlace place = placeOf(terminals, pins);
        m_elements.append({element.type, element.name, element.name, element.model,
                           element.parameters, place.position, place.rotation, place.flip});
        for (int i = 0; i < pins.size(); ++i) {
            addTerminal(device.pins.at(i).place, element.terminals.at(i), place.terminals.at(i),
                        place.stubs.at(i));
        }
    }

    void placeBox(const AscDevice& device, const ImportedElement& element,
                  const QVector<QPoint>& pins) {
        QRect all(pins.first(), pins.first());
        for (const QPoint& pin : pins) {
            all |= QRect(pin, pin);
        }
        const QPoint middle(onGrid((all.left() + all.right()) / 2.0),
                            onGrid((all.top() + all.bottom()) / 2.0));
        BoxType box;
        box.label = element.label;
        box.device = element.device;
        for (int i = 0; i < pins.size(); ++i) {
            const QPoint place(onGrid(pins.at(i).x() - middle.x()),
                               onGrid(pins.at(i).y() - middle.y()));
            const QString wanted = device.pins.at(i).name;
            box.terminals.append(
                {box.freeName(wanted.isEmpty() ? QString::number(i + 1) : wanted), place});
        }
        if (!BoxType::fromName(box.name())) {
            m_result.remarks.append(tr("%1: is left out: its terminals are too many or too far "
                                       "apart")
                                        .arg(element.name));
            return;
        }
        QString model;
        for (const QString& word : element.line.split(QLatin1Char(' '))) {
            model = model.isEmpty() && m_models.contains(word) ? word : model;
        }
        m_elements.append({box.name(),
                           element.name,
                           element.name,
                           model,
                           {{QStringLiteral("value"), element.line}},
                           middle,
                           0,
                           0});
        for (int i = 0; i < pins.size(); ++i) {
            const QPoint place = middle + box.terminals.at(i).place;
            addTerminal(device.pins.at(i).place, box.terminals.at(i).name, place,
                        stubOf(place, QPoint(1, 0), pins.at(i)));
        }
    }

    void addTerminal(const QPoint& pin, const QString& name, const QPoint& place,
                     const QVector<QPoint>& stub) {
        m_nets[m_wires.netOf(pin)].append({m_elements.size() - 1, name, place, stub});
    }

    void placeFlags() {
        int grounds = 0;
        int labels = 0;
        for (const AscSchematic::Flag& flag : m_schematic.flags) {
            const bool isEarth = isGround(flag);
            const QString type = isEarth       ? QStringLiteral("Ground.Basic")
                                 : flag.isPort ? QStringLiteral("Port.Subcircuits")
                                               : QStringLiteral("NetLabel.Basic");
            const ElementDescription* description = m_library.description(type);
            const TerminalData terminal = description->data().terminals.first();
            QString name;
            do {
                name = isEarth ? QStringLiteral("GND%1").arg(++grounds)
                               : QStringLiteral("NL%1").arg(++labels);
            } while (m_names.contains(name));
            m_names.insert(name);
            const int rotation = freeWay(flag.place, terminal.position, isEarth);
            const QPoint place = scaled(flag.place);
            // A label shows its net by itself.
            const QString caption = flag.isPort && !isEarth ? flag.name : QString();
            m_elements.append({type,
                               name,
                               caption,
                               {},
                               {},
                               place - turned(terminal.position, rotation, 0),
                               rotation,
                               0});
            addTerminal(flag.place, terminal.name, place, {});
            nameNet(flag);
        }
    }

    void nameNet(const AscSchematic::Flag& flag) {
        QString& name = m_netNames[m_wires.netOf(flag.place)];
        const QString wanted = isGround(flag) ? QStringLiteral("gnd") : flag.name;
        if (name.isEmpty() || wanted == QLatin1String("gnd")) {
            name = wanted;
        } else if (name.compare(wanted, Qt::CaseInsensitive) != 0) {
            m_result.remarks.append(
                tr("the net %1 is named %2 as well; it keeps the first name").arg(name, wanted));
        }
    }

    /// The turn by which the symbol at the end of a wire leads away from it.
    int freeWay(const QPoint& place, const QPointF& terminal, bool isEarth) const {
        static const QVector<QPoint> ofLabels = {{1, 0}, {-1, 0}, {0, -1}, {0, 1}};
        static const QVector<QPoint> ofGrounds = {{0, 1}, {1, 0}, {-1, 0}, {0, -1}};
        const QVector<QPoint>& ways = isEarth ? ofGrounds : ofLabels;
        const QVector<QPoint> taken = m_inward.value({place.x(), place.y()});
        for (const QPoint& way : ways) {
            if (!m_wires.leaves(place, way) && !taken.contains(way)) {
                return turnTo(way, terminal);
            }
        }
        return turnTo(ways.first(), terminal);
    }
    static int turnTo(const QPoint& way, const QPointF& terminal) {
        for (int rotation = 0; rotation < 4; ++rotation) {
            if (QPoint::dotProduct(turned(terminal, rotation, 0), way) < 0) {
                return rotation;
            }
        }
        return 0;
    }

    void write(const QString& title) {
        QDomElement part = m_result.project.addPart(QLatin1String(ProjectFile::CircuitPart));
        part.setAttribute(QStringLiteral("Title"), title);
        for (int i = 0; i < m_elements.size(); ++i) {
            writeElement(part, i);
        }
        writeNets(part);
        for (const auto& parameter : m_directives.parameters()) {
            QDomElement record = append(part, "GlobalVar");
            record.setAttribute(QStringLiteral("Name"), parameter.first);
            record.setAttribute(QStringLiteral("Value"), parameter.second);
            record.setAttribute(QStringLiteral("IsReal"), 1);
            record.setAttribute(QStringLiteral("IsString"), 0);
        }
        for (const AscSchematic::Text& text : m_schematic.texts) {
            writeText(part, text);
        }
        QDomElement simulation = m_result.project.addPart(QStringLiteral("Simulation"));
        m_directives.setup().save(m_result.project.document(), simulation);
    }

    QDomElement append(QDomElement& parent, const char* tag) const {
        QDomElement element = m_result.project.document().createElement(QLatin1String(tag));
        parent.appendChild(element);
        return element;
    }
    void appendValue(QDomElement& parent, const char* tag, const QString& name,
                     const QString& value) const {
        QDomElement record = append(parent, tag);
        record.setAttribute(QStringLiteral("Name"), name);
        record.setAttribute(QStringLiteral("Value"), value);
    }
    static void setPlace(QDomElement& record, const QPoint& place) {
        record.setAttribute(QStringLiteral("X"), place.x());
        record.setAttribute(QStringLiteral("Y"), place.y());
    }

    void writeElement(QDomElement& part, int index) {
        const PlacedElement& element = m_elements.at(index);
        QDomElement record = append(part, "CircuitElement");
        record.setAttribute(QStringLiteral("ElementType"), element.type);
        record.setAttribute(QStringLiteral("ID"), index);
        record.setAttribute(QStringLiteral("ModelName"), element.model);
        setPlace(record, element.position);
        appendValue(record, "Property", QStringLiteral("Name"), element.name);
        appendValue(record, "Property", QStringLiteral("Caption"), element.caption);
        appendValue(record, "Property", QStringLiteral("Rotation"),
                    QString::number(element.rotation));
        appendValue(record, "Property", QStringLiteral("Flip"), QString::number(element.flip));
        for (const auto& parameter : element.parameters) {
            appendValue(record, "Parameter", parameter.first, parameter.second);
        }
    }

    void writeNets(QDomElement& part) {
        const QHash<int, QVector<QLine>> pieces = m_wires.pieces();
        QList<int> ids = QSet<int>(m_nets.keyBegin(), m_nets.keyEnd()).values();
        std::sort(ids.begin(), ids.end());
        QSet<QString> names;
        for (const QString& name : qAsConst(m_netNames)) {
            names.insert(name);
        }
        int count = 0;
        for (const int id : qAsConst(ids)) {
            QString name = m_netNames.value(id);
            while (name.isEmpty() || (!m_netNames.contains(id) && names.contains(name))) {
                name = QStringLiteral("n%1").arg(++count);
            }
            writeNet(part, name, m_nets.value(id), pieces.value(id));
        }
        for (auto it = pieces.begin(); it != pieces.end(); ++it) {
            const int terminals = m_nets.value(it.key()).size();
            if (terminals < 2) {
                const QPoint at = it.value().first().p1();
                m_result.remarks.append(tr("the wire at (%1, %2) joins nothing, and is left out")
                                            .arg(at.x())
                                            .arg(at.y()));
            }
        }
    }

    void writeNet(QDomElement& part, const QString& name, const QVector<NetTerminal>& terminals,
                  const QVector<QLine>& pieces) {
        if (terminals.size() < 2) {
            return;
        }
        QDomElement record = append(part, "CircuitNode");
        record.setAttribute(QStringLiteral("Name"), name);
        setPlace(record, {});
        QVector<QLine> lines;
        for (const QLine& piece : pieces) {
            lines.append({scaled(piece.p1()), scaled(piece.p2())});
        }
        QVector<QPoint> stops;
        for (const NetTerminal& terminal : terminals) {
            QDomElement member = append(record, "ElementNode");
            member.setAttribute(QStringLiteral("ElementID"), terminal.element);
            member.setAttribute(QStringLiteral("Name"), terminal.name);
            stops.append(terminal.place);
            for (int i = 1; i < terminal.stub.size(); ++i) {
                lines.append({terminal.stub.at(i - 1), terminal.stub.at(i)});
            }
        }
        QVector<QVector<QPoint>> paths = pathsOf(lines, stops);
        if (paths.isEmpty()) {
            // All terminals lie on one another; routing would draw a loop around them.
            paths.append({stops.first(), stops.first()});
        }
        QDomElement shape = append(record, "Shape");
        for (const QVector<QPoint>& path : qAsConst(paths)) {
            for (int i = 0; i < path.size(); ++i) {
                QDomElement point = append(shape, "ShapeElement");
                point.setAttribute(QStringLiteral("Type"), i == 0 ? 0 : 1);
                setPlace(point, path.at(i));
            }
        }
        appendValue(record, "Property", QStringLiteral("WireClearance"),
                    QString::number(Clearance));
    }

    void writeText(QDomElement& part, const AscSchematic::Text& text) {
        QString content = text.text;
        // A comment that looks like a directive must stay without effect.
        if (!text.isDirective &&
            (content.startsWith(QLatin1Char('.')) || SpiceModels::isDirective(content))) {
            content.prepend(QLatin1String("* "));
        }
        int width = 0;
        const QStringList lines = content.split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            width = std::max(width, line.size());
        }
        QDomElement record = append(part, "TextBox");
        setPlace(record, scaled(text.place) - QPoint(0, LineHeight / 2));
        record.setAttribute(QStringLiteral("Width"), width * LetterWidth + 2 * TextMargin);
        record.setAttribute(QStringLiteral("Height"), lines.size() * LineHeight + 2 * TextMargin);
        record.setAttribute(QStringLiteral("FontFamily"), QStringLiteral("DejaVu Sans"));
        record.setAttribute(QStringLiteral("FontSize"), 8);
        record.setAttribute(QStringLiteral("BorderColor"), QStringLiteral("#00000000"));
        record.setAttribute(QStringLiteral("FillColor"), QStringLiteral("#00000000"));
        // What would be read as an escape of the box's own.
        content.replace(QLatin1String("{|"), QLatin1String("{ |"));
        content.replace(QLatin1Char('\n'), QLatin1String("{|?|}"));
        record.appendChild(m_result.project.document().createCDATASection(content));
    }

    const AscSchematic& m_schematic;
    const ElementLibrary& m_library;
    SpiceModels m_models;
    AscDirectives m_directives;
    WireGraph m_wires;
    ImportedProject m_result;
    QVector<PlacedElement> m_elements;
    QSet<QString> m_names;
    // By the place of a pin: the way that leads into its symbol.
    QHash<QPair<int, int>, QVector<QPoint>> m_inward;
    QHash<int, QVector<NetTerminal>> m_nets;
    QHash<int, QString> m_netNames;
};

}  // namespace

bool isForeignFile(const QString& fileName) {
    return QFileInfo(fileName).suffix().compare(QLatin1String("asc"), Qt::CaseInsensitive) == 0;
}

std::optional<ImportedProject> importAsc(const QString& fileName, const ElementLibrary& library,
                                         const SpiceModels& models, QString* reason) {
    const std::optional<QByteArray> bytes = readRegularFile(fileName, reason);
    if (!bytes) {
        return {};
    }
    const std::optional<AscSchematic> schematic = parseAsc(decodeAsc(*bytes));
    if (!schematic) {
        *reason = tr("is no LTspice schematic");
        return {};
    }
    const QFileInfo info(fileName);
    return Importer(*schematic, library, models).run(info.absolutePath(), info.completeBaseName());
}

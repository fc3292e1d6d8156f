#include "AscImport.h"

#include "AscBlocks.h"
#include "AscDirectives.h"
#include "AscElements.h"
#include "AscNets.h"
#include "AscPins.h"
#include "AscPlacing.h"
#include "BoxType.h"
#include "ElementLibrary.h"
#include "ImportedDrawing.h"
#include "SpiceModels.h"
#include "XmlFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRect>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

int onGrid(double value) {
    return qRound(value / 10) * 10;
}

/// From what is lowest to a text of the importer's own.
constexpr int Below = 100;
/// Of sheets within sheets.
constexpr int DeepestDrawing = 10;

/// The sheet of the last file; nothing, with the reason, if that is none.
std::optional<ImportedDrawing> drawingOf(const QStringList& fileNames,
                                         const ElementLibrary& library, const SpiceModels& models,
                                         QStringList* remarks, QString* reason);

class Importer {
public:
    /// `fileNames` are this file and those that it is inside of.
    Importer(const AscSchematic& schematic, const ElementLibrary& library,
             const SpiceModels& models, const QStringList& fileNames)
        : m_schematic(schematic),
          m_library(library),
          m_models(models),
          m_fileNames(fileNames),
          m_remarks(schematic.remarks) {}

    ImportedDrawing run() {
        const QFileInfo file(m_fileNames.last());
        readDirectives();
        const QVector<AscDevice> devices = devicesOf(m_schematic, file.absolutePath(), &m_remarks);
        m_nets = std::make_unique<AscNets>(m_schematic, devices, &m_remarks);
        AscElements elements(m_library, context(), &m_remarks);
        AscBlocks blocks(
            file.absolutePath(),
            [this](const QString& name, QStringList* remarks) { return inside(name, remarks); },
            &m_remarks);
        for (AscDevice device : devices) {
            device.symbol.attributes.insert(QStringLiteral("InstName"), freeName(device));
            placeDevice(device, elements.elementOf(device), &blocks);
        }
        placeFlags();
        m_drawing.nets = m_nets->all();
        takeTexts(blocks.directives());
        m_drawing.title = file.completeBaseName();
        m_drawing.parameters = m_directives.parameters();
        m_drawing.setup = m_directives.setup();
        return m_drawing;
    }
    const QStringList& remarks() const { return m_remarks; }

private:
    void readDirectives() {
        for (const AscSchematic::Text& text : m_schematic.texts) {
            if (text.isDirective) {
                m_directives.take(text.text, &m_remarks);
                m_models.addDirectives(text.text);
            }
        }
    }
    AscContext context() {
        return {m_directives.spelling(),
                [this](const QString& model) { return m_models.contains(model); },
                m_directives.isSmallSignal()};
    }

    QString freeName(const AscDevice& device) {
        const QString wanted = device.symbol.instance();
        const QString stem = wanted.isEmpty() ? QStringLiteral("X") : wanted;
        QString name = wanted;
        for (int i = 1; name.isEmpty() || m_names.contains(name); ++i) {
            name = QStringLiteral("%1_%2").arg(stem).arg(i);
        }
        if (name != wanted) {
            m_remarks.append(
                wanted.isEmpty()
                    ? tr("a symbol %1 without a name is %2").arg(device.symbol.name, name)
                    : tr("%1: another element has this name; it is %2").arg(wanted, name));
        }
        m_names.insert(name);
        return name;
    }

    std::optional<ImportedDrawing> inside(const QString& fileName, QStringList* remarks) {
        QString reason;
        if (m_fileNames.size() > DeepestDrawing || m_fileNames.contains(fileName)) {
            return {};
        }
        return drawingOf(m_fileNames + QStringList{fileName}, m_library, m_models, remarks,
                         &reason);
    }

    void placeDevice(const AscDevice& device, const ImportedElement& element, AscBlocks* blocks) {
        if (device.pins.isEmpty()) {
            m_remarks.append(tr("%1: %2 is left out: nothing tells where its terminals are")
                                 .arg(element.name, device.symbol.name));
            return;
        }
        QVector<QPoint> pins;
        QPoint sum;
        for (const AscDevice::Pin& pin : device.pins) {
            pins.append(onCanvas(pin.place));
            sum += pin.place;
        }
        for (const AscDevice::Pin& pin : device.pins) {
            const QPoint way = sum / device.pins.size() - pin.place;
            const bool isLevel = std::abs(way.x()) > std::abs(way.y());
            m_inward[{pin.place.x(), pin.place.y()}].append(
                isLevel ? QPoint(way.x() > 0 ? 1 : -1, 0) : QPoint(0, way.y() > 0 ? 1 : -1));
        }
        if (element.type.isEmpty()) {
            placeBox(device, element, pins, blocks);
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
        m_drawing.elements.append({element.type, element.name, element.name, element.model,
                                   element.parameters, place.position, place.rotation, place.flip});
        for (int i = 0; i < pins.size(); ++i) {
            m_nets->add(device.pins.at(i).place, {m_drawing.lastElement(), element.terminals.at(i),
                                                  place.terminals.at(i), place.stubs.at(i)});
        }
    }

    void placeBox(const AscDevice& device, const ImportedElement& element,
                  const QVector<QPoint>& pins, AscBlocks* blocks) {
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
            m_remarks.append(tr("%1: is left out: its terminals are too many or too far "
                                "apart")
                                 .arg(element.name));
            return;
        }
        const QString drawn =
            device.isBlock ? blocks->typeOf(device, box, element.name, element.line) : QString();
        if (drawn.isEmpty()) {
            addBox(box, element, middle);
        } else {
            m_drawing.elements.append({drawn, element.name, element.name, {}, {}, middle, 0, 0});
        }
        for (int i = 0; i < pins.size(); ++i) {
            const QPoint place = middle + box.terminals.at(i).place;
            m_nets->add(device.pins.at(i).place, {m_drawing.lastElement(), box.terminals.at(i).name,
                                                  place, stubOf(place, QPoint(1, 0), pins.at(i))});
        }
    }

    void addBox(const BoxType& box, const ImportedElement& element, const QPoint& middle) {
        QString model;
        for (const QString& word : element.line.split(QLatin1Char(' '))) {
            model = model.isEmpty() && m_models.contains(word) ? word : model;
        }
        m_drawing.elements.append({box.name(),
                                   element.name,
                                   element.name,
                                   model,
                                   {{QStringLiteral("value"), element.line}},
                                   middle,
                                   0,
                                   0});
    }

    void placeFlags() {
        int grounds = 0;
        int labels = 0;
        for (const AscSchematic::Flag& flag : m_schematic.flags) {
            const bool isEarth = flag.isGround();
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
            const QPoint place = onCanvas(flag.place);
            // A label shows its net by itself.
            const QString caption = flag.isPort && !isEarth ? flag.name : QString();
            m_drawing.elements.append({type,
                                       name,
                                       caption,
                                       {},
                                       {},
                                       place - turned(terminal.position, rotation, 0),
                                       rotation,
                                       0});
            m_nets->add(flag.place, {m_drawing.lastElement(), terminal.name, place, {}});
            m_nets->name(flag);
        }
    }

    /// The turn by which the symbol at the end of a wire leads away from it.
    int freeWay(const QPoint& place, const QPointF& terminal, bool isEarth) const {
        static const QVector<QPoint> ofLabels = {{1, 0}, {-1, 0}, {0, -1}, {0, 1}};
        static const QVector<QPoint> ofGrounds = {{0, 1}, {1, 0}, {-1, 0}, {0, -1}};
        const QVector<QPoint>& ways = isEarth ? ofGrounds : ofLabels;
        const QVector<QPoint> taken = m_inward.value({place.x(), place.y()});
        for (const QPoint& way : ways) {
            if (!m_nets->leaves(place, way) && !taken.contains(way)) {
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

    /// `further` are put below all else.
    void takeTexts(const QStringList& further) {
        QPoint below;
        for (const AscSchematic::Text& text : m_schematic.texts) {
            QString content = text.text;
            // A comment that looks like a directive must stay without effect.
            if (!text.isDirective &&
                (content.startsWith(QLatin1Char('.')) || SpiceModels::isDirective(content))) {
                content.prepend(QLatin1String("* "));
            }
            m_drawing.texts.append({onCanvas(text.place), content});
        }
        for (const ImportedDrawing::Element& element : qAsConst(m_drawing.elements)) {
            below.setY(std::max(below.y(), element.position.y() + Below));
        }
        for (const ImportedDrawing::Text& text : qAsConst(m_drawing.texts)) {
            below.setY(std::max(below.y(), text.place.y() + Below));
        }
        for (const QString& text : further) {
            m_drawing.texts.append({below, text});
            below.ry() += Below;
        }
    }

    const AscSchematic& m_schematic;
    const ElementLibrary& m_library;
    SpiceModels m_models;
    QStringList m_fileNames;
    QStringList m_remarks;
    AscDirectives m_directives;
    ImportedDrawing m_drawing;
    QSet<QString> m_names;
    // By the place of a pin: the way that leads into its symbol.
    QHash<QPair<int, int>, QVector<QPoint>> m_inward;
    std::unique_ptr<AscNets> m_nets;
};

std::optional<ImportedDrawing> drawingOf(const QStringList& fileNames,
                                         const ElementLibrary& library, const SpiceModels& models,
                                         QStringList* remarks, QString* reason) {
    const std::optional<QByteArray> bytes = readRegularFile(fileNames.last(), reason);
    if (!bytes) {
        return {};
    }
    const std::optional<AscSchematic> schematic = parseAsc(decodeAsc(*bytes));
    if (!schematic) {
        *reason = tr("is no LTspice schematic");
        return {};
    }
    Importer importer(*schematic, library, models, fileNames);
    ImportedDrawing drawing = importer.run();
    *remarks = importer.remarks();
    return drawing;
}

}  // namespace

bool isForeignFile(const QString& fileName) {
    return QFileInfo(fileName).suffix().compare(QLatin1String("asc"), Qt::CaseInsensitive) == 0;
}

std::optional<ImportedProject> importAsc(const QString& fileName, const ElementLibrary& library,
                                         const SpiceModels& models, QString* reason) {
    ImportedProject result;
    const QStringList fileNames{QFileInfo(fileName).absoluteFilePath()};
    const auto drawing = drawingOf(fileNames, library, models, &result.remarks, reason);
    if (!drawing) {
        return {};
    }
    drawing->write(&result.project);
    return result;
}

#include "ImportedDrawing.h"

#include "ProjectFile.h"
#include "WireGraph.h"

#include <QDomElement>
#include <QStringList>

#include <algorithm>

namespace {

// Of the text in the drawing.
constexpr int LetterWidth = 7;
constexpr int LineHeight = 15;
constexpr int TextMargin = 6;
constexpr int Clearance = 20;

QDomElement append(QDomElement& parent, const char* tag) {
    QDomElement element = parent.ownerDocument().createElement(QLatin1String(tag));
    parent.appendChild(element);
    return element;
}

void appendValue(QDomElement& parent, const char* tag, const QString& name, const QString& value) {
    QDomElement record = append(parent, tag);
    record.setAttribute(QStringLiteral("Name"), name);
    record.setAttribute(QStringLiteral("Value"), value);
}

void setPlace(QDomElement& record, const QPoint& place) {
    record.setAttribute(QStringLiteral("X"), place.x());
    record.setAttribute(QStringLiteral("Y"), place.y());
}

void writeElement(QDomElement& part, const ImportedDrawing::Element& element, int index) {
    QDomElement record = append(part, "CircuitElement");
    record.setAttribute(QStringLiteral("ElementType"), element.type);
    record.setAttribute(QStringLiteral("ID"), index);
    record.setAttribute(QStringLiteral("ModelName"), element.model);
    setPlace(record, element.position);
    appendValue(record, "Property", QStringLiteral("Name"), element.name);
    appendValue(record, "Property", QStringLiteral("Caption"), element.caption);
    appendValue(record, "Property", QStringLiteral("Rotation"), QString::number(element.rotation));
    appendValue(record, "Property", QStringLiteral("Flip"), QString::number(element.flip));
    for (const auto& parameter : element.parameters) {
        appendValue(record, "Parameter", parameter.first, parameter.second);
    }
}

void writeShape(QDomElement& record, const QVector<QLine>& lines, const QVector<QPoint>& stops) {
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
}

void writeNet(QDomElement& part, const ImportedDrawing::Net& net) {
    QDomElement record = append(part, "CircuitNode");
    record.setAttribute(QStringLiteral("Name"), net.name);
    setPlace(record, {});
    QVector<QLine> lines = net.wires;
    QVector<QPoint> stops;
    for (const ImportedDrawing::Terminal& terminal : net.terminals) {
        QDomElement member = append(record, "ElementNode");
        member.setAttribute(QStringLiteral("ElementID"), terminal.element);
        member.setAttribute(QStringLiteral("Name"), terminal.name);
        stops.append(terminal.place);
        for (int i = 1; i < terminal.stub.size(); ++i) {
            lines.append({terminal.stub.at(i - 1), terminal.stub.at(i)});
        }
    }
    writeShape(record, lines, stops);
    appendValue(record, "Property", QStringLiteral("WireClearance"), QString::number(Clearance));
}

void writeParameter(QDomElement& part, const QPair<QString, QString>& parameter) {
    QDomElement record = append(part, "GlobalVar");
    record.setAttribute(QStringLiteral("Name"), parameter.first);
    record.setAttribute(QStringLiteral("Value"), parameter.second);
    record.setAttribute(QStringLiteral("IsReal"), 1);
    record.setAttribute(QStringLiteral("IsString"), 0);
}

void writeText(QDomElement& part, const ImportedDrawing::Text& text) {
    QString content = text.text;
    int width = 0;
    const QStringList lines = content.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        width = std::max<int>(width, line.size());
    }
    QDomElement record = append(part, "TextBox");
    setPlace(record, text.place - QPoint(0, LineHeight / 2));
    record.setAttribute(QStringLiteral("Width"), width * LetterWidth + 2 * TextMargin);
    record.setAttribute(QStringLiteral("Height"), lines.size() * LineHeight + 2 * TextMargin);
    record.setAttribute(QStringLiteral("FontFamily"), QStringLiteral("DejaVu Sans"));
    record.setAttribute(QStringLiteral("FontSize"), 8);
    record.setAttribute(QStringLiteral("BorderColor"), QStringLiteral("#00000000"));
    record.setAttribute(QStringLiteral("FillColor"), QStringLiteral("#00000000"));
    // What would be read as an escape of the box's own.
    content.replace(QLatin1String("{|"), QLatin1String("{ |"));
    content.replace(QLatin1Char('\n'), QLatin1String("{|?|}"));
    record.appendChild(part.ownerDocument().createCDATASection(content));
}

}  // namespace

void ImportedDrawing::write(ProjectFile* project) const {
    QDomElement part = project->addPart(QLatin1String(ProjectFile::CircuitPart));
    part.setAttribute(QStringLiteral("Title"), title);
    for (int i = 0; i < elements.size(); ++i) {
        writeElement(part, elements.at(i), i);
    }
    for (const Net& net : nets) {
        writeNet(part, net);
    }
    for (const auto& parameter : parameters) {
        writeParameter(part, parameter);
    }
    for (const Text& text : texts) {
        writeText(part, text);
    }
    QDomElement simulation = project->addPart(QStringLiteral("Simulation"));
    setup.save(project->document(), simulation);
}

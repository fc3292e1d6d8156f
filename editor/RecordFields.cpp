#include "RecordFields.h"

#include "CCircuitEditorTextBox.h"
#include "CircuitGeometry.h"
#include "TextBoxColors.h"
#include "XmlText.h"

#include <QPainterPath>

namespace {

// Far outside any drawing area.
constexpr double FarthestCoordinate = 1e6;

double storedNumber(const QDomElement& record, const char* name) {
    return CircuitGeometry::finiteNumber(record.attribute(QLatin1String(name)));
}

double boundedNumber(const QDomElement& record, const char* name) {
    return qBound(-FarthestCoordinate, storedNumber(record, name), FarthestCoordinate);
}

struct ColorField {
    const char* attribute;
    const char* palette;
    QColor (CCircuitEditorTextBox::*get)() const;
    void (CCircuitEditorTextBox::*set)(const QColor&);
};

constexpr ColorField ColorFields[] = {
    {"BorderColor", "Border", &CCircuitEditorTextBox::borderColor,
     &CCircuitEditorTextBox::setBorderColor},
    {"FillColor", "Fill", &CCircuitEditorTextBox::fillColor, &CCircuitEditorTextBox::setFillColor},
    {"TextColor", "Text", &CCircuitEditorTextBox::textColor, &CCircuitEditorTextBox::setTextColor},
};

/// With transparency, which the plain name of a colour leaves out.
QString colorName(const QColor& color) {
    return color.alpha() == 255 ? color.name() : color.name(QColor::HexArgb);
}

}  // namespace

QPointF RecordFields::storedPosition(const QDomElement& record) {
    return {storedNumber(record, "X"), storedNumber(record, "Y")};
}

QPointF RecordFields::boundedPosition(const QDomElement& record) {
    return {boundedNumber(record, "X"), boundedNumber(record, "Y")};
}

void RecordFields::setStoredPosition(QDomElement& record, const QPointF& position) {
    record.setAttribute(QStringLiteral("X"), position.x());
    record.setAttribute(QStringLiteral("Y"), position.y());
}

QRectF RecordFields::storedRect(const QDomElement& record) {
    return {boundedPosition(record),
            QSizeF(boundedNumber(record, "Width"), boundedNumber(record, "Height"))};
}

void RecordFields::setStoredRect(QDomElement& record, const QRectF& rect) {
    setStoredPosition(record, rect.topLeft());
    record.setAttribute(QStringLiteral("Width"), rect.width());
    record.setAttribute(QStringLiteral("Height"), rect.height());
}

QPainterPath RecordFields::storedPath(const QList<QDomElement>& shapeElements,
                                      QPointF (*position)(const QDomElement&)) {
    QPainterPath path;
    for (const QDomElement& element : shapeElements) {
        switch (element.attribute(QStringLiteral("Type")).toInt()) {
            case QPainterPath::MoveToElement:
                path.moveTo(position(element));
                break;
            case QPainterPath::LineToElement:
                path.lineTo(position(element));
                break;
            default:
                break;
        }
    }
    return path;
}

void RecordFields::setStoredColors(QDomElement& record, const CCircuitEditorTextBox& box) {
    for (const ColorField& field : ColorFields) {
        const QColor color = (box.*field.get)();
        const QColor standard = TextBoxColors::standard(field.palette);
        // A colour that is none shows, and is written, as black.
        if (color.rgba() != standard.rgba() || !standard.isValid()) {
            record.setAttribute(QLatin1String(field.attribute), colorName(color));
        }
    }
}

void RecordFields::applyStoredColors(const QDomElement& record, CCircuitEditorTextBox* box) {
    for (const ColorField& field : ColorFields) {
        if (record.hasAttribute(QLatin1String(field.attribute))) {
            (box->*field.set)(
                TextBoxColors::named(record.attribute(QLatin1String(field.attribute))));
        }
    }
}

void RecordFields::appendCData(QDomDocument document, QDomElement& record, const QString& text) {
    const QString end = QStringLiteral("]]>");
    QString rest = xmlText(text);
    for (int at = rest.indexOf(end); at >= 0; at = rest.indexOf(end)) {
        record.appendChild(document.createCDATASection(rest.left(at + 2)));
        rest.remove(0, at + 2);
    }
    record.appendChild(document.createCDATASection(rest));
}

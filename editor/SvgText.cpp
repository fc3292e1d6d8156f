#include "SvgText.h"

#include <QBrush>
#include <QFont>
#include <QPainterPath>
#include <QPen>
#include <QString>
#include <QTransform>

#include <charconv>
#include <cmath>

namespace {

const char* capName(Qt::PenCapStyle style) {
    switch (style) {
        case Qt::FlatCap:
            return "butt";
        case Qt::RoundCap:
            return "round";
        default:
            return "square";
    }
}

const char* joinName(Qt::PenJoinStyle style) {
    switch (style) {
        case Qt::MiterJoin:
        case Qt::SvgMiterJoin:
            return "miter";
        case Qt::RoundJoin:
            return "round";
        default:
            return "bevel";
    }
}

int svgWeight(int weight) {
    switch (weight) {
        case QFont::Light:
            return 100;
        case QFont::Normal:
            return 400;
        case QFont::Bold:
            return 700;
        default:
            return weight * 10;
    }
}

void appendPoint(QByteArray& out, char command, double x, double y) {
    if (command) {
        out += command;
    } else {
        out += ' ';
    }
    SvgText::appendNumber(out, x);
    out += ',';
    SvgText::appendNumber(out, y);
}

}  // namespace

void SvgText::appendNumber(QByteArray& out, double number) {
    char text[32];
    const auto whole = static_cast<long long>(std::abs(number) < 1e9 ? number : 0);
    const std::to_chars_result result =
        double(whole) == number
            ? std::to_chars(text, text + sizeof text, whole)
            : std::to_chars(text, text + sizeof text, number, std::chars_format::general, 8);
    out.append(text, static_cast<int>(result.ptr - text));
}

void SvgText::appendAttribute(QByteArray& out, const char* name, double number) {
    out += ' ';
    out += name;
    out += "=\"";
    appendNumber(out, number);
    out += '"';
}

void SvgText::appendAttribute(QByteArray& out, const char* name, const QByteArray& text) {
    out += ' ';
    out += name;
    out += "=\"";
    out += text;
    out += '"';
}

void SvgText::appendColor(QByteArray& out, const char* name, const QColor& color) {
    appendAttribute(out, name, color.name().toLatin1());
    if (color.alpha() != 255) {
        appendAttribute(out, (QByteArray(name) + "-opacity").constData(), color.alphaF());
    }
}

void SvgText::appendPen(QByteArray& out, const QPen& pen) {
    if (pen.style() == Qt::NoPen) {
        out += " stroke=\"none\"";
        return;
    }
    appendColor(out, "stroke", pen.color());
    // A hairline is one unit wide.
    const double width = pen.widthF() == 0 ? 1 : pen.widthF();
    if (pen.style() != Qt::SolidLine) {
        QByteArray dashes;
        for (const qreal dash : pen.dashPattern()) {
            if (!dashes.isEmpty()) {
                dashes += ',';
            }
            appendNumber(dashes, dash * width);
        }
        appendAttribute(out, "stroke-dasharray", dashes);
        appendAttribute(out, "stroke-dashoffset", pen.dashOffset() * width);
    }
    appendAttribute(out, "stroke-width", width);
    appendAttribute(out, "stroke-linecap", capName(pen.capStyle()));
    appendAttribute(out, "stroke-linejoin", joinName(pen.joinStyle()));
    if (pen.joinStyle() == Qt::MiterJoin || pen.joinStyle() == Qt::SvgMiterJoin) {
        appendAttribute(out, "stroke-miterlimit", pen.miterLimit());
    }
}

void SvgText::appendFill(QByteArray& out, const QBrush& brush) {
    if (brush.style() == Qt::NoBrush) {
        out += " fill=\"none\"";
    } else {
        appendColor(out, "fill", brush.color());
    }
}

void SvgText::appendFont(QByteArray& out, const QFont& font, int resolution) {
    appendAttribute(out, "font-family", font.family().toHtmlEscaped().toUtf8());
    appendAttribute(
        out, "font-size",
        font.pixelSize() == -1 ? font.pointSizeF() * resolution / 72 : font.pixelSize());
    appendAttribute(out, "font-weight", svgWeight(font.weight()));
    appendAttribute(out, "font-style", font.italic() ? "italic" : "normal");
}

void SvgText::appendTransform(QByteArray& out, const QTransform& t) {
    if (t.isIdentity()) {
        return;
    }
    out += " transform=\"matrix(";
    const double numbers[] = {t.m11(), t.m12(), t.m21(), t.m22(), t.dx(), t.dy()};
    for (const double& number : numbers) {
        if (&number != numbers) {
            out += ',';
        }
        appendNumber(out, number);
    }
    out += ")\"";
}

void SvgText::appendPath(QByteArray& out, const QPainterPath& path) {
    out += " d=\"";
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element& point = path.elementAt(i);
        switch (point.type) {
            case QPainterPath::MoveToElement:
                appendPoint(out, 'M', point.x, point.y);
                break;
            case QPainterPath::LineToElement:
                appendPoint(out, 'L', point.x, point.y);
                break;
            case QPainterPath::CurveToElement:
                appendPoint(out, 'C', point.x, point.y);
                break;
            case QPainterPath::CurveToDataElement:
                appendPoint(out, 0, point.x, point.y);
                break;
        }
    }
    out += '"';
}

void SvgText::appendGradient(QByteArray& out, const QGradient& gradient,
                             const QTransform& transform, const QByteArray& id) {
    const bool isLinear = gradient.type() == QGradient::LinearGradient;
    const char* tag = isLinear ? "linearGradient" : "radialGradient";
    out += '<';
    out += tag;
    appendAttribute(out, "id", id);
    const bool isOfBounds = gradient.coordinateMode() == QGradient::ObjectBoundingMode ||
                            gradient.coordinateMode() == QGradient::ObjectMode;
    appendAttribute(out, "gradientUnits", isOfBounds ? "objectBoundingBox" : "userSpaceOnUse");
    if (!transform.isIdentity()) {
        QByteArray attribute;
        appendTransform(attribute, transform);
        out += attribute.replace(" transform", " gradientTransform");
    }
    if (isLinear) {
        const auto& linear = static_cast<const QLinearGradient&>(gradient);
        appendAttribute(out, "x1", linear.start().x());
        appendAttribute(out, "y1", linear.start().y());
        appendAttribute(out, "x2", linear.finalStop().x());
        appendAttribute(out, "y2", linear.finalStop().y());
    } else {
        const auto& radial = static_cast<const QRadialGradient&>(gradient);
        appendAttribute(out, "cx", radial.center().x());
        appendAttribute(out, "cy", radial.center().y());
        appendAttribute(out, "r", radial.radius());
        appendAttribute(out, "fx", radial.focalPoint().x());
        appendAttribute(out, "fy", radial.focalPoint().y());
    }
    if (gradient.spread() != QGradient::PadSpread) {
        const bool repeats = gradient.spread() == QGradient::RepeatSpread;
        appendAttribute(out, "spreadMethod", repeats ? "repeat" : "reflect");
    }
    out += '>';
    for (const QGradientStop& stop : gradient.stops()) {
        out += "<stop";
        appendAttribute(out, "offset", stop.first);
        appendAttribute(out, "stop-color", stop.second.name().toLatin1());
        appendAttribute(out, "stop-opacity", stop.second.alphaF());
        out += "/>";
    }
    out += "</";
    out += tag;
    out += '>';
}

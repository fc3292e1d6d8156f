#include "NetlistType.h"

#include "BoxPicture.h"
#include "CircuitElement.h"
#include "StrokeText.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSize>

#include <algorithm>

namespace NetlistType {

namespace {

constexpr int PinDistance = 20;
/// From the first pin to the upper edge: below the frame stands the name.
constexpr int Head = 30;
constexpr int LeadLength = 10;
/// From the upper edge to the middle of the name.
constexpr int Title = 13;
constexpr int Grid = 10;
/// More isn't drawn by anybody, and what a file claims may be anything.
constexpr int MostPins = 200;
constexpr int LongestText = 1000000;

QString tr(const char* text) {
    return QCoreApplication::translate("NetlistType", text);
}

const QRegularExpression& blanks() {
    static const QRegularExpression expression(QStringLiteral("\\s+"));
    return expression;
}

/// Without comments, and with each line that goes on in the next one as one.
QStringList wholeLines(const QString& text) {
    static const QRegularExpression comment(QStringLiteral(";.*|\\$\\s.*"));
    QStringList lines;
    for (const QString& raw : text.split(QLatin1Char('\n'))) {
        const QString line = QString(raw).remove(comment).simplified();
        if (line.isEmpty() || line.startsWith(QLatin1Char('*'))) {
            continue;
        }
        if (line.startsWith(QLatin1Char('+')) && !lines.isEmpty()) {
            lines.last() += QLatin1Char(' ') + line.mid(1).trimmed();
        } else {
            lines.append(line);
        }
    }
    return lines;
}

/// The netlist tells "meg" from "m" and nothing by the case of letters; people write "M" and "m".
QString valueFor(const QString& netlistValue) {
    QString value = netlistValue.toLower();
    const QPair<const char*, const char*> suffixes[] = {{"meg", "M"}, {"g", "G"}, {"t", "T"}};
    for (const auto& suffix : suffixes) {
        if (value.endsWith(QLatin1String(suffix.first))) {
            value.chop(static_cast<int>(qstrlen(suffix.first)));
            return value + QLatin1String(suffix.second);
        }
    }
    return value;
}

/// "name=number" pairs. Those that are computed stay the netlist's own.
QVector<ParameterData> parametersOf(const QString& rest) {
    static const QRegularExpression pair(
        QStringLiteral("([A-Za-z_]\\w*)\\s*=\\s*([-+.0-9]\\S*)(?=\\s|\\z)"));
    QVector<ParameterData> parameters;
    for (auto it = pair.globalMatch(rest); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        ParameterData parameter;
        parameter.name = match.captured(1);
        parameter.value = valueFor(match.captured(2));
        parameter.description = tr("Parameter of the netlist");
        const bool isOwn =
            CircuitElement::staticMetaObject.indexOfProperty(parameter.name.toUtf8()) < 0;
        if (isOwn && parameter.accepts(parameter.value)) {
            parameters.append(parameter);
        }
    }
    return parameters;
}

/// What an element has under one roof must differ, also from what all elements have.
QString freeName(const QString& wanted, const QStringList& taken) {
    QString name = wanted;
    while (taken.contains(name) ||
           CircuitElement::staticMetaObject.indexOfProperty(name.toUtf8()) >= 0) {
        name += QLatin1Char('_');
    }
    return name;
}

/// Pins go down the left side and on down the right one; answers half the size of the picture.
QSize place(QVector<TerminalData>* pins, const QString& name) {
    const int left = (pins->size() + 1) / 2;
    int longest[2] = {0, 0};
    for (int i = 0; i < pins->size(); ++i) {
        longest[i < left ? 0 : 1] =
            std::max<int>(longest[i < left ? 0 : 1], pins->at(i).name.size());
    }
    const int letters = std::max<int>(longest[0] + longest[1] + 2, name.size());
    const int halfWidth =
        (static_cast<int>(letters * StrokeText::Advance) / 2 + LeadLength) / Grid * Grid + 2 * Grid;
    const QSize half(halfWidth, (left - 1) * PinDistance / 2 / Grid * Grid + Head);
    for (int i = 0; i < pins->size(); ++i) {
        const int row = i < left ? i : i - left;
        (*pins)[i].position =
            QPointF(i < left ? -halfWidth : halfWidth, Head - half.height() + row * PinDistance);
    }
    return half;
}

QByteArray picture(const QVector<TerminalData>& pins, const QString& name, const QSize& half) {
    using StrokeText::Anchor;
    QVector<QLine> leads;
    QString texts = StrokeText::path(name, QPointF(0, Title - half.height()), Anchor::Middle);
    for (const TerminalData& pin : pins) {
        const bool isLeft = pin.position.x() < 0;
        const QPoint inwards(isLeft ? 1 : -1, 0);
        const QPoint place = pin.position.toPoint();
        leads.append({place, place + inwards * LeadLength});
        texts += QLatin1Char(' ') + StrokeText::path(pin.name, place + inwards * (LeadLength + 4),
                                                     isLeft ? Anchor::Left : Anchor::Right);
    }
    const QSize inner = half - QSize(LeadLength, 2);
    return BoxPicture::svg(
        half, {QPoint(-inner.width(), -inner.height()), 2 * inner}, leads,
        QStringLiteral("  <path fill=\"none\" stroke=\"#000000\" stroke-width=\"1\" "
                       "stroke-linecap=\"round\" stroke-linejoin=\"round\" d=\"%1\"/>\n")
            .arg(texts));
}

/// The line of the element, and around the text a sub-circuit of its own: whatever names the text
/// gives stay inside.
void writeSpice(const QString& text, const QString& name, const QStringList& pins,
                ElementTypeData* data) {
    SpiceData& spice = data->spice;
    spice.known = true;
    QString line = QStringLiteral("X${name}");
    QString head = QStringLiteral(".subckt ${model}");
    QString inner = QStringLiteral("Xnetlist");
    for (int i = 0; i < pins.size(); ++i) {
        line += QStringLiteral(" ${%1}").arg(data->terminals.at(i).name);
        head += QStringLiteral(" p%1").arg(i + 1);
        inner += QStringLiteral(" p%1").arg(i + 1);
    }
    line += QStringLiteral(" ${model}");
    inner += QLatin1Char(' ') + name;
    for (const ParameterData& parameter : qAsConst(data->parameters)) {
        line += QStringLiteral(" %1=${%1}").arg(parameter.name);
        head += QStringLiteral(" %1=0").arg(parameter.name);
        inner += QStringLiteral(" %1={%1}").arg(parameter.name);
    }
    spice.lines = QStringList{line};
    spice.definition =
        QStringList{head} + wholeLines(text) + QStringList{inner, QStringLiteral(".ends")};
}

}  // namespace

QString nameFor(const QString& text) {
    ElementTypeData data;
    QString reason;
    describe(text, &data, &reason);
    const QByteArray packed =
        qCompress(text.toUtf8(), 9)
            .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
    return QStringLiteral("%1~%2.%3")
        .arg(QString(data.label).remove(QLatin1Char('.')).remove(QLatin1Char('~')),
             QLatin1String(packed), QLatin1String(Library));
}

QString textOf(const QString& type) {
    const QString end = QLatin1Char('.') + QLatin1String(Library);
    const int mark = type.indexOf(QLatin1Char('~'));
    if (!type.endsWith(end) || mark < 0) {
        return {};
    }
    const QByteArray packed =
        QByteArray::fromBase64(type.mid(mark + 1, type.size() - mark - 1 - end.size()).toLatin1(),
                               QByteArray::Base64UrlEncoding);
    // The first four bytes tell the size, which is made room for.
    const auto byte = [&packed](int i) { return static_cast<quint32>(uchar(packed.at(i))); };
    if (packed.size() < 5 ||
        (byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3)) > quint32(LongestText)) {
        return {};
    }
    return QString::fromUtf8(qUncompress(packed));
}

bool describe(const QString& text, ElementTypeData* data, QString* reason) {
    const QStringList lines = wholeLines(text);
    const auto isCommand = [](const QString& line, const char* word) {
        return line.section(QLatin1Char(' '), 0, 0)
                   .compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    };
    const auto head = std::find_if(lines.begin(), lines.end(),
                                   [&](const QString& line) { return isCommand(line, ".subckt"); });
    int open = 0;
    for (const QString& line : lines) {
        open += isCommand(line, ".subckt") ? 1 : isCommand(line, ".ends") ? -1 : 0;
    }
    if (head == lines.end() || open != 0 || text.size() > LongestText) {
        *reason = head == lines.end() ? tr("there is no line \".subckt NAME PINS\"")
                  : open != 0         ? tr("each \".subckt\" needs an \".ends\"")
                                      : tr("it is too long");
        return false;
    }
    QStringList words = head->split(blanks());
    words.removeFirst();
    const QString name = words.isEmpty() ? QString() : words.takeFirst();
    QStringList pins;
    static const QRegularExpression nextName(QStringLiteral("\\A\\s*="));
    int at = head->indexOf(name) + name.size();
    for (const QString& word : qAsConst(words)) {
        at = head->indexOf(word, at) + word.size();
        if (word.contains(QLatin1Char('=')) || nextName.match(head->mid(at)).hasMatch() ||
            word.compare(QLatin1String("params:"), Qt::CaseInsensitive) == 0) {
            at -= word.size();
            break;
        }
        if (pins.contains(word, Qt::CaseInsensitive) || word == QLatin1String("0") ||
            word.contains(QRegularExpression(QStringLiteral("[{}()$\"<>&]")))) {
            *reason = tr("%1 can not be a pin, or not once more").arg(word);
            return false;
        }
        pins.append(word);
    }
    if (pins.isEmpty() || pins.size() > MostPins) {
        *reason = tr("\".subckt %1\" has no pins, or too many").arg(name);
        return false;
    }
    data->parameters = parametersOf(head->mid(at));
    QStringList names;
    for (const ParameterData& parameter : qAsConst(data->parameters)) {
        names.append(parameter.name);
    }
    data->terminals.clear();
    for (const QString& pin : qAsConst(pins)) {
        names.append(freeName(pin, names));
        data->terminals.append({names.last(), QStringLiteral("e"), {}, {}, {}});
        data->outputVariables.insert(QLatin1String("i_") + names.last(),
                                     tr("Current into %1").arg(pin));
        data->spice.results.insert(QLatin1String("i_") + names.last(),
                                   QStringLiteral("i(%1)").arg(names.last()));
    }
    data->label = data->label.isEmpty() ? name : data->label;
    data->description = data->description.isEmpty()
                            ? tr("What the netlist of %1 describes.").arg(name)
                            : data->description;
    data->namePrefix = data->namePrefix.isEmpty() ? QStringLiteral("X") : data->namePrefix;
    const QSize half = place(&data->terminals, name);
    data->drawing = picture(data->terminals, name, half);
    writeSpice(text, name, pins, data);
    data->netlist = text;
    return true;
}

}  // namespace NetlistType

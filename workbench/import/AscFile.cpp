#include "AscFile.h"

#include "XmlUtils.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>

namespace {

// Far beyond any sheet, and far from where coordinates overflow.
constexpr int Farthest = 1000000;

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

/// The words of one line, taken from its beginning.
class Words {
public:
    explicit Words(const QString& line) : m_rest(line) {}

    QString next() {
        const int start = skipBlanks();
        int end = start;
        while (end < m_rest.size() && !m_rest.at(end).isSpace()) {
            ++end;
        }
        const QString word = m_rest.mid(start, end - start);
        m_rest = m_rest.mid(end);
        return word;
    }
    /// False, with all numbers 0, if there is none that a sheet could have.
    bool number(int* value) {
        bool ok = false;
        *value = next().toInt(&ok);
        ok = ok && std::abs(*value) <= Farthest;
        *value = ok ? *value : 0;
        return ok;
    }
    bool point(QPoint* point) { return number(&point->rx()) && number(&point->ry()); }
    QString rest() const { return m_rest.trimmed(); }

private:
    int skipBlanks() const {
        int at = 0;
        while (at < m_rest.size() && m_rest.at(at).isSpace()) {
            ++at;
        }
        return at;
    }

    QString m_rest;
};

QStringList linesOf(const QString& text) {
    static const QRegularExpression end(QStringLiteral("\r\n|\n|\r"));
    return text.split(end);
}

bool isGraphics(const QString& keyword) {
    static const QStringList words = {QStringLiteral("LINE"), QStringLiteral("RECTANGLE"),
                                      QStringLiteral("CIRCLE"), QStringLiteral("ARC")};
    return words.contains(keyword);
}

/// The text of a sheet: a backslash and an "n" break the line, a doubled backslash is one.
QString brokenText(const QString& stored) {
    QString text;
    for (int i = 0; i < stored.size(); ++i) {
        const bool isEscape = stored.at(i) == QLatin1Char('\\') && i + 1 < stored.size();
        if (isEscape && stored.at(i + 1) == QLatin1Char('n')) {
            text += QLatin1Char('\n');
            ++i;
        } else {
            text += stored.at(i);
            i += isEscape && stored.at(i + 1) == QLatin1Char('\\') ? 1 : 0;
        }
    }
    return text;
}

class Reader {
public:
    std::optional<AscSchematic> read(const QString& text) {
        bool isSchematic = false;
        int number = 0;
        for (const QString& line : linesOf(text)) {
            ++number;
            Words words(line);
            const QString keyword = words.next();
            isSchematic =
                isSchematic || keyword.compare(QLatin1String("Version"), Qt::CaseInsensitive) == 0;
            if (!keyword.isEmpty() && !isSchematic) {
                return {};
            }
            if (!keyword.isEmpty() && !take(keyword, words)) {
                m_result.remarks.append(tr("line %1 is not understood: %2")
                                            .arg(number)
                                            .arg(line.simplified().left(60)));
            }
        }
        if (m_graphics > 0) {
            m_result.remarks.append(
                tr("%1 drawn lines and shapes that belong to no symbol are left out")
                    .arg(m_graphics));
        }
        return isSchematic ? std::optional<AscSchematic>(m_result) : std::nullopt;
    }

private:
    bool take(const QString& keyword, Words& words) {
        if (keyword == QLatin1String("WIRE")) {
            QPoint from;
            QPoint to;
            const bool ok = words.point(&from) && words.point(&to);
            if (ok && from != to) {
                m_result.wires.append({from, to});
            }
            return ok;
        }
        if (keyword == QLatin1String("FLAG")) {
            AscSchematic::Flag flag;
            const bool ok = words.point(&flag.place);
            flag.name = words.rest();
            if (ok && !flag.name.isEmpty()) {
                m_result.flags.append(flag);
            }
            return ok && !flag.name.isEmpty();
        }
        if (keyword == QLatin1String("IOPIN")) {
            return takePort(words);
        }
        if (keyword == QLatin1String("SYMBOL")) {
            return takeSymbol(words);
        }
        if (keyword == QLatin1String("SYMATTR")) {
            const QString name = words.next();
            if (!m_result.symbols.isEmpty() && !name.isEmpty()) {
                m_result.symbols.last().attributes.insert(name, words.rest());
            }
            return !m_result.symbols.isEmpty() && !name.isEmpty();
        }
        if (keyword == QLatin1String("TEXT")) {
            return takeText(words);
        }
        if (isGraphics(keyword)) {
            ++m_graphics;
            return true;
        }
        // Where texts of a symbol stand: they find their places anew.
        return keyword == QLatin1String("WINDOW") || keyword == QLatin1String("SHEET") ||
               keyword.compare(QLatin1String("Version"), Qt::CaseInsensitive) == 0;
    }

    bool takePort(Words& words) {
        QPoint place;
        const bool ok = words.point(&place);
        bool found = false;
        for (AscSchematic::Flag& flag : m_result.flags) {
            if (ok && flag.place == place) {
                flag.isPort = true;
                found = true;
            }
        }
        return found;
    }
    bool takeSymbol(Words& words) {
        AscSchematic::Symbol symbol;
        symbol.name = words.next();
        const bool ok = words.point(&symbol.place);
        symbol.orientation = words.next();
        // What follows belongs to it, also if its own line is bad.
        m_result.symbols.append(symbol);
        static const QRegularExpression orientation(QStringLiteral("\\A[RM](0|90|180|270)\\z"));
        return ok && orientation.match(symbol.orientation).hasMatch();
    }
    bool takeText(Words& words) {
        AscSchematic::Text text;
        const bool ok = words.point(&text.place);
        words.next();  // how it is aligned
        words.next();  // its size
        const QString content = words.rest();
        const bool isKnown =
            content.startsWith(QLatin1Char('!')) || content.startsWith(QLatin1Char(';'));
        text.isDirective = content.startsWith(QLatin1Char('!'));
        text.text = brokenText(isKnown ? content.mid(1) : content);
        if (ok && !text.text.trimmed().isEmpty()) {
            m_result.texts.append(text);
        }
        return ok;
    }

    AscSchematic m_result;
    int m_graphics = 0;
};

/// Every other byte of Latin letters in UTF-16 is null.
bool hasNulls(const QByteArray& bytes, int first) {
    int nulls = 0;
    const int length = std::min<int>(bytes.size(), 200);
    for (int i = first; i < length; i += 2) {
        nulls += bytes.at(i) == '\0' ? 1 : 0;
    }
    return length >= 4 && nulls > length / 4;
}

QString fromUtf16(const QByteArray& bytes, quint16 (*unit)(const void*)) {
    QString text;
    for (int i = 0; i + 1 < bytes.size(); i += 2) {
        const QChar c(unit(bytes.constData() + i));
        if (c != QChar(QChar::ByteOrderMark)) {
            text += c;
        }
    }
    return text;
}

/// Windows-1252: Latin-1, but for 32 characters.
QString fromWindows(const QByteArray& bytes) {
    constexpr ushort Own[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                              0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    QString text = QString::fromLatin1(bytes);
    for (QChar& c : text) {
        if (c >= QChar(0x80) && c < QChar(0xA0)) {
            c = QChar(Own[c.unicode() - 0x80]);
        }
    }
    return text;
}

QString decoded(const QByteArray& bytes) {
    if (bytes.startsWith("\xFF\xFE") || hasNulls(bytes, 1)) {
        return fromUtf16(bytes, qFromLittleEndian<quint16>);
    }
    if (bytes.startsWith("\xFE\xFF") || hasNulls(bytes, 0)) {
        return fromUtf16(bytes, qFromBigEndian<quint16>);
    }
    const QString text = QString::fromUtf8(bytes);
    return text.contains(QChar(QChar::ReplacementCharacter)) ? fromWindows(bytes) : text;
}

}  // namespace

bool AscSchematic::Flag::isGround() const {
    return name == QLatin1String("0") ||
           name.compare(QLatin1String("gnd"), Qt::CaseInsensitive) == 0;
}

QString decodeAsc(const QByteArray& bytes) {
    // What a project could not hold would be lost without a word when it is saved.
    return XmlUtils::withoutForbidden(decoded(bytes));
}

std::optional<AscSchematic> parseAsc(const QString& text) {
    return Reader().read(text);
}

AscSymbolFile parseAsy(const QString& text) {
    AscSymbolFile file;
    for (const QString& line : linesOf(text)) {
        Words words(line);
        const QString keyword = words.next();
        if (keyword == QLatin1String("SymbolType")) {
            file.isBlock = words.rest() == QLatin1String("BLOCK");
        } else if (keyword == QLatin1String("PIN")) {
            AscSymbolFile::Pin pin;
            if (words.point(&pin.place)) {
                pin.order = file.pins.size() + 1;
                file.pins.append(pin);
            }
        } else if (keyword == QLatin1String("PINATTR") && !file.pins.isEmpty()) {
            const QString name = words.next();
            AscSymbolFile::Pin& pin = file.pins.last();
            if (name == QLatin1String("PinName")) {
                pin.name = words.rest();
            } else if (name == QLatin1String("SpiceOrder")) {
                words.number(&pin.order);
            }
        } else if (keyword == QLatin1String("SYMATTR")) {
            const QString name = words.next();
            file.attributes.insert(name, words.rest());
        }
    }
    std::stable_sort(file.pins.begin(), file.pins.end(),
                     [](const auto& a, const auto& b) { return a.order < b.order; });
    return file;
}

QPoint placeOfPin(const QPoint& pin, const AscSchematic::Symbol& symbol) {
    const bool isMirrored = symbol.orientation.startsWith(QLatin1Char('M'));
    const QPoint p(isMirrored ? -pin.x() : pin.x(), pin.y());
    switch (symbol.orientation.mid(1).toInt()) {
        case 90:
            return symbol.place + QPoint(-p.y(), p.x());
        case 180:
            return symbol.place - p;
        case 270:
            return symbol.place + QPoint(p.y(), -p.x());
        default:
            return symbol.place + p;
    }
}

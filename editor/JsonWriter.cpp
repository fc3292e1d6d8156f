#include "JsonWriter.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

// All whole numbers up to here are doubles, and the first that no integer of 64 bits holds.
constexpr double LargestExact = 9007199254740992.0;
constexpr double BeyondIntegers = 18446744073709551616.0;

constexpr int PieceSize = 1 << 16;

}  // namespace

bool JsonWriter::finish() {
    m_text += '\n';
    flush();
    return m_isWhole;
}

void JsonWriter::flush() {
    m_isWhole = m_isWhole && m_target->write(m_text) == m_text.size();
    m_text.resize(0);
    m_text.reserve(2 * PieceSize);
}

void JsonWriter::separate() {
    if (m_text.size() > PieceSize) {
        flush();
    }
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_depth > 0) {
        m_text += m_isFirst ? "" : ",\n";
        indent();
    }
    m_isFirst = false;
}

void JsonWriter::begin(char bracket) {
    separate();
    m_text += bracket;
    m_text += '\n';
    ++m_depth;
    m_isFirst = true;
}

void JsonWriter::end(char bracket) {
    --m_depth;
    if (!m_isFirst) {
        m_text += '\n';
    }
    indent();
    m_text += bracket;
    m_isFirst = false;
}

void JsonWriter::key(const char* name) {
    separate();
    m_text += '"';
    m_text += name;
    m_text += "\": ";
    m_afterKey = true;
}

void JsonWriter::key(const QString& name) {
    separate();
    append(name);
    m_text += ": ";
    m_afterKey = true;
}

void JsonWriter::append(const QString& text) {
    const bool isPlain = std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= QLatin1Char(' ') && c <= QLatin1Char('~') && c != QLatin1Char('"') &&
               c != QLatin1Char('\\');
    });
    if (isPlain) {
        m_text += '"';
        m_text += text.toLatin1();
        m_text += '"';
    } else {
        const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
        m_text.append(list.constData() + 1, list.size() - 2);
    }
}

void JsonWriter::value(const QString& text) {
    separate();
    append(text);
}

void JsonWriter::value(double number) {
    separate();
    const bool isWhole = number == std::floor(number);
    if (!std::isfinite(number)) {
        m_text += "null";
    } else if (isWhole && std::abs(number) <= LargestExact) {
        m_text += QByteArray::number(static_cast<qint64>(number));
    } else {
        const char format = isWhole && std::abs(number) < BeyondIntegers ? 'f' : 'g';
        m_text += QByteArray::number(number, format, QLocale::FloatingPointShortest);
    }
}

void JsonWriter::value(bool truth) {
    separate();
    m_text += truth ? "true" : "false";
}

void JsonWriter::tree(const QJsonValue& value) {
    separate();
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    QByteArray text = document.toJson();
    text.chop(1);
    m_text += text.replace("\n", "\n" + QByteArray(4 * m_depth, ' '));
}

#pragma once

#include <QDomDocument>
#include <QRegularExpression>
#include <QString>

namespace QtSeries {

/// Without the characters that XML forbids, and references to such.
inline QString withoutForbidden(const QString& xml) {
    const auto isAllowed = [](uint code) {
        return code == 0x09 || code == 0x0A || code == 0x0D || (code >= 0x20 && code < 0xD800) ||
               (code >= 0xE000 && code < 0xFFFE) || (code >= 0x10000 && code <= 0x10FFFF);
    };
    QString result;
    result.reserve(xml.size());
    const auto append = [&](const QStringView& piece) {
        for (const uint code : piece.toUcs4()) {
            if (isAllowed(code)) {
                const char32_t letter = code;
                result += QString::fromUcs4(&letter, 1);
            }
        }
    };
    // What reads like a reference within CDATA is none.
    static const QRegularExpression parts(
        QStringLiteral("<!\\[CDATA\\[.*?\\]\\]>|&#(?:x([0-9a-fA-F]+)|([0-9]+));"),
        QRegularExpression::DotMatchesEverythingOption);
    int done = 0;
    for (auto found = parts.globalMatch(xml); found.hasNext();) {
        const QRegularExpressionMatch part = found.next();
        const bool isHex = part.capturedLength(1) > 0;
        const bool isReference = isHex || part.capturedLength(2) > 0;
        bool isNumber = true;
        if (!isReference ||
            (isAllowed(part.captured(isHex ? 1 : 2).toUInt(&isNumber, isHex ? 16 : 10)) &&
             isNumber)) {
            continue;
        }
        append(QStringView(xml).mid(done, part.capturedStart() - done));
        done = part.capturedEnd();
    }
    append(QStringView(xml).mid(done));
    return result;
}

/// Reads the text into the document; false with the reason and its line if it is no XML. Characters
/// that XML forbids are no reason: a newer series refuses them, so there they are left out.
inline bool readXml(QDomDocument* document, const QString& text, QString* reason = nullptr,
                    int* line = nullptr) {
    if (document->setContent(text, reason, line)) {
        return true;
    }
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const QString allowed = withoutForbidden(text);
    if (allowed != text && document->setContent(allowed, reason, line)) {
        return true;
    }
    if (reason && *reason == QLatin1String("Premature end of document.")) {
        *reason = QStringLiteral("unexpected end of file");
    } else if (reason && reason->endsWith(QLatin1Char('.'))) {
        reason->chop(1);
    }
#endif
    return false;
}

/// The same for bytes in the encoding that they name, by default UTF-8.
inline bool readXml(QDomDocument* document, const QByteArray& bytes, QString* reason = nullptr,
                    int* line = nullptr) {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return document->setContent(bytes, reason, line);
#else
    return document->setContent(bytes, reason, line) ||
           readXml(document, QString::fromUtf8(bytes), reason, line);
#endif
}

}  // namespace QtSeries

#include "XmlFile.h"

#include "QtSeriesXml.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

/// Files of ours are a few levels deep. The XML reader recurses and would run out of stack on a
/// file that is nested without end.
constexpr int DeepestNesting = 1000;

/// In bytes. Texts of twice that many are the most that can be held.
constexpr qint64 LargestFile = 500 * 1000 * 1000;

/// Position after the tag that opens at `start`; a `>` within quotes doesn't end it.
int endOfTag(const QString& text, int start) {
    QChar quote;
    for (int i = start; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (!quote.isNull()) {
            if (c == quote) {
                quote = QChar();
            }
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            quote = c;
        } else if (c == QLatin1Char('>')) {
            return i + 1;
        }
    }
    return text.size();
}

int skipPast(const QString& text, const char* end, int from) {
    const int found = text.indexOf(QLatin1String(end), from);
    return found < 0 ? text.size() : found + static_cast<int>(qstrlen(end));
}

/// What speaks against giving the text to the XML reader; empty if nothing does.
QString dangerIn(const QString& text) {
    int depth = 0;
    int i = 0;
    while ((i = text.indexOf(QLatin1Char('<'), i)) >= 0) {
        const QStringView rest = QStringView(text).mid(i, 9);
        if (rest.startsWith(QLatin1String("<!--"))) {
            i = skipPast(text, "-->", i + 4);
        } else if (rest.startsWith(QLatin1String("<![CDATA["))) {
            i = skipPast(text, "]]>", i + 9);
        } else if (rest.startsWith(QLatin1String("<?"))) {
            i = skipPast(text, "?>", i + 2);
        } else if (rest.startsWith(QLatin1String("<!"))) {
            const int end = endOfTag(text, i + 2);
            // A document type with declarations of its own: they could hide anything.
            if (QStringView(text).mid(i, end - i).contains(QLatin1Char('['))) {
                return QStringLiteral("declares entities or elements");
            }
            i = end;
        } else if (rest.startsWith(QLatin1String("</"))) {
            --depth;
            i += 2;
        } else {
            const int end = endOfTag(text, i + 1);
            const bool closesItself = end - i > 2 && text.at(end - 2) == QLatin1Char('/');
            if (!closesItself && ++depth > DeepestNesting) {
                return QStringLiteral("is nested too deeply");
            }
            i = end;
        }
    }
    return {};
}

constexpr auto NeedsMore = QXmlStreamReader::PrematureEndOfDocumentError;

/// The next piece of the text: of one that it is given as a whole a reader makes three copies.
/// Where the following one begins.
int giveNext(QXmlStreamReader* reader, const QString& text, int from) {
    constexpr int PieceSize = 1 << 16;
    int size = qMin(PieceSize, text.size() - from);
    if (from + size < text.size() && text.at(from + size - 1).isHighSurrogate()) {
        ++size;
    }
    reader->addData(text.mid(from, size));
    return from + size;
}

using Visit = std::function<void(const QXmlStreamReader& reader, int depth)>;

/// `giveMore` is called at the end of what the reader has got; false means that there is no more.
bool skim(QXmlStreamReader* reader, const XmlKind& kind, const Visit& visit,
          const std::function<bool()>& giveMore) {
    // As the documents do it: a prefix is a part of the name.
    reader->setNamespaceProcessing(false);
    int depth = 0;
    while (!reader->atEnd() || (reader->error() == NeedsMore && giveMore())) {
        switch (reader->readNext()) {
            case QXmlStreamReader::StartElement:
                if (depth > DeepestNesting ||
                    (depth == 0 && reader->qualifiedName() != QLatin1String(kind.rootTag))) {
                    return false;
                }
                visit(*reader, depth++);
                break;
            case QXmlStreamReader::EndElement:
                --depth;
                break;
            case QXmlStreamReader::DTD:
                if (reader->text().contains(QLatin1Char('['))) {
                    return false;
                }
                break;
            default:
                break;
        }
    }
    return !reader->hasError();
}

}  // namespace

std::optional<QByteArray> readRegularFile(const QString& fileName, QString* reason) {
    const QFileInfo info(fileName);
    if (!info.exists()) {
        *reason = QStringLiteral("does not exist");
        return {};
    }
    if (info.isDir()) {
        *reason = QStringLiteral("is a folder");
        return {};
    }
    if (!info.isFile()) {
        *reason = QStringLiteral("is not a regular file");
        return {};
    }
    if (info.size() > LargestFile) {
        *reason = QStringLiteral("is larger than 500 MB");
        return {};
    }
    QFile file(fileName);
    QByteArray bytes;
    if (file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
    }
    if (file.error() != QFileDevice::NoError) {
        *reason = QStringLiteral("cannot be read: %1").arg(file.errorString());
        return {};
    }
    return bytes;
}

std::optional<QDomDocument> parseXmlFile(const QString& text, const XmlKind& kind,
                                         QString* reason) {
    if (text.trimmed().isEmpty()) {
        *reason = QStringLiteral("is empty");
        return {};
    }
    const QString danger = dangerIn(text);
    if (!danger.isEmpty()) {
        *reason = danger;
        return {};
    }
    QDomDocument document;
    QString error;
    int line = 0;
    if (!QtSeries::readXml(&document, text, &error, &line)) {
        *reason = QStringLiteral("is not well-formed XML: %1 in line %2").arg(error).arg(line);
        return {};
    }
    const QString tag = document.documentElement().tagName();
    if (tag != QLatin1String(kind.rootTag)) {
        *reason = QStringLiteral("is not a %1: its root element is \"%2\", not \"%3\"")
                      .arg(QLatin1String(kind.name), tag, QLatin1String(kind.rootTag));
        return {};
    }
    return document;
}

bool skimXmlFile(const QString& text, const XmlKind& kind, const Visit& visit) {
    if (!dangerIn(text).isEmpty()) {
        return false;
    }
    QXmlStreamReader reader;
    int given = giveNext(&reader, text, 0);
    return skim(&reader, kind, visit, [&] {
        const bool isLeft = given < text.size();
        given = isLeft ? giveNext(&reader, text, given) : given;
        return isLeft;
    });
}

bool skimXmlFile(const QByteArray& bytes, const XmlKind& kind, const Visit& visit) {
    const bool isPlain = std::all_of(bytes.begin(), bytes.end(), [](char c) {
        return (c >= 0x20 && c < 0x7F) || c == '\t' || c == '\n' || c == '\r';
    });
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&buffer);
    return isPlain && skim(&reader, kind, visit, [] { return false; });
}

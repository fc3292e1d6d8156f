// The circuit file: elements and nodes only. It is written and read record by record, for a
// document of the whole file takes more than ten times its size.

#include "CCircuitEditorData.h"
#include "CircuitFileText.h"
#include "QtSeries.h"
#include "QtSeriesXml.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>

namespace {

const QString CircuitRoot = QStringLiteral("VortelCircuit");

/// A document that holds one record at a time.
class RecordSheet {
public:
    RecordSheet() : document(CircuitRoot), root(document.createElement(CircuitRoot)) {
        document.appendChild(root);
    }

    /// Writes out what the root holds, as it stands in a whole document, and drops it: a record,
    /// and whatever a service has put beside it.
    void moveTo(QByteArray* bytes) {
        QString text;
        QTextStream out(&text);
        QtSeries::encodeAll(&out);
        while (!root.firstChild().isNull()) {
            root.firstChild().save(out, 2);
            root.removeChild(root.firstChild());
        }
        out.flush();
        bytes->append(text.toLatin1());
    }

    QDomDocument document;
    QDomElement root;
};

/// The text of a file in Latin-1, up to its first NUL, in UTF-8. Empty if it can't be read.
QByteArray readCircuitFile(const QString& fileName) {
    QFile file(fileName);
    QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const int end = bytes.indexOf('\0');
    if (end >= 0) {
        bytes.truncate(end);
    }
    const bool isAscii = std::all_of(bytes.cbegin(), bytes.cend(),
                                     [](char c) { return static_cast<uchar>(c) < 0x80; });
    return isAscii ? bytes : QString::fromLatin1(bytes).toUtf8();
}

}  // namespace

void CCircuitEditor::save(QString fileName) {
    ICircuit* bound = circuit();
    if (!bound) {
        return;
    }
    RecordSheet sheet;
    const QByteArray empty = sheet.document.toString(2).toLatin1();
    QByteArray records;
    for (int i = 0; i < bound->elementCount(); ++i) {
        d->saveElement(sheet.document, sheet.root, bound->element(i));
        sheet.moveTo(&records);
    }
    for (int i = 0; i < bound->nodeCount(); ++i) {
        d->saveNode(sheet.document, sheet.root, bound->node(i));
        sheet.moveTo(&records);
    }
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    if (records.isEmpty()) {
        file.write(empty);
        return;
    }
    file.write("<!DOCTYPE VortelCircuit>\n<VortelCircuit>\n");
    file.write(records);
    file.write("</VortelCircuit>\n");
}

void CCircuitEditor::load(QString fileName) {
    if (!d->xmlUtils || !circuit()) {
        return;
    }
    const CircuitFileText records(readCircuitFile(fileName));
    if (records.isPlain()) {
        clearEditor();
        d->loadRecords(records);
        captionElements();
        return;
    }
    QDomDocument document;
    if (!QtSeries::readXml(&document, QString::fromUtf8(records.text())) ||
        document.documentElement().isNull()) {
        return;
    }
    clearEditor();
    d->loadRecords(document.documentElement());
    captionElements();
}

#include "SpiceModels.h"

#include <QFile>
#include <QRegularExpression>

bool SpiceModels::load(const QString& fileName, QString* reason) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *reason = file.errorString();
        return false;
    }
    addBlocks(QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')));
    return true;
}

void SpiceModels::addBlocks(const QStringList& lines) {
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    QString name;
    bool inSubCircuit = false;
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('*'))) {
            continue;
        }
        const QString first = line.section(blanks, 0, 0).toLower();
        if (!inSubCircuit &&
            (first == QLatin1String(".model") || first == QLatin1String(".subckt"))) {
            name = line.section(blanks, 1, 1).toLower();
            inSubCircuit = first == QLatin1String(".subckt");
            m_blocks.remove(name);
        }
        if (!name.isEmpty()) {
            m_blocks[name].append(line);
        }
        inSubCircuit = inSubCircuit && first != QLatin1String(".ends");
    }
}

QStringList SpiceModels::wholeLines(const QString& text) {
    QStringList lines;
    for (const QString& raw : text.split(QLatin1Char('\n'))) {
        QString line = raw.trimmed();
        line.replace(QChar(0xB5), QLatin1Char('u'));
        if (line.startsWith(QLatin1Char('+')) && !lines.isEmpty()) {
            lines.last() += QLatin1Char(' ') + line.mid(1).trimmed();
        } else if (!line.isEmpty() && !line.startsWith(QLatin1Char('*'))) {
            lines.append(line);
        }
    }
    return lines;
}

bool SpiceModels::isDirective(const QString& line) {
    static const QRegularExpression directive(
        QStringLiteral("\\A(\\.(model|subckt|ends|ic|nodeset|options?|func|global|temp)\\b|"
                       "K\\S*(\\s+L\\S+){2,}\\s+[\\d.{])"),
        QRegularExpression::CaseInsensitiveOption);
    return directive.match(line).hasMatch();
}

void SpiceModels::addDirectives(const QString& text) {
    const QStringList lines = wholeLines(text);
    if (lines.isEmpty() ||
        !(lines.first().startsWith(QLatin1Char('.')) || isDirective(lines.first()))) {
        return;
    }
    QStringList blocks;
    bool inSubCircuit = false;
    for (const QString& line : lines) {
        const QString first = line.section(QLatin1Char(' '), 0, 0).toLower();
        inSubCircuit = inSubCircuit || first == QLatin1String(".subckt");
        if (inSubCircuit || first == QLatin1String(".model")) {
            blocks.append(line);
        } else if (isDirective(line)) {
            m_furtherLines.append(line);
        }
        inSubCircuit = inSubCircuit && first != QLatin1String(".ends");
    }
    addBlocks(blocks);
}

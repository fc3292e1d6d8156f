#include "SpiceModels.h"

#include <QFile>
#include <QRegularExpression>

bool SpiceModels::load(const QString& fileName, QString* reason) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *reason = file.errorString();
        return false;
    }
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    QString name;
    bool inSubCircuit = false;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
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
    return true;
}

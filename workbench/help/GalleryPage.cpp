#include "GalleryPage.h"

#include "ElementDescription.h"
#include "ElementLibrary.h"

#include <QFileInfo>
#include <QMap>
#include <QStringList>

namespace {

/// As text in a cell of a table.
QString cell(QString text) {
    text = text.toHtmlEscaped();
    return text.replace(QLatin1Char('|'), QLatin1String("\\|"))
        .replace(QLatin1Char('*'), QLatin1String("\\*"));
}

QString entry(const QString& name, const QString& meaning) {
    return QStringLiteral("`%1` %2").arg(name, cell(meaning));
}

QString row(const ElementTypeData& data, const QString& pictures) {
    QStringList terminals;
    for (const TerminalData& terminal : data.terminals) {
        terminals.append(terminal.name);
    }
    QStringList parameters;
    for (const ParameterData& parameter : data.parameters) {
        const QString value = parameter.display(parameter.value);
        const QString of = value.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(value);
        parameters.append(entry(parameter.name, parameter.description + of));
    }
    if (!data.models.isEmpty()) {
        parameters.append(
            entry(QStringLiteral("ModelName"), data.models.join(QLatin1String(", "))));
    }
    QStringList outputs;
    for (const QString& key : data.outputVariables.keys()) {
        outputs.append(entry(key, data.outputVariables.value(key).toString()));
    }
    const QString library = data.type.section(QLatin1Char('.'), 1);
    const QString picture = data.picture.isEmpty() ? QString()
                                                   : QStringLiteral("![%1](%2/%3/%4)")
                                                         .arg(cell(data.label), pictures, library,
                                                              QFileInfo(data.picture).fileName());
    const QString lineBreak = QStringLiteral("<br>");
    return QStringLiteral("| %1 | **%2** `%3`<br>%4<br>Terminals: %5 | %6 | %7 |\n")
        .arg(picture, cell(data.label), data.type, cell(data.description),
             cell(terminals.join(QLatin1String(", "))), parameters.join(lineBreak),
             outputs.join(lineBreak));
}

}  // namespace

QByteArray galleryPage(const ElementLibrary& library, const QByteArray& pictures) {
    QMap<QString, QString> sections;
    const QStringList types = library.types();
    for (const QString& type : types) {
        sections[type.section(QLatin1Char('.'), 1)] +=
            row(library.description(type)->data(), QString::fromUtf8(pictures));
    }
    QString page = QStringLiteral(
                       "# Element types\n\nThe %1 types of the library, made of its data by `./dev "
                       "gallery`. Defaults stand in parentheses; F1 on an element shows its own "
                       "page.\n")
                       .arg(types.size());
    for (auto it = sections.constBegin(); it != sections.constEnd(); ++it) {
        page += QStringLiteral(
                    "\n## %1\n\n| | Type | Parameters | Outputs |\n| --- | --- | --- | "
                    "--- |\n")
                    .arg(it.key()) +
                it.value();
    }
    return page.toUtf8();
}

#include "HelpPage.h"

#include "SubCircuitDescription.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>
#include <QTextDocument>
#include <QUrl>

namespace {

constexpr double PictureScale = 1.5;  // points per scene unit
constexpr int PixelsPerPoint = 4;

QString kindOfNode(const QString& letter) {
    static const QHash<QString, QString> kinds{{"e", "electrical"}, {"d", "digital"},
                                               {"t", "thermal"},    {"p", "power"},
                                               {"g", "general"},    {"x", "mixed"}};
    return kinds.value(letter, letter);
}

/// A table with a heading row; nothing for no rows.
QString table(const QString& title, const QStringList& head, const QList<QStringList>& rows) {
    if (rows.isEmpty()) {
        return {};
    }
    const auto row = [](const QStringList& cells, const QString& tag) {
        QString text;
        for (const QString& cell : cells) {
            text += QStringLiteral("<%1 align=\"left\">%2</%1>").arg(tag, cell.toHtmlEscaped());
        }
        return QStringLiteral("<tr>%1</tr>").arg(text);
    };
    QString html = QStringLiteral("<h3>%1</h3><table cellpadding=\"3\">").arg(title) +
                   row(head, QStringLiteral("th"));
    for (const QStringList& cells : rows) {
        html += row(cells, QStringLiteral("td"));
    }
    return html + QStringLiteral("</table>");
}

QList<QStringList> rowsOf(const Plexa::DataStore& store) {
    QList<QStringList> rows;
    for (const QString& key : store.keys()) {
        rows << QStringList{key, store.value(key).toString()};
    }
    return rows;
}

/// What a sub-circuit is made of; nothing for other elements.
QList<QStringList> contentsOf(ElementDescription& description) {
    QMap<QString, int> count;
    if (auto* subCircuit = qobject_cast<SubCircuitDescription*>(&description)) {
        for (ElementDescription* inner : subCircuit->innerDescriptions()) {
            count[inner ? inner->label() : QStringLiteral("(unknown)")] += 1;
        }
    }
    QList<QStringList> rows;
    for (auto it = count.constBegin(); it != count.constEnd(); ++it) {
        rows << QStringList{it.key(), QString::number(it.value())};
    }
    return rows;
}

QString pageText(ElementDescription& description) {
    const ElementTypeData& data = description.data();
    QList<QStringList> terminals;
    for (const TerminalData& terminal : data.terminals) {
        terminals << QStringList{terminal.name, kindOfNode(terminal.type)};
    }
    QList<QStringList> parameters;
    for (const ParameterData& parameter : data.parameters) {
        parameters << QStringList{parameter.name, parameter.display(parameter.value),
                                  parameter.description};
    }
    return QStringLiteral(
               "<h1>%1</h1><p>%2</p><p><img src=\"picture\"></p><p>Type <b>%3</b>, instances "
               "%4<i>n</i></p>")
               .arg(data.label.toHtmlEscaped(), data.description.toHtmlEscaped(),
                    data.type.toHtmlEscaped(), data.namePrefix.toHtmlEscaped()) +
           table(QStringLiteral("Terminals"), {"Name", "Kind"}, terminals) +
           table(QStringLiteral("Parameters"), {"Name", "Default", "Meaning"}, parameters) +
           table(QStringLiteral("Inside"), {"Element", "Number"}, contentsOf(description)) +
           table(QStringLiteral("Output variables"), {"Name", "Meaning"},
                 rowsOf(data.outputVariables)) +
           table(QStringLiteral("AC output variables"), {"Name", "Meaning"},
                 rowsOf(data.outputACVariables));
}

QImage pictureOf(ElementVisual* visual) {
    QSvgRenderer* renderer = visual->renderer();
    const QSizeF size = renderer ? renderer->viewBoxF().size() : QSizeF(visual->pixmap().size());
    QImage image((size * PictureScale * PixelsPerPoint).toSize(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (renderer) {
        renderer->render(&painter);
    } else {
        painter.drawPixmap(image.rect(), visual->pixmap());
    }
    painter.end();
    image.setDevicePixelRatio(PixelsPerPoint);
    return image;
}

}  // namespace

bool writeHelpPage(ElementDescription& description, const QString& folder) {
    const ElementTypeData& data = description.data();
    const QString element = data.type.section(QLatin1Char('.'), 0, 0);
    const QString library = data.type.section(QLatin1Char('.'), 1);
    if (!QDir(folder).mkpath(library)) {
        return false;
    }
    const QString fileName = QStringLiteral("%1/%2/%2_%3.pdf").arg(folder, library, element);
    QPdfWriter writer(fileName);
    writer.setTitle(data.label);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Portrait,
                                     QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter));
    writer.setResolution(72);
    QTextDocument document;
    document.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 7));
    document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("picture")),
                         pictureOf(description.visual()));
    document.setHtml(pageText(description));
    document.setPageSize(QSizeF(writer.width(), writer.height()));
    document.print(&writer);
    return QFileInfo(fileName).size() > 0;
}

#include "KeysPage.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

namespace {

QString plain(QString text) {
    text = text.section(QLatin1Char('\t'), 0, 0);
    text.replace(QLatin1String("&&"), QLatin1String("\1")).remove(QLatin1Char('&'));
    return text.replace(QLatin1Char('\1'), QLatin1Char('&')).remove(QLatin1String("..."));
}

QString row(const QStringList& cells) {
    QString html = QStringLiteral("<tr>");
    for (const QString& cell : cells) {
        html +=
            QStringLiteral("<td style=\"padding-right: 16px\">%1</td>").arg(cell.toHtmlEscaped());
    }
    return html + QStringLiteral("</tr>");
}

QString table(const QString& title, const QString& rows) {
    return rows.isEmpty()
               ? QString()
               : QStringLiteral("<h3>%1</h3><table>%2</table>").arg(title.toHtmlEscaped(), rows);
}

/// The keys that the canvas handles itself stand in the text of their action, behind a tab.
QStringList keysOf(const QAction& action) {
    QStringList keys;
    const QString own = action.text().section(QLatin1Char('\t'), 1);
    if (!own.isEmpty()) {
        keys.append(own);
    }
    for (const QKeySequence& sequence : action.shortcuts()) {
        keys.append(sequence.toString(QKeySequence::NativeText));
    }
    return keys;
}

QString rowsOf(const QList<QAction*>& actions) {
    QString rows;
    for (const QAction* action : actions) {
        const QStringList keys = keysOf(*action);
        if (action->menu()) {
            rows += rowsOf(action->menu()->actions());
        } else if (!keys.isEmpty()) {
            rows += row({keys.join(QStringLiteral(", ")), plain(action->text())});
        }
    }
    return rows;
}

}  // namespace

QString keysPage(const QMenuBar& menus, const QVariantList& gestures) {
    QString html;
    for (const QAction* menu : menus.actions()) {
        if (menu->menu()) {
            html += table(plain(menu->text()), rowsOf(menu->menu()->actions()));
        }
    }
    QString rows;
    for (const QVariant& entry : gestures) {
        const QVariantMap gesture = entry.toMap();
        const auto shown = [&gesture](const char* key) {
            return QCoreApplication::translate("gui",
                                               gesture.value(QLatin1String(key)).toByteArray());
        };
        rows += row({shown("on"), shown("do"), shown("effect")});
    }
    return html + table(QCoreApplication::translate("KeysPage", "On the canvas"), rows);
}

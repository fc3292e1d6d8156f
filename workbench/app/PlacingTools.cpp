#include "PlacingTools.h"

#include "ElementExplorer.h"
#include "ICanvas.h"
#include "NetlistTools.h"
#include "QtSeries.h"
#include "SearchBox.h"
#include "Workbench.h"

#include <QAction>
#include <QCursor>
#include <QDropEvent>
#include <QGraphicsView>
#include <QHash>
#include <QMenu>
#include <QMetaObject>
#include <QMimeData>

namespace {

constexpr char PaletteName[] = "CElementExplorerComponent.elementExplorer";

}  // namespace

PlacingTools::PlacingTools(const Workbench& workbench, NetlistTools* netlists, QWidget* window)
    : QObject(window),
      m_editor(workbench.editorWidget()),
      m_netlists(netlists),
      m_palette(qobject_cast<ElementExplorer*>(workbench.object(QLatin1String(PaletteName)))) {
    if (m_palette) {
        m_entries = m_palette->entries();
        connect(m_palette, &ElementExplorer::placeRequested, this, &PlacingTools::place);
    }
    QWidget* page = workbench.canvas()->graphicsView()->viewport();
    page->setAcceptDrops(true);
    page->installEventFilter(this);
}

void PlacingTools::place(const QString& entry) {
    const QString type = m_netlists->chosenType(entry);
    bool started = false;
    if (type.isEmpty()) {
        return;
    }
    QMetaObject::invokeMethod(m_editor, "startPlacing", Q_RETURN_ARG(bool, started),
                              Q_ARG(QString, type));
    if (started) {
        m_editor->setFocus();
    }
}

void PlacingTools::fillMenu(QMenu* menu, QStringList taken) {
    QAction* rest = menu->actions().value(0);
    QHash<QString, QMenu*> libraries;
    for (const PaletteEntry& entry : qAsConst(m_entries)) {
        QMenu*& library = libraries[entry.library];
        if (!library) {
            library = new QMenu(entry.library, menu);
            menu->insertMenu(rest, library);
        }
        auto* action = new QAction(entry.icon, entry.label, this);
        action->setObjectName(QStringLiteral("place") + entry.type);
        action->setStatusTip(entry.description);
        if (!entry.shortcut.isEmpty() && !taken.contains(entry.shortcut)) {
            taken.append(entry.shortcut);
            // A letter only on the canvas: everywhere else it is text.
            action->setShortcut(QKeySequence(entry.shortcut));
            action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            m_editor->addAction(action);
        }
        connect(action, &QAction::triggered, this, [this, type = entry.type] { place(type); });
        library->addAction(action);
    }
    menu->insertSeparator(rest);
}

void PlacingTools::choose() {
    if (!m_chooser) {
        const auto search = [this](const QString& text) {
            QVector<SearchBox::Hit> hits;
            for (const PaletteEntry& entry : bestEntries(m_entries, text)) {
                const QString key = entry.shortcut.isEmpty()
                                        ? QString()
                                        : QStringLiteral("  (%1)").arg(entry.shortcut);
                hits.append({entry.icon, entry.label + key, entry.type});
            }
            return hits;
        };
        m_chooser = new SearchBox(tr("Place which element?"), search, m_editor->window());
        m_chooser->setObjectName(QStringLiteral("typeChooser"));
        m_chooser->setWindowFlags(Qt::Popup);
        connect(m_chooser, &SearchBox::chosen, this, [this](const QVariant& type) {
            m_chooser->hide();
            place(type.toString());
        });
    }
    const QRect page(m_editor->mapToGlobal(QPoint()), m_editor->size());
    const QPoint pointer = QCursor::pos();
    m_chooser->popUp(page.contains(pointer) ? pointer : page.center());
}

bool PlacingTools::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            break;
        default:
            return QObject::eventFilter(watched, event);
    }
    auto* drop = static_cast<QDropEvent*>(event);
    const QByteArray type = drop->mimeData()->data(QLatin1String(ElementExplorer::TypeMimeType));
    if (type.isEmpty()) {
        return QObject::eventFilter(watched, event);
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        auto* view = static_cast<QGraphicsView*>(static_cast<QWidget*>(watched)->parentWidget());
        const auto put = [this, entry = QString::fromUtf8(type),
                          place = view->mapToScene(QtSeries::position(*drop))] {
            bool placed = false;
            const QString chosen = m_netlists->chosenType(entry);
            if (!chosen.isEmpty()) {
                QMetaObject::invokeMethod(m_editor, "placeElement", Q_RETURN_ARG(bool, placed),
                                          Q_ARG(QString, chosen), Q_ARG(QPointF, place));
                m_editor->setFocus();
            }
        };
        if (NetlistTools::isAskedFor(QString::fromUtf8(type))) {
            // Once the drag has ended, which holds the pointer.
            QMetaObject::invokeMethod(this, put, Qt::QueuedConnection);
        } else {
            put();
        }
    }
    return true;
}

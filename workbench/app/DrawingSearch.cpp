#include "DrawingSearch.h"

#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditor.h"
#include "ICircuitEditorExt.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitNode.h"
#include "Workbench.h"

#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QPointer>
#include <QSet>

#include <algorithm>

namespace {

/// More than anybody reads; the list says that there are more.
constexpr int MostHits = 200;
constexpr int LongestText = 60;

/// What is held of a hit: it may be gone when it is to be shown.
using Target = QPointer<QObject>;

}  // namespace

DrawingSearch::DrawingSearch(const Workbench& workbench, QWidget* window)
    : QObject(window),
      m_workbench(workbench),
      m_box(new SearchBox(
          tr("Name of an element or a net, or a text"),
          [this](const QString& text) { return find(text); }, window)) {
    m_box->setObjectName(QStringLiteral("find"));
    m_box->setWindowTitle(tr("Find"));
    connect(m_box, &SearchBox::currentChanged, this, &DrawingSearch::show);
    connect(m_box, &SearchBox::chosen, m_box, &QDialog::hide);
    connect(m_box, &SearchBox::chosen, this, [this] { m_workbench.editorWidget()->setFocus(); });
}

void DrawingSearch::open() {
    // Beside the drawing's middle, where what is found comes to stand.
    const QWidget* page = m_workbench.editorWidget();
    m_box->popUp(page->mapToGlobal(QPoint(8, 8)));
}

QVector<SearchBox::Hit> DrawingSearch::find(const QString& text) const {
    QVector<SearchBox::Hit> begins;
    QVector<SearchBox::Hit> contains;
    const auto offer = [&](const QString& line, const QStringList& names, QObject* object) {
        const auto any = [&names](const auto& fits) {
            return std::any_of(names.begin(), names.end(), fits);
        };
        if (any([&](const QString& name) { return name.startsWith(text, Qt::CaseInsensitive); })) {
            begins.append({QIcon(), line, QVariant::fromValue(Target(object))});
        } else if (any([&](const QString& name) {
                       return name.contains(text, Qt::CaseInsensitive);
                   })) {
            contains.append({QIcon(), line, QVariant::fromValue(Target(object))});
        }
    };
    ICircuit* circuit = m_workbench.circuit();
    for (int i = 0; i < circuit->elementCount(); ++i) {
        ICircuitElement* element = circuit->element(i);
        offer(tr("%1  %2").arg(element->name(), element->desc()->label()),
              {element->name(), element->caption()}, element->containerObject());
    }
    QSet<QString> nets;
    for (int i = 0; i < circuit->nodeCount(); ++i) {
        ICircuitNode* node = circuit->node(i);
        if (!nets.contains(node->name())) {
            nets.insert(node->name());
            offer(tr("%1  net").arg(node->name()), {node->name()}, node->containerObject());
        }
    }
    for (QGraphicsItem* item : m_workbench.canvas()->graphicsScene()->items()) {
        if (auto* box = dynamic_cast<QGraphicsTextItem*>(item)) {
            const QString line = box->toPlainText().simplified();
            offer(tr("\"%1\"").arg(line.left(LongestText)), {line}, box);
        }
    }
    begins += contains;
    if (begins.size() > MostHits) {
        const int more = begins.size() - MostHits;
        begins.resize(MostHits);
        begins.append({QIcon(), tr("... and %1 more").arg(more), QVariant()});
    }
    return begins;
}

void DrawingSearch::show(const QVariant& hit) {
    QObject* object = hit.value<Target>();
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    auto* editor = qobject_cast<ICircuitEditor*>(m_workbench.editorWidget());
    if (!object || !items || !editor || !m_box->isVisible()) {
        return;
    }
    editor->unhighlight();
    if (auto* element = qobject_cast<ICircuitElement*>(object)) {
        mark(items->itemFor(element));
        editor->highlight(element);
    } else if (auto* node = qobject_cast<ICircuitNode*>(object)) {
        mark(items->itemFor(node));
        editor->highlight(node);
    } else {
        mark(qobject_cast<QGraphicsTextItem*>(object));
    }
}

void DrawingSearch::mark(QGraphicsItem* item) {
    if (item) {
        item->setSelected(true);
        // Nothing moves for what can be seen already.
        QGraphicsView* view = m_workbench.canvas()->graphicsView();
        const QRectF place = item->sceneBoundingRect();
        const QRect shown = view->mapFromScene(place).boundingRect();
        const QRect box(view->viewport()->mapFromGlobal(m_box->pos()), m_box->frameSize());
        if (!view->viewport()->rect().contains(shown) || box.intersects(shown)) {
            view->centerOn(place.center());
        }
    }
}

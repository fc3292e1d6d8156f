#include "KeyboardPointer.h"

#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditorExt.h"
#include "ICircuitElement.h"
#include "ICircuitElementNode.h"
#include "Workbench.h"

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QCursor>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int LargeStep = 10;
constexpr int CrossSide = 21;
// Kept between the cross and the edge of what is seen.
constexpr int Margin = 40;
constexpr int Jitter = 3;  // pixels

/// Where the pointer of the keys is: a cross that takes no clicks.
class Cross : public QWidget {
public:
    explicit Cross(QWidget* viewport) : QWidget(viewport) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(CrossSide, CrossSide);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const int middle = CrossSide / 2;
        // Seen on light and dark ground.
        for (const QPen& pen : {QPen(Qt::white, 5), QPen(QColor(0xB7, 0x1C, 0x1C), 2)}) {
            painter.setPen(pen);
            painter.drawLine(middle, 1, middle, CrossSide - 2);
            painter.drawLine(1, middle, CrossSide - 2, middle);
        }
    }
};

}  // namespace

KeyboardPointer::KeyboardPointer(const Workbench& workbench, QAction* wireTool, QObject* parent)
    : QObject(parent), m_workbench(workbench), m_wireTool(wireTool) {
    workbench.editorWidget()->installEventFilter(this);
    workbench.canvas()->graphicsView()->viewport()->installEventFilter(this);
    connect(wireTool, &QAction::toggled, this, &KeyboardPointer::rest);
    auto* panel = qobject_cast<QWidget*>(
        workbench.object(QStringLiteral("CCircuitEditorComponent.outVarsWidget")));
    m_pickTool =
        panel ? panel->findChild<QAbstractButton*>(QStringLiteral("cmdAddVariable")) : nullptr;
    if (m_pickTool) {
        connect(m_pickTool, &QAbstractButton::toggled, this, [this](bool picking) {
            rest();
            if (picking) {
                m_workbench.editorWidget()->setFocus();
            }
        });
    }
}

KeyboardPointer::~KeyboardPointer() = default;

bool KeyboardPointer::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_workbench.editorWidget()) {
        // The mouse takes over, unless it was moved from here.
        if (event->type() == QEvent::MouseMove && m_isActive) {
            const QPoint place = static_cast<QMouseEvent*>(event)->pos();
            if ((place - onViewport()).manhattanLength() > Jitter) {
                rest();
            }
        }
        return false;
    }
    return event->type() == QEvent::KeyPress && answer(*static_cast<QKeyEvent*>(event));
}

void KeyboardPointer::pickVariable() {
    if (m_pickTool) {
        m_pickTool->click();
    }
}

bool KeyboardPointer::isPicking() const {
    return m_pickTool && m_pickTool->isChecked();
}

bool KeyboardPointer::answer(const QKeyEvent& event) {
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    if (!isPicking() && (!m_wireTool || !m_wireTool->isChecked())) {
        return isTab && selectFirst();
    }
    const int grid = std::max(1, m_workbench.editorWidget()->property("GridSize").toInt());
    const double step = grid * (event.modifiers() & Qt::ShiftModifier ? LargeStep : 1);
    switch (event.key()) {
        case Qt::Key_Left:
            moveBy({-step, 0});
            return true;
        case Qt::Key_Right:
            moveBy({step, 0});
            return true;
        case Qt::Key_Up:
            moveBy({0, -step});
            return true;
        case Qt::Key_Down:
            moveBy({0, step});
            return true;
        case Qt::Key_Tab:
            return moveToStop(true);
        case Qt::Key_Backtab:
            return moveToStop(false);
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            click();
            return true;
        default:
            return false;
    }
}

bool KeyboardPointer::selectFirst() {
    QGraphicsScene* scene = m_workbench.canvas()->graphicsScene();
    ICircuit* circuit = m_workbench.circuit();
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    QGraphicsItem* first =
        items && circuit->elementCount() > 0 ? items->itemFor(circuit->element(0)) : nullptr;
    if (!first || !scene->selectedItems().isEmpty()) {
        return false;
    }
    first->setSelected(true);
    m_workbench.canvas()->graphicsView()->ensureVisible(first);
    return true;
}

QPointF KeyboardPointer::startPlace() const {
    const QGraphicsView* view = m_workbench.canvas()->graphicsView();
    const QPoint pointer = view->viewport()->mapFromGlobal(QCursor::pos());
    const QRect page = view->viewport()->rect();
    const int grid = std::max(1, m_workbench.editorWidget()->property("GridSize").toInt());
    const QPointF place = view->mapToScene(page.contains(pointer) ? pointer : page.center());
    return {std::round(place.x() / grid) * grid, std::round(place.y() / grid) * grid};
}

void KeyboardPointer::moveBy(const QPointF& step) {
    moveTo((m_isActive ? m_place : startPlace()) + step);
}

QVector<KeyboardPointer::Stop> KeyboardPointer::stops() const {
    auto* items = qobject_cast<ICircuitEditorExt*>(m_workbench.editorWidget());
    ICircuit* circuit = m_workbench.circuit();
    QVector<Stop> result;
    for (int i = 0; items && i < circuit->elementCount(); ++i) {
        ICircuitElement* element = circuit->element(i);
        if (isPicking() && items->itemFor(element)) {
            result.append({element->containerObject(), items->itemFor(element)});
        }
        for (const QString& name : element->elementNodeNames()) {
            ICircuitElementNode* terminal = element->elementNode(name);
            if (terminal && items->itemFor(terminal)) {
                result.append({terminal->containerObject(), items->itemFor(terminal)});
            }
        }
    }
    return result;
}

bool KeyboardPointer::moveToStop(bool forward) {
    const QVector<Stop> all = stops();
    if (all.isEmpty()) {
        return false;
    }
    const auto found = std::find_if(all.begin(), all.end(), [this](const Stop& stop) {
        return m_stop && stop.object == m_stop;
    });
    const int last = all.size() - 1;
    const int at = found == all.end() ? -1 : static_cast<int>(found - all.begin());
    int next = forward ? at + 1 : at - 1;
    next = next > last ? 0 : (next < 0 ? last : next);
    QGraphicsItem* item = all.at(next).item;
    const bool isTerminal = qobject_cast<ICircuitElementNode*>(all.at(next).object) != nullptr;
    moveTo(item->mapToScene(isTerminal ? QPointF() : item->boundingRect().center()));
    m_stop = all.at(next).object;
    emit reached(m_stop);
    return true;
}

void KeyboardPointer::moveTo(const QPointF& place) {
    QGraphicsView* view = m_workbench.canvas()->graphicsView();
    m_place = place;
    m_isActive = true;
    view->ensureVisible(QRectF(place, QSizeF()), Margin, Margin);
    if (!m_cross) {
        m_cross = new Cross(view->viewport());
    }
    m_cross->move(onViewport() - m_cross->rect().center());
    m_cross->show();
    // What is drawn up to the pointer follows it, where the system lets a program move it.
    QCursor::setPos(view->viewport()->mapToGlobal(onViewport()));
    send(QEvent::MouseMove, Qt::NoButton);
}

QPoint KeyboardPointer::onViewport() const {
    return m_workbench.canvas()->graphicsView()->mapFromScene(m_place);
}

void KeyboardPointer::send(QEvent::Type type, Qt::MouseButton button) const {
    QWidget* viewport = m_workbench.canvas()->graphicsView()->viewport();
    const bool isPress = type == QEvent::MouseButtonPress;
    QMouseEvent event(type, onViewport(), viewport->mapToGlobal(onViewport()), button,
                      isPress ? button : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &event);
}

void KeyboardPointer::click() {
    if (!m_isActive) {
        moveTo(startPlace());
    }
    const QPointer<KeyboardPointer> self(this);
    send(QEvent::MouseButtonPress, Qt::LeftButton);
    if (self) {
        send(QEvent::MouseButtonRelease, Qt::LeftButton);
    }
}

void KeyboardPointer::rest() {
    m_isActive = false;
    m_stop = nullptr;
    delete m_cross;
}

#include "CPlacementTool.h"

#include "CCircuitEditor.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

#include <utility>

CPlacementTool::CPlacementTool(CCircuitEditor* editor) : m_editor(editor) {}

CPlacementTool::~CPlacementTool() = default;

void CPlacementTool::start(std::unique_ptr<CPlacementLoad> load) {
    m_load = std::move(load);
    m_hangs = false;
    QWidget* page = m_editor->viewport();
    page->setCursor(Qt::CrossCursor);
    m_editor->highlightGridPoint(QPointF(), false);
    const QPoint pointer = page->mapFromGlobal(QCursor::pos());
    if (page->rect().contains(pointer)) {
        hangAt(m_editor->mapToScene(pointer));
    }
    emit m_editor->toolChanged();
}

void CPlacementTool::stop() {
    if (!m_load) {
        return;
    }
    m_load.reset();
    m_editor->viewport()->unsetCursor();
    m_editor->viewport()->update();
    emit m_editor->toolChanged();
}

void CPlacementTool::turn() {
    if (m_load) {
        m_load->turn();
        hangAt(m_point);
    }
}

void CPlacementTool::flip() {
    if (m_load) {
        m_load->flip();
        hangAt(m_point);
    }
}

QString CPlacementTool::hint() const {
    return m_load ? m_load->hint() : QString();
}

void CPlacementTool::hangAt(const QPointF& point) {
    m_point = point;
    m_hangs = true;
    m_load->hangAt(point);
}

void CPlacementTool::putDown() {
    // Taken out while it is put down: what that changes may stop the tool, or ask the user.
    const QPointer<CCircuitEditor> editor(m_editor);
    std::unique_ptr<CPlacementLoad> load = std::move(m_load);
    const bool hangsOn = load->putDown(m_point);
    if (!editor || m_load) {
        return;
    }
    m_load = std::move(load);
    if (hangsOn) {
        m_load->hangAt(m_point);
        emit editor->toolChanged();
    } else {
        stop();
    }
}

bool CPlacementTool::press(const QMouseEvent* event) {
    if (!m_load) {
        return false;
    }
    if (event->button() == Qt::LeftButton) {
        hangAt(m_editor->mapToScene(event->pos()));
        putDown();
    }
    return true;
}

bool CPlacementTool::move(const QMouseEvent* event) {
    if (!m_load) {
        return false;
    }
    hangAt(m_editor->mapToScene(event->pos()));
    return true;
}

bool CPlacementTool::release(const QMouseEvent*) {
    return m_load != nullptr;
}

bool CPlacementTool::isOwnKey(int key) {
    switch (key) {
        case Qt::Key_Escape:
        case Qt::Key_R:
        case Qt::Key_F:
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            return true;
        default:
            return false;
    }
}

bool CPlacementTool::keyPress(const QKeyEvent* event) {
    if (!m_load || !isOwnKey(event->key())) {
        return false;
    }
    if (!m_hangs) {
        // By key alone it begins in the middle of what is seen.
        hangAt(m_editor->mapToScene(m_editor->viewport()->rect().center()));
    }
    const double step = m_editor->gridSize() * (event->modifiers() & Qt::ShiftModifier ? 10 : 1);
    switch (event->key()) {
        case Qt::Key_Escape:
            stop();
            break;
        case Qt::Key_R:
            turn();
            break;
        case Qt::Key_F:
            flip();
            break;
        case Qt::Key_Left:
            hangAt(m_point - QPointF(step, 0));
            break;
        case Qt::Key_Right:
            hangAt(m_point + QPointF(step, 0));
            break;
        case Qt::Key_Up:
            hangAt(m_point - QPointF(0, step));
            break;
        case Qt::Key_Down:
            hangAt(m_point + QPointF(0, step));
            break;
        default:
            putDown();
            break;
    }
    return true;
}

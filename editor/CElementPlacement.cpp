#include "CElementPlacement.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CElementPlacementItem.h"
#include "HistoryStep.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementFactory.h"

#include <QGraphicsScene>

namespace {

constexpr int RotationCount = 4;
constexpr int FlipCount = 3;

}  // namespace

CElementPlacement::CElementPlacement(CCircuitEditor* editor, const QString& type)
    : m_editor(editor), m_type(type) {}

std::unique_ptr<CElementPlacement> CElementPlacement::create(CCircuitEditor* editor,
                                                             const QString& type) {
    std::unique_ptr<CElementPlacement> load(new CElementPlacement(editor, type));
    return load->makeElement() ? std::move(load) : nullptr;
}

CElementPlacement::~CElementPlacement() {
    delete m_item;
    if (m_element) {
        delete m_element->containerObject();
    }
}

bool CElementPlacement::makeElement() {
    ICircuitElementFactory* factory = m_editor ? m_editor->circuitElementFactory() : nullptr;
    m_element = factory ? factory->createElement(m_type) : nullptr;
    if (!m_element || !m_editor->scene()) {
        return false;
    }
    if (m_item) {
        m_item->setElement(m_element);
    } else {
        m_item = new CElementPlacementItem(m_element);
        m_item->setVisible(false);
        m_editor->scene()->addItem(m_item);
    }
    return true;
}

void CElementPlacement::hangAt(const QPointF& point) {
    if (m_item && m_editor) {
        m_item->hangAt(point,
                       [this](const QPointF& anchor) { return m_editor->snapToGrid(anchor); });
        m_item->setVisible(true);
    }
}

void CElementPlacement::change(const char* property, int value) {
    if (m_element) {
        m_element->containerObject()->setProperty(property, value);
        if (m_item) {
            m_item->setElement(m_element);
        }
    }
}

void CElementPlacement::turn() {
    change("Rotation", m_element ? (m_element->rotation() + 1) % RotationCount : 0);
}

void CElementPlacement::flip() {
    change("Flip", m_element ? (m_element->flip() + 1) % FlipCount : 0);
}

bool CElementPlacement::putDown(const QPointF& point) {
    if (!m_editor || !m_element || !m_editor->circuit()) {
        return false;
    }
    const HistoryStep step(m_editor);
    ICircuitElement* element = m_element;
    m_element = nullptr;
    const int rotation = element->rotation();
    const int flip = element->flip();
    m_editor->insertElement(element, point);
    if (CCircuitEditorElementItem* item = m_editor ? m_editor->elementItem(element) : nullptr) {
        // Joining may ask the user.
        if (m_item) {
            m_item->setVisible(false);
        }
        item->joinWhatItLiesOn();
    }
    if (!m_editor || !makeElement()) {
        return false;
    }
    change("Rotation", rotation);
    change("Flip", flip);
    return true;
}

QString CElementPlacement::hint() const {
    const QString name = m_element ? m_element->desc()->label() : m_type;
    return QStringLiteral("%1: click to place, R turns, F flips, Esc ends").arg(name);
}

#pragma once

#include "CPlacementTool.h"

#include <QPointer>

class CElementPlacementItem;
class ICircuitElement;

/// A new element that hangs at the pointer. It is a real one, outside of any circuit, shown by a
/// picture of it; put down, it joins what its terminals come to lie on, and the next one of its
/// type hangs with the same turn and flip.
class CElementPlacement : public CPlacementLoad {
public:
    /// Null if the editor can't make elements of the type now.
    static std::unique_ptr<CElementPlacement> create(CCircuitEditor* editor, const QString& type);
    ~CElementPlacement() override;

    void hangAt(const QPointF& point) override;
    void turn() override;
    void flip() override;
    bool putDown(const QPointF& point) override;
    QString hint() const override;

private:
    explicit CElementPlacement(CCircuitEditor* editor, const QString& type);
    /// Makes the next element that hangs; false if there is none to be had.
    bool makeElement();
    void change(const char* property, int value);

    QPointer<CCircuitEditor> m_editor;
    QString m_type;
    ICircuitElement* m_element = nullptr;
    // Goes with the scene.
    QPointer<CElementPlacementItem> m_item;
};

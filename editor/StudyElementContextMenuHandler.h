#pragma once

#include <QObject>

class CCircuitEditor;

/// Offers to study the sub-circuits in a study window: an event filter for the viewport of the
/// window's editor, whose child it is. The event goes on in any case.
class StudyElementContextMenuHandler : public QObject {
public:
    explicit StudyElementContextMenuHandler(CCircuitEditor* view);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    CCircuitEditor* m_view = nullptr;
};

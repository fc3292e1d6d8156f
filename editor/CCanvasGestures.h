#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

class CCircuitEditor;
class CCircuitEditorData;
class QGraphicsItem;
class QKeyEvent;
class QMouseEvent;
class QPointF;

/// What more pointer and keys do while the editor's property `ExtendedGestures` is
/// on: the middle button pans, a drag from a terminal lays a wire, wires by hand go on until
/// Escape, Backspace deletes, and Escape leads back step by step: from the corner of a wire to its
/// tool, and on to an empty selection. Asked before the editor handles an event itself; each answer
/// is true if that was all. Also tells what the present tool expects next.
class CCanvasGestures : public QObject {
    Q_OBJECT

public:
    CCanvasGestures(CCircuitEditor* editor, CCircuitEditorData* data);

    bool isOn() const { return m_on; }
    void setOn(bool on) { m_on = on; }

    bool press(QMouseEvent* event);
    bool move(QMouseEvent* event);
    bool release(QMouseEvent* event);
    bool doubleClick(QMouseEvent* event);
    bool keyPress(QKeyEvent* event);
    /// Whether the canvas wants the key for itself now, though it may be the shortcut of an action.
    bool claimsKey(const QKeyEvent* event) const;
    /// The mode has changed.
    void showModeCursor();
    /// Whether a wire by hand that is finished leaves the tool as it is.
    bool goesOnLaying() const { return m_on && !m_singleWire; }
    /// While on, the wire of a terminal that has one, so that a new wire adds to what is drawn;
    /// else the item itself.
    QGraphicsItem* jointOf(QGraphicsItem* item) const;
    /// The item is dying.
    void forgetItem(QGraphicsItem* item);

    /// For the status bar: what a click or a key does now.
    QString hint() const;

public slots:
    /// Tells of another hint once the event under way is over.
    void scheduleHint();

private:
    bool startPan(QMouseEvent* event);
    void tellHint();
    void startWire(QMouseEvent* event);
    void endDraggedWire(QMouseEvent* event);
    /// Joins by a wire that the drag drew; a right angle where it isn't routed by itself.
    void joinByDrag(QGraphicsItem* end, const QPointF& place);
    bool escape();
    bool eraseBackward(QKeyEvent* event);
    bool hasGroup() const;

    CCircuitEditor* m_editor;
    CCircuitEditorData* d;
    bool m_on = false;
    bool m_middlePan = false;
    // A terminal that is pressed, until it is let go or dragged.
    QGraphicsItem* m_pressedTerminal = nullptr;
    QPoint m_pressPlace;
    bool m_draggingWire = false;
    // The wire tool was entered for this wire only.
    bool m_singleWire = false;
    bool m_hintScheduled = false;
    QString m_hint;
};

#pragma once

#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>

class QAction;
class QKeyEvent;
class QWidget;
class Workbench;

/// Lets wires be laid without a mouse: while that tool is on, arrow keys move a cross by the grid,
/// with Shift by ten steps, Tab and Shift+Tab bring it to the next and the previous terminal,
/// Return and Space click there. With no tool and nothing selected, Tab selects the first element.
class KeyboardPointer : public QObject {
    Q_OBJECT

public:
    /// `parent` owns it; `wireTool` is checked while wires are laid.
    KeyboardPointer(const Workbench& workbench, QAction* wireTool, QObject* parent);
    ~KeyboardPointer() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// The cross has come to the terminal.
    void reached(QObject* terminal);

private:
    /// False if the key is nothing to the tool.
    bool answer(const QKeyEvent& event);
    bool selectFirst();
    void moveBy(const QPointF& step);
    /// False if there is no terminal.
    bool moveToTerminal(bool forward);
    void moveTo(const QPointF& place);
    void click();
    void send(QEvent::Type type, Qt::MouseButton button) const;
    /// Until the keys are used again.
    void rest();
    QPointF startPlace() const;
    QPoint onViewport() const;

    const Workbench& m_workbench;
    QPointer<QAction> m_wireTool;
    QPointer<QWidget> m_cross;
    QPointF m_place;  ///< in the scene
    bool m_isActive = false;
    QPointer<QObject> m_terminal;
};

#pragma once

#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QVector>

class QAbstractButton;
class QAction;
class QGraphicsItem;
class QKeyEvent;
class QWidget;
class Workbench;

/// Lets wires be laid and output variables be picked without a mouse: meanwhile arrow keys move a
/// cross by the grid, with Shift by ten steps, Tab and Shift+Tab bring it to the next and the
/// previous terminal, while picking to elements, too, and Return and Space click there. With no
/// tool and nothing selected, Tab selects the first element.
class KeyboardPointer : public QObject {
    Q_OBJECT

public:
    /// `parent` owns it; `wireTool` is checked while wires are laid.
    KeyboardPointer(const Workbench& workbench, QAction* wireTool, QObject* parent);
    ~KeyboardPointer() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// As the panel's button does; once more, and it ends.
    void pickVariable();

signals:
    /// The cross has come to the terminal or element.
    void reached(QObject* object);

private:
    /// False if the key is nothing to the tool.
    bool answer(const QKeyEvent& event);
    bool isPicking() const;
    bool selectFirst();
    void moveBy(const QPointF& step);
    struct Stop {
        QObject* object;
        QGraphicsItem* item;
    };
    QVector<Stop> stops() const;
    /// False if there is none.
    bool moveToStop(bool forward);
    void moveTo(const QPointF& place);
    void click();
    void send(QEvent::Type type, Qt::MouseButton button) const;
    /// Until the keys are used again.
    void rest();
    QPointF startPlace() const;
    QPoint onViewport() const;

    const Workbench& m_workbench;
    QPointer<QAction> m_wireTool;
    QPointer<QAbstractButton> m_pickTool;
    QPointer<QWidget> m_cross;
    QPointF m_place;  ///< in the scene
    bool m_isActive = false;
    QPointer<QObject> m_stop;
};

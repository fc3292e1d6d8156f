#pragma once

#include <QObject>
#include <QPointer>

class KeyboardPointer;
class Workbench;

/// Tells screen readers what is on the canvas: its elements, nets and texts as children, each with
/// name, type, values and connections, and which one is selected. Reads what the canvas offers to
/// its host, and looks nothing up before a reader asks.
class CanvasAccessible : public QObject {
    Q_OBJECT

public:
    /// `parent` owns it.
    CanvasAccessible(const Workbench& workbench, QObject* parent);
    ~CanvasAccessible() override;

    /// Announces the object as the one that has the focus.
    void announce(QObject* object);

private slots:
    void announceSelection();

private:
    const Workbench& m_workbench;
    QPointer<QObject> m_announced;
};

#pragma once

#include <QPointF>
#include <QString>

#include <memory>

class CCircuitEditor;
class QKeyEvent;
class QMouseEvent;

/// What hangs at the pointer until it is put down. Until then the circuit knows nothing of it:
/// going without having been put down, it leaves no trace. Positions are scene units.
class CPlacementLoad {
public:
    CPlacementLoad() = default;
    virtual ~CPlacementLoad() = default;
    CPlacementLoad(const CPlacementLoad&) = delete;
    CPlacementLoad& operator=(const CPlacementLoad&) = delete;

    /// Shows the load where it would come to lie; it isn't seen before the first call.
    virtual void hangAt(const QPointF& point) = 0;
    virtual void turn() {}
    virtual void flip() {}
    /// Makes what the load stands for. True if another one of the kind hangs on.
    virtual bool putDown(const QPointF& point) = 0;
    /// What the pointer and the keys do with it, for the status bar.
    virtual QString hint() const = 0;
};

/// Lets one load hang at the pointer of an editor: a click puts it down, R and F turn and flip it,
/// the arrow keys move it by the grid, Return puts it down, too, and Escape gives it up. Takes all
/// pointer and key events that concern it before anything else on the canvas sees them.
class CPlacementTool {
public:
    explicit CPlacementTool(CCircuitEditor* editor);
    ~CPlacementTool();

    /// Hangs the load at the pointer in place of what hangs there; out of sight until the pointer
    /// comes to the canvas.
    void start(std::unique_ptr<CPlacementLoad> load);
    /// Gives up what hangs.
    void stop();
    bool isActive() const { return m_load != nullptr; }
    void turn();
    void flip();
    QString hint() const;

    // Each true if the event was for the tool.
    bool press(const QMouseEvent* event);
    bool move(const QMouseEvent* event);
    bool release(const QMouseEvent* event);
    bool keyPress(const QKeyEvent* event);
    /// Whether the key is one of the tool's while something hangs.
    static bool isOwnKey(int key);

private:
    void hangAt(const QPointF& point);
    void putDown();

    CCircuitEditor* m_editor;
    std::unique_ptr<CPlacementLoad> m_load;
    QPointF m_point;
    /// Whether it is seen, and so can be put down by key.
    bool m_hangs = false;
};

#pragma once

#include "LongWork.h"

#include <QObject>
#include <QPointer>

class QAbstractButton;
class QProgressBar;
class QStatusBar;
class QWidget;

/// Shows long work in the window: the wait cursor, and in the status bar how far it has come and a
/// button to cancel it, where that is possible. Until the work is over the window takes no other
/// input, and the canvas isn't painted.
class WorkSign : public QObject, public LongWork::Watcher {
    Q_OBJECT

public:
    /// The status bar becomes the parent.
    WorkSign(QStatusBar* statusBar, QWidget* canvas);
    ~WorkSign() override;

    bool goesOn(int done, int steps, bool mayStop) override;
    void ended() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void begin();

    QProgressBar* m_bar;
    QAbstractButton* m_cancel;
    QPointer<QWidget> m_canvas;
    bool m_isShown = false;
    bool m_isCancelled = false;
};

#include "WorkSign.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolButton>
#include <QWidget>

WorkSign::WorkSign(QStatusBar* statusBar, QWidget* canvas)
    : QObject(statusBar), m_bar(new QProgressBar), m_cancel(new QToolButton), m_canvas(canvas) {
    m_bar->setObjectName(QStringLiteral("workProgress"));
    m_bar->setMaximumWidth(200);
    m_cancel->setObjectName(QStringLiteral("cancelWork"));
    m_cancel->setText(tr("Cancel"));
    for (QWidget* widget : {static_cast<QWidget*>(m_bar), static_cast<QWidget*>(m_cancel)}) {
        statusBar->addPermanentWidget(widget);
        widget->hide();
    }
    connect(m_cancel, &QAbstractButton::clicked, this, [this] { m_isCancelled = true; });
    LongWork::setWatcher(this);
}

WorkSign::~WorkSign() {
    LongWork::setWatcher(nullptr);
}

bool WorkSign::goesOn(int done, int steps, bool mayStop) {
    if (!m_isShown) {
        begin();
    }
    m_cancel->setVisible(mayStop);
    // Without a number of steps the bar only tells that something goes on.
    m_bar->setRange(0, steps);
    m_bar->setValue(qMin(done, steps));
    if (mayStop) {
        QApplication::processEvents();
    } else {
        m_bar->repaint();
    }
    return !m_isCancelled;
}

void WorkSign::begin() {
    m_isShown = true;
    m_isCancelled = false;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    if (m_canvas) {
        m_canvas->setUpdatesEnabled(false);
    }
    m_bar->show();
    qApp->installEventFilter(this);
}

void WorkSign::ended() {
    if (!m_isShown) {
        return;
    }
    m_isShown = false;
    qApp->removeEventFilter(this);
    m_bar->hide();
    m_cancel->hide();
    if (m_canvas) {
        m_canvas->setUpdatesEnabled(true);
    }
    QApplication::restoreOverrideCursor();
}

bool WorkSign::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Paint:
            // What was to be painted before updates were switched off would be painted all the
            // same, amid a picture of the same scene.
            return m_canvas && (watched == m_canvas || watched->parent() == m_canvas);
        case QEvent::KeyPress:
            if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && !m_cancel->isHidden()) {
                m_isCancelled = true;
            }
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyRelease:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
        case QEvent::Close:
            break;
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
            return true;
        default:
            return false;
    }
    // Windows hand on what they get to the widget that it is for.
    if (!watched->isWidgetType() || watched == m_cancel) {
        return false;
    }
    event->ignore();
    return true;
}

#pragma once

#include <QLabel>

class Workbench;

/// Says on an empty canvas how to begin, in grey. Gone as soon as there is anything else to see.
class EmptyHint : public QLabel {
    Q_OBJECT

public:
    /// The canvas owns it. Its circuit and its tool tell when to look.
    explicit EmptyHint(const Workbench& workbench);

    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    void schedule();

private:
    void refresh();

    const Workbench& m_workbench;
    bool m_scheduled = false;
};

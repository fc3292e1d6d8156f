#pragma once

#include <QLabel>

/// A line of text that gives way: what the window has no room for is cut off.
class HintLabel : public QLabel {
    Q_OBJECT

public:
    explicit HintLabel(QWidget* parent);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

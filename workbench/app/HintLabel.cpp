#include "HintLabel.h"

#include <QPainter>

HintLabel::HintLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setContentsMargins(6, 0, 6, 0);
}

QSize HintLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void HintLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect room = contentsRect();
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignRight,
                     fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
}

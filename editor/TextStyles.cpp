#include "TextStyles.h"

#include "CCircuitElementPropertyTextBox.h"
#include "QtSeriesText.h"

#include <QFontInfo>

namespace TextStyles {

namespace {

const QString SizeAttribute = QStringLiteral("PixelSize");
const QString FillAttribute = QStringLiteral("FillColor");
const QString SizedAttribute = QStringLiteral("SizedByHand");
constexpr int LargestSize = 1000;
constexpr int UsualSize = 8;

int storedSize(const QDomElement& record) {
    return qBound(0, record.attribute(SizeAttribute).toInt(), LargestSize);
}

/// Only what differs from the size that a record without one gives.
void storeSize(QDomElement& record, const QFont& font, int usual) {
    const int size = font.pixelSize() > 0 ? font.pixelSize() : QFontInfo(font).pixelSize();
    if (size != usual) {
        record.setAttribute(SizeAttribute, size);
    }
}

}  // namespace

void store(QDomElement& record, const QFont& font) {
    storeSize(record, font, UsualSize);
}

void store(QDomElement& record, const CCircuitElementPropertyTextBox& box) {
    // The height that the font has at its usual size.
    QFont usual = box.font();
    usual.setPixelSize(UsualSize);
    storeSize(record, box.font(), QtSeries::fontHeight(usual));
    const QColor ground = box.backgroundColor();
    if (ground.isValid() && ground.alpha() > 0) {
        record.setAttribute(FillAttribute, ground.name(QColor::HexArgb));
    }
    if (box.isSizedByHand()) {
        record.setAttribute(SizedAttribute, 1);
    }
}

QFont stored(const QDomElement& record, QFont font) {
    if (const int size = storedSize(record)) {
        font.setPixelSize(size);
    }
    return font;
}

void apply(const QDomElement& record, CCircuitElementPropertyTextBox* box) {
    const QString ground = record.attribute(FillAttribute);
    box->setBackgroundColor(QColor::isValidColor(ground) ? QColor(ground)
                                                         : QColor(Qt::transparent));
    box->setSizedByHand(record.attribute(SizedAttribute).toInt() != 0);
    if (storedSize(record)) {
        box->setDrawnFont(stored(record, box->font()));
    } else {
        QFont font = box->font();
        font.setPointSize(UsualSize);
        box->setFont(font);
    }
}

}  // namespace TextStyles

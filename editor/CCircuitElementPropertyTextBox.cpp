// The property text box as a holder of data and a painter.

#include "CCircuitElementPropertyTextBox.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorElementItem.h"
#include "CCircuitElementPropertyTextBoxData.h"
#include "CompleteHistory.h"
#include "ICircuitElement.h"
#include "PropertyLookup.h"
#include "QtSeries.h"
#include "QtSeriesText.h"
#include "TextBoxColors.h"

#include <QMetaProperty>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

QString CCircuitElementPropertyTextBoxData::formatted(const QString& value) const {
    return textFormat == CCircuitElementPropertyTextBox::ValueOnly
               ? value
               : QStringLiteral("%1=%2").arg(propertyName, value);
}

QString CCircuitElementPropertyTextBoxData::circuitElementPropertyText() const {
    if (!element || propertyName.isEmpty()) {
        return {};
    }
    QObject* object = element->containerObject();
    const QMetaObject* meta = object->metaObject();
    const int real = meta->indexOfProperty(propertyName.toLatin1().constData());
    if (real >= 0) {
        const QString value = meta->property(real).read(object).toString();
        return propertyName == QLatin1String("Caption") ? value : formatted(value);
    }
    auto* properties = qobject_cast<IEditableProperties*>(object);
    const int index = indexOfProperty(properties, propertyName);
    if (index < 0) {
        return {};
    }
    const QString value = properties->propertyValueString(index);
    return properties->propertyGroup(index) == QLatin1String("Nodes") ? value : formatted(value);
}

CCircuitElementPropertyTextBox::Look CCircuitElementPropertyTextBox::look() const {
    // The element's item lends the box a colour while the pointer is on it.
    const bool isLent = d->backgroundColor == CCircuitEditorElementItem::hoveredBoxColor();
    return {rect(), d->font, d->fontPointSize,
            isLent ? QColor(Qt::transparent) : d->backgroundColor, d->isSizedByHand};
}

void CCircuitElementPropertyTextBox::setLook(const Look& look) {
    setPos(look.rect.topLeft());
    setLocalSize(look.rect.size());
    d->isSizedByHand = look.isSizedByHand;
    d->font = look.font;
    d->fontPointSize = look.fontPointSize;
    setBackgroundColor(look.background);
}

void CCircuitElementPropertyTextBox::fitToText() {
    if (!d->isSizedByHand) {
        setLocalSize(textSize());
    }
}

bool CCircuitElementPropertyTextBox::isSizedByHand() const {
    return d->isSizedByHand;
}

void CCircuitElementPropertyTextBox::setSizedByHand(bool on) {
    d->isSizedByHand = on;
}

void CCircuitElementPropertyTextBox::resizedByHand() {
    d->isSizedByHand = editor() && editor()->keepsTextStyles();
}

QSizeF CCircuitElementPropertyTextBox::textSize() const {
    return QtSeries::textSize(d->font, d->propertyText);
}

CCircuitElementPropertyTextBox::CCircuitElementPropertyTextBox(CCircuitEditor* editor)
    : CanvasBox(editor), d(std::make_unique<CCircuitElementPropertyTextBoxData>()) {
    setLocalSize(QSizeF(40, 21));
    d->backgroundColor = TextBoxColors::standard("Fill");
    editor->addElementPropertyTextBox(this);
    d->font = editor->font();
    if (d->font.pointSize() != 0) {
        d->fontPointSize = d->font.pointSize();
    }
    d->font.setPixelSize(QtSeries::fontHeight(d->font));
    setToolTip(QStringLiteral("Double click here to set the circuit-element/property"));
}

CCircuitElementPropertyTextBox::~CCircuitElementPropertyTextBox() {
    if (auto* editor = qobject_cast<CCircuitEditor*>(parent())) {
        editor->forgetItem(this);
        editor->removeElementPropertyTextBox(this);
    }
    if (d->elementItem) {
        d->elementItem->propertyTextBoxList().removeAll(this);
    }
}

void CCircuitElementPropertyTextBox::setFont(const QFont& font) {
    // The number that came as a point size counts as a pixel size first, and then gives way to the
    // height that the font has at that size: all drawings are made with these sizes.
    d->font = font;
    if (font.pointSize() > 0) {
        d->font.setPixelSize(font.pointSize());
    }
    if (d->font.pointSize() != 0) {
        d->fontPointSize = d->font.pointSize();
    }
    d->font.setPixelSize(QtSeries::fontHeight(d->font));
    touchHistory();
    update();
}

void CCircuitElementPropertyTextBox::setDrawnFont(const QFont& font) {
    d->font = font;
    fitToText();
    update();
}

QFont CCircuitElementPropertyTextBox::font() const {
    return d->font;
}

int CCircuitElementPropertyTextBox::fontPointSize() const {
    return d->fontPointSize;
}

void CCircuitElementPropertyTextBox::setBackgroundColor(const QColor& color) {
    d->backgroundColor = color;
    update();
}

void CCircuitElementPropertyTextBox::setHighlight(const QColor& color) {
    d->highlight = color;
    update();
}

QColor CCircuitElementPropertyTextBox::backgroundColor() const {
    return d->backgroundColor;
}

void CCircuitElementPropertyTextBox::setTextFormat(TextFormat format) {
    d->textFormat = format;
    d->propertyText = d->circuitElementPropertyText();
    fitToText();
    update();
}

CCircuitElementPropertyTextBox::TextFormat CCircuitElementPropertyTextBox::textFormat() const {
    return d->textFormat;
}

void CCircuitElementPropertyTextBox::setElementProperty(ICircuitElement* element,
                                                        const QString& propertyName) {
    if (element == d->element && propertyName == d->propertyName) {
        return;
    }
    reportModifiedLater();
    const bool isOtherElement = element != d->element;
    if (isOtherElement) {
        if (d->element) {
            QObject::disconnect(d->element->containerObject(), nullptr, this, nullptr);
        }
        if (d->elementItem) {
            d->elementItem->propertyTextBoxList().removeAll(this);
            forgetElementItem();
        }
    }
    d->element = element;
    d->propertyName = propertyName;
    d->propertyText = d->circuitElementPropertyText();
    fitToText();
    if (isOtherElement && element) {
        bindToElement();
    }
    update();
}

void CCircuitElementPropertyTextBox::bindToElement() {
    d->elementItem = editor()->elementItem(d->element);
    if (d->elementItem) {
        connect(d->elementItem, SIGNAL(moved(QPointF)), this, SLOT(slotElementMoved(QPointF)));
        d->elementItem->propertyTextBoxList().append(this);
    }
    const QObject* object = d->element->containerObject();
    connect(object, SIGNAL(propertyChanged(QString)), this, SLOT(slotPropertyChanged(QString)));
    connect(object, SIGNAL(destroyed(QObject*)), this, SLOT(slotElementDestroyed()));
}

ICircuitElement* CCircuitElementPropertyTextBox::element() const {
    return d->element;
}

QString CCircuitElementPropertyTextBox::propertyName() const {
    return d->propertyName;
}

QString CCircuitElementPropertyTextBox::propertyText() const {
    return d->propertyText;
}

QString CCircuitElementPropertyTextBox::propertyGroup() const {
    auto* properties =
        d->element ? qobject_cast<IEditableProperties*>(d->element->containerObject()) : nullptr;
    const int index = indexOfProperty(properties, d->propertyName);
    return index >= 0 ? properties->propertyGroup(index) : QString();
}

void CCircuitElementPropertyTextBox::forgetElementItem() {
    if (d->elementItem) {
        QObject::disconnect(d->elementItem, nullptr, this, nullptr);
        d->elementItem = nullptr;
    }
}

void CCircuitElementPropertyTextBox::paint(QPainter* painter,
                                           const QStyleOptionGraphicsItem* option,
                                           QWidget* widget) {
    const QRect frame = option->rect;
    const bool isPointedAt = showsHover(widget);
    if (isPointedAt) {
        painter->fillRect(frame, veil());
    } else {
        // An invalid colour fills, too, as it does in text boxes.
        const bool isOwnColor = !widget && editor() && editor()->keepsTextStyles();
        painter->fillRect(
            frame, isOwnColor || !d->highlight.isValid() ? d->backgroundColor : d->highlight);
    }
    painter->setPen(QtSeries::hairline(TextBoxColors::propertyText()));
    painter->setFont(d->font);
    painter->drawText(localRect(), Qt::AlignCenter, d->propertyText);
    if (isPointedAt) {
        paintFrame(painter, frame, true);
    }
}

void CCircuitElementPropertyTextBox::slotPropertyChanged(QString name) {
    if (name == d->propertyName) {
        d->propertyText = d->circuitElementPropertyText();
        // The history brings sizes back by itself, and some are from when the text did not lead.
        const CompleteHistory* history = CompleteHistory::of(editor());
        if (editor() && editor()->keepsTextStyles() && !(history && history->isApplying())) {
            fitToText();
        }
        update();
    }
}

void CCircuitElementPropertyTextBox::slotElementDestroyed() {
    d->element = nullptr;
    d->propertyName.clear();
    d->propertyText.clear();
    update();
    dismiss();
}

void CCircuitElementPropertyTextBox::slotElementMoved(QPointF delta) {
    setPos(pos() + delta);
}

#include "CCircuitEditorTextBox.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "CTextEditorDialog.h"
#include "ColorAction.h"
#include "IPropertyEditor.h"
#include "ResizeGrip.h"
#include "TextBoxText.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionGraphicsItem>
#include <QTextDocument>

namespace {

constexpr double Layer = 2000;

QVariantMap palette(const char* key) {
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    return component ? component->textBoxColors().value(QString::fromLatin1(key)).toMap()
                     : QVariantMap();
}

QColor defaultOf(const QVariantMap& colors) {
    QColor color;
    color.setNamedColor(colors.value(QStringLiteral("Default")).toString());
    return color;
}

}  // namespace

class CCircuitEditorTextBoxData {
public:
    explicit CCircuitEditorTextBoxData(CCircuitEditor* editor)
        : circuitEditor(editor),
          borderColors(palette("Border")),
          textColors(palette("Text")),
          fillColors(palette("Fill")) {}

    bool isInResizeZone(const QPointF& position) const {
        return ResizeGrip::path(rect).contains(position);
    }
    void reportModified() const {
        if (circuitEditor) {
            emit circuitEditor->projectPartModified();
        }
    }
    /// Once the event loop runs again.
    void reportModifiedLater() const {
        if (circuitEditor) {
            QMetaObject::invokeMethod(circuitEditor, "projectPartModified", Qt::QueuedConnection);
        }
    }

    QPointer<CCircuitEditor> circuitEditor;
    // In item coordinates, with its top left at the origin.
    QRectF rect;
    bool hovering = false;
    bool resizing = false;
    QPointF lastScenePos;
    QFont font;
    QColor borderColor;
    QColor textColor;
    QColor fillColor;
    QVariantMap borderColors;
    QVariantMap textColors;
    QVariantMap fillColors;
    // The one that is open; it looks at the box's document.
    QPointer<CTextEditorDialog> dialog;
};

CCircuitEditorTextBox::CCircuitEditorTextBox(CCircuitEditor* editor)
    : d(std::make_unique<CCircuitEditorTextBoxData>(editor)) {
    d->borderColor = defaultOf(d->borderColors);
    // Kept, but not set: text is drawn in the item's own colour until it is given one.
    d->textColor = defaultOf(d->textColors);
    d->fillColor = defaultOf(d->fillColors);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemSendsGeometryChanges);
    setZValue(Layer);
    setAcceptHoverEvents(true);
    setToolTip(QStringLiteral("Double click here to edit the text"));
    setCursor2(Qt::OpenHandCursor);
    setDocument(new QTextDocument(this));
}

CCircuitEditorTextBox::~CCircuitEditorTextBox() {
    if (d->dialog) {
        // It would go on showing a document that dies with the box.
        d->dialog->setTextDocument(nullptr);
        d->dialog->reject();
    }
    if (auto* editor = qobject_cast<CCircuitEditor*>(parent())) {
        editor->removeTextBox(this);
        editor->forgetItem(this);
    }
}

CCircuitEditor* CCircuitEditorTextBox::circuitEditor() const {
    return d->circuitEditor;
}

void CCircuitEditorTextBox::setRect(const QRectF& rect) {
    setPos(rect.topLeft());
    prepareGeometryChange();
    d->rect = QRectF(0, 0, qMax(ResizeGrip::SmallestSide, rect.width()),
                     qMax(ResizeGrip::SmallestSide, rect.height()));
    setTextWidth(d->rect.width());
}

QRectF CCircuitEditorTextBox::rect() const {
    return QRectF(pos(), d->rect.size());
}

void CCircuitEditorTextBox::setDefaultFont(const QFont& font) {
    d->font = font;
    // The number of points counts as pixels. A font without one keeps its pixels: Qt would refuse
    // the -1 with a warning.
    if (font.pointSize() > 0) {
        d->font.setPixelSize(font.pointSize());
    }
}

QFont CCircuitEditorTextBox::defaultFont() const {
    return d->font;
}

void CCircuitEditorTextBox::setText(const QString& text) {
    TextBoxText::fill(document(), text, d->font);
    deleteIfEmpty();
}

QString CCircuitEditorTextBox::text() const {
    return TextBoxText::encodedText(*document());
}

void CCircuitEditorTextBox::deleteIfEmpty() {
    if (document()->isEmpty()) {
        deleteLater();
        d->reportModified();
    }
}

void CCircuitEditorTextBox::setBorderColor(const QColor& color) {
    if (color != d->borderColor) {
        d->borderColor = color;
        update();
    }
}

QColor CCircuitEditorTextBox::borderColor() const {
    return d->borderColor;
}

void CCircuitEditorTextBox::setFillColor(const QColor& color) {
    if (color != d->fillColor) {
        d->fillColor = color;
        update();
    }
}

QColor CCircuitEditorTextBox::fillColor() const {
    return d->fillColor;
}

void CCircuitEditorTextBox::setTextColor(const QColor& color) {
    setDefaultTextColor(color);
}

QColor CCircuitEditorTextBox::textColor() const {
    return defaultTextColor();
}

void CCircuitEditorTextBox::setCursor2(const QCursor& cursor) {
    if (hasCursor()) {
        unsetCursor();
    }
    setCursor(cursor);
}

void CCircuitEditorTextBox::editText() {
    if (d->dialog) {
        return;
    }
    // On the heap: the window may go while the dialog is open, and takes it along.
    const QPointer<CCircuitEditorTextBox> self(this);
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    const QPointer<CTextEditorDialog> dialog(
        new CTextEditorDialog(component ? component->mainWindow() : nullptr));
    d->dialog = dialog;
    const QString plain = document()->toPlainText();
    document()->clear();
    dialog->setTextDocument(document());
    dialog->setDefaultFont(d->font);
    // Last, for the two above format what they find.
    TextBoxText::fillFromPlainText(document(), plain, d->font);
    dialog->exec();
    if (self) {
        if (dialog) {
            setDefaultFont(dialog->defaultFont());
        }
        TextBoxText::repair(document());
        TextBoxText::adaptWrapping(document(), document()->toPlainText());
        QGraphicsTextItem::setFont(d->font);
        setTextWidth(d->rect.width());
        update();
    }
    delete dialog;
    if (self) {
        deleteIfEmpty();
    }
}

QRectF CCircuitEditorTextBox::boundingRect() const {
    return d->rect;
}

QPainterPath CCircuitEditorTextBox::shape() const {
    QPainterPath path;
    path.addRect(d->rect);
    return path;
}

bool CCircuitEditorTextBox::contains(const QPointF& point) const {
    return d->rect.contains(point);
}

void CCircuitEditorTextBox::paint(QPainter* painter, const QStyleOptionGraphicsItem* option,
                                  QWidget* widget) {
    const QRect frame = option->rect;
    painter->fillRect(frame, d->fillColor);
    if (d->hovering) {
        painter->fillRect(frame, ResizeGrip::veil());
    }
    QGraphicsTextItem::paint(painter, option, widget);
    if (!d->hovering) {
        painter->setPen(QPen(QBrush(d->borderColor, Qt::SolidPattern), 1.0, Qt::SolidLine,
                             Qt::SquareCap, Qt::BevelJoin));
    }
    painter->drawRects(&frame, 1);
    if (d->hovering) {
        painter->fillPath(ResizeGrip::path(frame), QBrush(ResizeGrip::color(), Qt::SolidPattern));
    }
}

void CCircuitEditorTextBox::setHovered(const QPointF& position) {
    d->hovering = true;
    setCursor2(d->isInResizeZone(position) ? Qt::SizeFDiagCursor : Qt::OpenHandCursor);
    update();
}

void CCircuitEditorTextBox::hoverEnterEvent(QGraphicsSceneHoverEvent* event) {
    setHovered(event->pos());
}

void CCircuitEditorTextBox::hoverMoveEvent(QGraphicsSceneHoverEvent* event) {
    if (d->hovering) {
        setHovered(event->pos());
    }
}

void CCircuitEditorTextBox::hoverLeaveEvent(QGraphicsSceneHoverEvent*) {
    d->hovering = false;
    update();
}

void CCircuitEditorTextBox::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    if (d->isInResizeZone(event->pos())) {
        d->resizing = true;
        d->lastScenePos = event->scenePos();
        setCursor2(Qt::SizeFDiagCursor);
    } else {
        QGraphicsTextItem::mousePressEvent(event);
    }
}

void CCircuitEditorTextBox::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
    if (!d->resizing) {
        setCursor2(Qt::ClosedHandCursor);
        QGraphicsTextItem::mouseMoveEvent(event);
        return;
    }
    // Steps from the true position even at the minimum size: on the way back the corner runs ahead
    // of the pointer.
    const QPointF step = event->scenePos() - d->lastScenePos;
    d->lastScenePos = event->scenePos();
    prepareGeometryChange();
    d->rect.setWidth(qMax(ResizeGrip::SmallestSide, d->rect.width() + step.x()));
    d->rect.setHeight(qMax(ResizeGrip::SmallestSide, d->rect.height() + step.y()));
    setTextWidth(d->rect.width());
    d->reportModifiedLater();
}

void CCircuitEditorTextBox::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    if (d->resizing) {
        d->resizing = false;
    } else {
        setCursor2(Qt::OpenHandCursor);
        QGraphicsTextItem::mouseReleaseEvent(event);
    }
}

void CCircuitEditorTextBox::mouseDoubleClickEvent(QGraphicsSceneMouseEvent*) {
    // The dialog swallows the release; the box would take the next press anywhere on the canvas.
    if (scene()->mouseGrabberItem() == this) {
        ungrabMouse();
    }
    editText();
}

void CCircuitEditorTextBox::keyPressEvent(QKeyEvent* event) {
    if (!isSelected()) {
        return;
    }
    QPointF step;
    const QPointer<CCircuitEditorTextBox> self(this);
    switch (event->key()) {
        case Qt::Key_Delete:
            deleteLater();
            break;
        case Qt::Key_Left:
            step = {-1, 0};
            break;
        case Qt::Key_Right:
            step = {1, 0};
            break;
        case Qt::Key_Up:
            step = {0, -1};
            break;
        case Qt::Key_Down:
            step = {0, 1};
            break;
        case Qt::Key_F2:
            editText();
            break;
        default:
            QGraphicsItem::keyPressEvent(event);
            return;
    }
    // The dialog ran its own event loop: the box may be gone.
    if (!self) {
        return;
    }
    if (!(event->modifiers() & Qt::ControlModifier) && d->circuitEditor) {
        step *= d->circuitEditor->gridSize();
    }
    setPos(pos() + step);
}

void CCircuitEditorTextBox::contextMenuEvent(QGraphicsSceneContextMenuEvent*) {
    const QPointer<CCircuitEditorTextBox> self(this);
    QMenu menu;
    const QAction* edit = menu.addAction(QStringLiteral("Edit Text"));
    menu.addSeparator();
    createColorOptionsMenu(&menu, QStringLiteral("Border"), d->borderColors, this,
                           SLOT(setBorderColor(QColor)));
    createColorOptionsMenu(&menu, QStringLiteral("Fill"), d->fillColors, this,
                           SLOT(setFillColor(QColor)));
    createColorOptionsMenu(&menu, QStringLiteral("Text"), d->textColors, this,
                           SLOT(setTextColor(QColor)));
    menu.addSeparator();
    const QAction* remove = menu.addAction(QStringLiteral("Delete"));
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: the box may be gone.
    if (!self) {
        return;
    }
    if (chosen == edit) {
        editText();
    } else if (chosen == remove) {
        deleteLater();
    }
}

QVariant CCircuitEditorTextBox::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemSelectedChange && value.toBool() && d->circuitEditor) {
        if (IPropertyEditor* propertyEditor = d->circuitEditor->propertyEditor()) {
            propertyEditor->setObject(nullptr, false);
        }
        d->circuitEditor->on_textBoxSelected(this);
    } else if (change == ItemPositionHasChanged) {
        d->reportModifiedLater();
    }
    return QGraphicsItem::itemChange(change, value);
}

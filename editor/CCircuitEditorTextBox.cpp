#include "CCircuitEditorTextBox.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorComponent.h"
#include "CTextEditorDialog.h"
#include "ColorAction.h"
#include "HistoryStep.h"
#include "QtSeriesText.h"
#include "TextBoxColors.h"
#include "TextBoxText.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionGraphicsItem>
#include <QTextCursor>
#include <QTextDocument>

namespace {

/// A box's font has its size in pixels, under the number that a dialog shows as points.
QFont inPoints(QFont font) {
    if (font.pixelSize() > 0) {
        font.setPointSize(font.pixelSize());
    }
    return font;
}

}  // namespace

class CCircuitEditorTextBoxData {
public:
    QFont font;
    QColor borderColor = TextBoxColors::standard("Border");
    // Kept, but not set: text is drawn in the item's own colour until it is given one.
    QColor textColor = TextBoxColors::standard("Text");
    QColor fillColor = TextBoxColors::standard("Fill");
    QVariantMap borderColors = TextBoxColors::choices("Border");
    QVariantMap textColors = TextBoxColors::choices("Text");
    QVariantMap fillColors = TextBoxColors::choices("Fill");
    // The one that is open; it looks at the box's document.
    QPointer<CTextEditorDialog> dialog;
};

CCircuitEditorTextBox::CCircuitEditorTextBox(CCircuitEditor* editor)
    : CanvasBox(editor), d(std::make_unique<CCircuitEditorTextBoxData>()) {
    setToolTip(QStringLiteral("Double click here to edit the text"));
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
    return editor();
}

void CCircuitEditorTextBox::setDefaultFont(const QFont& font) {
    d->font = font;
    // The number of points counts as pixels. A font without one keeps its pixels: Qt would refuse
    // the -1 with a warning.
    if (font.pointSize() > 0) {
        d->font.setPixelSize(font.pointSize());
    }
    touchHistory();
}

void CCircuitEditorTextBox::putBackFont(const QFont& font) {
    d->font = font;
    touchHistory();
}

QFont CCircuitEditorTextBox::defaultFont() const {
    return d->font;
}

void CCircuitEditorTextBox::setText(const QString& text) {
    fill(text);
    touchHistory();
    deleteIfEmpty();
}

void CCircuitEditorTextBox::fill(const QString& text) {
    const bool keepsStyles = editor() && editor()->keepsTextStyles();
    TextBoxText::fill(document(), keepsStyles ? TextBoxText::withoutBreakingSymbols(text) : text,
                      d->font);
    if (keepsStyles) {
        // Symbols are as large as the item's font, which the dialog sets.
        QGraphicsTextItem::setFont(d->font);
    }
}

QVector<TextRun> CCircuitEditorTextBox::runs() const {
    return TextRuns::of(*document());
}

void CCircuitEditorTextBox::setRuns(const QVector<TextRun>& runs) {
    TextRuns::apply(runs, document());
    touchHistory();
}

QString CCircuitEditorTextBox::text() const {
    return TextBoxText::encodedText(*document());
}

void CCircuitEditorTextBox::deleteIfEmpty() {
    if (document()->isEmpty()) {
        dismiss();
        if (editor()) {
            emit editor()->projectPartModified();
        }
    }
}

void CCircuitEditorTextBox::setBorderColor(const QColor& color) {
    if (color != d->borderColor) {
        d->borderColor = color;
        touchHistory();
        update();
    }
}

QColor CCircuitEditorTextBox::borderColor() const {
    return d->borderColor;
}

void CCircuitEditorTextBox::setFillColor(const QColor& color) {
    if (color != d->fillColor) {
        d->fillColor = color;
        touchHistory();
        update();
    }
}

QColor CCircuitEditorTextBox::fillColor() const {
    return d->fillColor;
}

void CCircuitEditorTextBox::setTextColor(const QColor& color) {
    setDefaultTextColor(color);
    touchHistory();
}

QColor CCircuitEditorTextBox::textColor() const {
    return defaultTextColor();
}

void CCircuitEditorTextBox::editText() {
    if (d->dialog) {
        return;
    }
    const HistoryStep step(editor());
    touchHistory();
    // On the heap: the window may go while the dialog is open, and takes it along.
    const QPointer<CCircuitEditorTextBox> self(this);
    const CCircuitEditorComponent* component = CCircuitEditorComponent::instance();
    const QPointer<CTextEditorDialog> dialog(
        new CTextEditorDialog(component ? component->mainWindow() : nullptr));
    d->dialog = dialog;
    const bool canCancel = editor() && editor()->keepsTextStyles();
    const QString oldText = text();
    const QFont oldFont = d->font;
    const QVector<TextRun> oldRuns = canCancel ? runs() : QVector<TextRun>();
    if (canCancel) {
        dialog->offerCancel();
    }
    TextBoxText::repair(document(), d->font);
    const QString plain = document()->toPlainText();
    document()->clear();
    dialog->setTextDocument(document());
    dialog->setDefaultFont(canCancel ? inPoints(d->font) : d->font);
    // Last, for the two above format what they find.
    TextBoxText::fillFromPlainText(document(), plain, d->font);
    TextRuns::apply(oldRuns, document());
    const bool isCancelled = dialog->exec() == QDialog::Rejected && canCancel;
    if (self && isCancelled) {
        d->font = oldFont;
        fill(oldText);
        TextRuns::apply(oldRuns, document());
        update();
    } else if (self) {
        if (dialog) {
            setDefaultFont(dialog->defaultFont());
        }
        TextBoxText::repair(document(), d->font);
        TextBoxText::adaptWrapping(document(), document()->toPlainText());
        if (canCancel) {
            // As it comes back from a file: the dialog leaves sizes in points.
            const QVector<TextRun> newRuns = runs();
            TextBoxText::fill(document(), text(), d->font);
            TextRuns::apply(newRuns, document());
        } else {
            // Not before: while it is edited, paragraphs with a format of their own join otherwise.
            QTextCursor all(document());
            all.select(QTextCursor::Document);
            all.mergeBlockFormat(QtSeries::paragraphFormat(d->font));
        }
        QGraphicsTextItem::setFont(d->font);
        setTextWidth(localRect().width());
        update();
    }
    delete dialog;
    if (self) {
        deleteIfEmpty();
    }
}

bool CCircuitEditorTextBox::contains(const QPointF& point) const {
    return localRect().contains(point);
}

void CCircuitEditorTextBox::paint(QPainter* painter, const QStyleOptionGraphicsItem* option,
                                  QWidget* widget) {
    const QRect frame = option->rect;
    painter->fillRect(frame, d->fillColor);
    const bool isPointedAt = showsHover(widget);
    if (isPointedAt) {
        painter->fillRect(frame, veil());
    }
    QGraphicsTextItem::paint(painter, option, widget);
    if (!isPointedAt) {
        painter->setPen(QPen(QBrush(d->borderColor, Qt::SolidPattern), 1.0, Qt::SolidLine,
                             Qt::SquareCap, Qt::BevelJoin));
    }
    paintFrame(painter, frame, isPointedAt);
}

void CCircuitEditorTextBox::mouseDoubleClickEvent(QGraphicsSceneMouseEvent*) {
    // The dialog swallows the release; the box would take the next press anywhere on the canvas.
    if (scene()->mouseGrabberItem() == this) {
        ungrabMouse();
    }
    editText();
}

void CCircuitEditorTextBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F2 && isSelected()) {
        editText();
    } else {
        CanvasBox::keyPressEvent(event);
    }
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
        dismiss();
    }
}

QVariant CCircuitEditorTextBox::itemChange(GraphicsItemChange change, const QVariant& value) {
    if (change == ItemSelectedChange && value.toBool() && editor()) {
        clearPanel();
        editor()->on_textBoxSelected(this);
    } else if (change == ItemPositionHasChanged) {
        reportModifiedLater();
    }
    return QGraphicsItem::itemChange(change, value);
}

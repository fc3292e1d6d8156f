#pragma once

#include "CanvasBox.h"
#include "ItemTypes.h"
#include "TextRuns.h"

#include <QColor>
#include <QFont>

#include <memory>

class CCircuitEditor;
class CCircuitEditorTextBoxData;

/// A free annotation: a box with a fill, a border and plain text in which single characters may
/// stand in the "Symbol" font. Child of the editor as a QObject; the user's
/// deletions go through deleteLater(). Only a complete history
/// records it.
class CCircuitEditorTextBox : public CanvasBox<QGraphicsTextItem> {
    Q_OBJECT
    Q_PROPERTY(QFont font READ font WRITE setFont)

public:
    enum { Type = TextBoxItemType };

    explicit CCircuitEditorTextBox(CCircuitEditor* editor);
    ~CCircuitEditorTextBox() override;

    CCircuitEditor* circuitEditor() const;
    /// The font of all normal text. What was given as a point size is kept as a pixel size, so that
    /// `pointSize()` of the answer is -1.
    void setDefaultFont(const QFont& font);
    QFont defaultFont() const;
    /// As `defaultFont` gave it.
    void putBackFont(const QFont& font);
    /// The encoded text: "{|?|}" is a paragraph break, "{|c|}" the character c as a symbol. A box
    /// that is given no text deletes itself later.
    void setText(const QString& text);
    QString text() const;
    /// How single characters differ from the font. They go with the text: to be set after it.
    QVector<TextRun> runs() const;
    void setRuns(const QVector<TextRun>& runs);
    QColor borderColor() const;
    QColor fillColor() const;
    QColor textColor() const;
    /// Opens the text dialog. A box left without text deletes itself later.
    Q_INVOKABLE void editText();

    // QGraphicsItem
    bool contains(const QPointF& point) const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;
    int type() const override { return Type; }

public slots:
    void setBorderColor(const QColor& color);
    void setFillColor(const QColor& color);
    void setTextColor(const QColor& color);

protected:
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    void removeLater() override { deleteLater(); }
    void resized() override { setTextWidth(localRect().width()); }
    void deleteIfEmpty();
    void fill(const QString& text);

    std::unique_ptr<CCircuitEditorTextBoxData> d;
};

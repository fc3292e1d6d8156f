#pragma once

#include "CanvasBox.h"
#include "ItemTypes.h"

#include <QColor>
#include <QFont>
#include <QObject>

#include <memory>

class CCircuitEditor;
class CCircuitElementPropertyTextBoxData;
class ICircuitElement;

/// Shows one property of one element: its text is read from the element and follows it; the box
/// moves along with the element's item and dies with the element. Adds itself to the editor, whose
/// child it is as a QObject.
class CCircuitElementPropertyTextBox : public QObject, public CanvasBox<QGraphicsItem> {
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    enum { Type = ElementPropertyTextBoxItemType };
    enum TextFormat { NameAndValue = 0, ValueOnly = 1 };

    explicit CCircuitElementPropertyTextBox(CCircuitEditor* editor);
    ~CCircuitElementPropertyTextBox() override;

    void setFont(const QFont& font);
    /// The font as it is drawn, which `font` gives.
    void setDrawnFont(const QFont& font);
    QFont font() const;
    /// The size to store in a file.
    int fontPointSize() const;
    void setBackgroundColor(const QColor& color);
    QColor backgroundColor() const;
    /// Lies over the background as long as it is valid; nothing that is saved.
    void setHighlight(const QColor& color);
    void setTextFormat(TextFormat format);
    TextFormat textFormat() const;
    /// What a box has been given beside its element and property, sizes under the least included.
    struct Look {
        QRectF rect;
        QFont font;
        int fontPointSize;
        QColor background;
        bool isSizedByHand;
    };
    Look look() const;
    void setLook(const Look& look);
    /// Whether the user has given the box its size, which it then keeps whatever its text is. Only
    /// with the editor's property KeepTextStyles.
    bool isSizedByHand() const;
    void setSizedByHand(bool on);
    /// The element may be null, the property unknown: the text is empty then.
    void setElementProperty(ICircuitElement* element, const QString& propertyName);
    ICircuitElement* element() const;
    QString propertyName() const;
    /// Empty for a property without a group.
    QString propertyGroup() const;
    /// The text as drawn.
    QString propertyText() const;
    /// Lets the user pick element and property; a box left without an element deletes itself later.
    Q_INVOKABLE void showSelectElementDialog();
    /// The element's item is dying or was never there.
    void forgetElementItem();

    // QGraphicsItem
    int type() const override { return Type; }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

public slots:
    void slotPropertyChanged(QString name);
    void slotElementDestroyed();
    void slotElementMoved(QPointF delta);

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;

private:
    void removeLater() override { deleteLater(); }
    void resizedByHand() override;
    /// Hears the element, and its item if it is drawn.
    void bindToElement();
    /// Makes the box as large as its text unless it is sized by hand, even below the least size,
    /// which is for what the user and the files ask for.
    void fitToText();
    /// Of the text in the box's font.
    QSizeF textSize() const;

    std::unique_ptr<CCircuitElementPropertyTextBoxData> d;
};

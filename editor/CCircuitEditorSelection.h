#pragma once

#include <QList>
#include <QRectF>

#include <memory>

class CCircuitEditor;
class CCircuitEditorSelectionData;
class ICircuit;
class ICircuitElement;
class IClipboard;
class IQObjectLoadSave;
class IXmlUtils;
class QDomDocument;
class QGraphicsItem;
class QIcon;
class QString;

/// What the user has selected in one editor, captured as a clipboard document at the moment of
/// selecting, and the way back: what a clipboard document holds, made anew in the circuit. Nothing
/// here is undoable. Doesn't own the items that it lists, and forgets those that die.
class CCircuitEditorSelection {
public:
    explicit CCircuitEditorSelection(CCircuitEditor* editor);
    ~CCircuitEditorSelection();

    CCircuitEditor* circuitEditor() const;
    // The editor's services; null if it lacks them.
    IClipboard* clipboard() const;
    IQObjectLoadSave* qobjectLoadSave() const;
    IXmlUtils* xmlUtils() const;
    ICircuit* circuit() const;

    /// Forgets the capture; what was pasted last stays known.
    void reset();
    /// Adds an element or a text box to the capture, whose text then describes that one alone; any
    /// other kind of item resets it.
    void initFromItem(QGraphicsItem* item);
    /// Takes elements and text boxes for deleting; there is nothing to copy.
    void takeItems(const QList<QGraphicsItem*>& items);
    /// Captures what the rectangle, in scene units, touches: elements, nets all of whose elements
    /// are captured, and text boxes.
    void initFromSelectionRect(const QRectF& rect);
    /// Captures elements and text boxes as a group, with the nets all of whose elements are among
    /// them, whatever else lies there.
    void initFromGroup(const QList<QGraphicsItem*>& items);
    /// The item is dying.
    void forgetItem(QGraphicsItem* item);

    /// Puts the capture on both clipboards; without the application's own nothing happens.
    void copy();
    void cut();
    /// Deletes what is captured.
    void erase();

    /// Makes anew what the entry of the application's clipboard holds; an index of -2 takes the
    /// system clipboard, any other that names no entry takes the first. A group's lower left corner
    /// comes to `pos`, in scene units. The scene rectangle of what was made; null for nothing.
    QRectF paste(const QPointF& pos, int index);
    QRectF paste(int index);
    /// Makes anew what a clipboard document holds, past the clipboards: moved by `step`, or as
    /// `paste` does.
    QRectF repeat(const QString& text, const QPointF& step);
    QRectF pasteText(const QPointF& pos, const QString& text);
    /// The document as a paste reads it; null for any other text.
    static QDomDocument documentOf(const QString& text);

    /// The clipboard document, its description and its picture.
    QString clipboardText() const;
    /// What a paste of that entry would read; a null document if it is none of the editor's.
    QDomDocument documentToPaste(int index) const;
    QString clipboardToolTip() const;
    QIcon clipboardIcon() const;
    /// In the order of capture.
    QList<QGraphicsItem*> itemList() const;
    QList<ICircuitElement*> elementList() const;
    /// In the order of making; what has died since isn't listed.
    QList<QGraphicsItem*> pastedItemList() const;

private:
    void initFromItems(const QList<QGraphicsItem*>& items, QRectF rect);

    std::unique_ptr<CCircuitEditorSelectionData> d;
};

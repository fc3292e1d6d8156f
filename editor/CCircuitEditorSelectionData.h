#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QIcon>
#include <QList>
#include <QMap>
#include <QString>

class CCircuitEditor;
class CCircuitEditorElementItem;
class CCircuitEditorTextBox;
class ICircuit;
class ICircuitElement;
class ICircuitElementFactory;
class ICircuitElementNode;
class ICircuitNode;
class IQObjectLoadSave;
class IXmlUtils;
class QGraphicsItem;
class QRectF;

/// Private data of a selection, shared by its two sources.
class CCircuitEditorSelectionData {
public:
    // Capture. Each takes its kind of the items into the lists, and their records into a list of
    // its own below the root.
    void captureElements(QDomDocument document, QDomElement root,
                         const QList<QGraphicsItem*>& items);
    /// The nets all of whose elements are captured.
    void captureWholeNodes(QDomDocument document, QDomElement root,
                           const QList<QGraphicsItem*>& items);
    void captureTextBoxes(QDomDocument document, QDomElement root,
                          const QList<QGraphicsItem*>& items);
    // Each writer appends a record to the parent.
    void saveElement(QDomDocument document, QDomElement record,
                     const CCircuitEditorElementItem& item);
    void saveNode(QDomDocument document, QDomElement parent, ICircuitNode* node,
                  IQObjectLoadSave* loadSave);
    void saveTextBox(QDomDocument document, QDomElement record, const CCircuitEditorTextBox& box);
    void copyElementPropertyTextBoxes(const CCircuitEditorElementItem& item, QDomDocument document,
                                      QDomElement record);

    // Paste.
    QString textToPaste(int index) const;
    /// Brings the document to `pos`, or if that is null moves it by `step`.
    QRectF pasteDocument(const QDomDocument& document, const QPointF* pos, const QPointF& step);
    void pasteGroup(QDomDocument document, QDomElement root);
    void pasteElement(QDomDocument document, QDomElement record, ICircuit* circuit,
                      IQObjectLoadSave* loadSave, ICircuitElementFactory* factory);
    void pasteNode(QDomDocument document, QDomElement record, ICircuit* circuit,
                   IQObjectLoadSave* loadSave, IXmlUtils* xmlUtils);
    void pasteTextBox(QDomDocument document, QDomElement record, ICircuit* circuit,
                      IQObjectLoadSave* loadSave, ICircuitElementFactory* factory);
    void pasteElementPropertyTextBoxes(CCircuitEditorElementItem* item, QDomElement record);
    ICircuitElementNode* pastedTerminal(const QDomElement& record) const;
    /// Moves what was pasted into place; the scene rectangle of all of it.
    QRectF movePasted(const QPointF& offset);

    CCircuitEditor* circuitEditor = nullptr;
    QString clipboardText;
    QString clipboardToolTip;
    QIcon clipboardIcon;
    QList<ICircuitElement*> elementList;
    QList<QGraphicsItem*> itemList;
    QList<CCircuitEditorTextBox*> textBoxList;
    // By the caption that the document gives it.
    QMap<QString, ICircuitElement*> pasteElementMap;
    QList<QGraphicsItem*> pastedItemList;
};

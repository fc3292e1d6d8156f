#pragma once

#include "CCircuitEditor.h"
#include "CCircuitEditorScene.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitElementFactory.h"
#include "ICircuitSolver.h"
#include "IClipboard.h"
#include "IClipboardWidget.h"
#include "IElementExplorer.h"
#include "IMathUtils.h"
#include "IPropertyEditor.h"
#include "IQObjectLoadSave.h"
#include "IXmlUtils.h"
#include "InterfacePointer.h"

#include <QColor>
#include <QDomElement>
#include <QHash>
#include <QMap>
#include <QPointer>
#include <QSet>

#include <memory>

class CCircuitEditorElementItem;
class CCircuitEditorGlobaParamTextBox;
class CCircuitEditorNodeItem;
class CCircuitEditorSelection;
class CCircuitEditorTextBox;
class CCircuitElementPropertyTextBox;
class CCanvasGestures;
class CManualConnectorLineItem;
class CPlacementTool;
class CSelectionRectangleItem;
class CircuitFileText;
class ConnectedDrag;
class CUndoRedoStack;
class CompleteHistory;
class QGraphicsLineItem;
class QLabel;

/// The editor's private data, open to the sources of the editor and of its items.
class CCircuitEditorData {
public:
    // A listener may delete elements while nets are being read.
    using ElementsById = QHash<int, InterfacePointer<ICircuitElement>>;

    CCircuitEditorData(CCircuitEditor* editor, QObject* sceneParent);
    ~CCircuitEditorData();

    /// The line that follows the pointer while a connection is dragged; made on first request.
    QGraphicsLineItem* conItem();
    /// Two conversions that are deliberately not exact inverses of one another.
    double calculateScaleFor(int level) const;
    int calculateZoomLevelFor(double scale) const;
    QPointF gridPoint(const QPointF& point) const;
    QRectF visibleItemsBoundingRect() const;
    /// All items, in the order in which commands on all of them take them.
    QList<QGraphicsItem*> itemsInTurn() const;
    /// What a picture shows: the drawing, with its margin unless it is empty.
    QRectF pictureRect() const;
    /// The topmost item that contains the point, by its own account; null if there is none.
    QGraphicsItem* itemAt(const QPoint& viewportPos);
    /// Asks the solver to join two terminals or wires and records it. The node that now carries the
    /// connection; null for a refusal and for items of any other kind.
    ICircuitNode* makeConnection(QGraphicsItem* a, QGraphicsItem* b);
    void hideConnectionLine();
    /// Ends the connection under way, with nothing done.
    void dropConnection();

    /// While one lives, automatic wires that are to be routed anew are noted, and then routed once:
    /// a net that many terminals join one by one costs as much as one that is there at once.
    class RoutingHold {
    public:
        explicit RoutingHold(CCircuitEditorData* data);
        ~RoutingHold();
        RoutingHold(const RoutingHold&) = delete;
        RoutingHold& operator=(const RoutingHold&) = delete;

    private:
        CCircuitEditorData* m_data;
    };
    /// Whether the wire is to wait; it is then routed when the last hold goes.
    bool holdsRouting(CCircuitEditorNodeItem* wire);

    // Records: one XML element each, appended to the parent. All elements of a document are saved
    // before its first node, for the nodes name them by the numbers that saving gives out.
    void saveElement(QDomDocument document, QDomElement parent, ICircuitElement* element);
    void loadElement(const QDomElement& record);
    void saveNode(QDomDocument document, QDomElement parent, ICircuitNode* node);
    void loadNode(const QDomElement& record, const ElementsById& elements);
    /// The circuit's elements by "_UniqueId_"; of several with one number the first counts. The
    /// numbers mean something while one document is being read, and so does this.
    ElementsById elementsById() const;
    /// Loads all element records among the children of the parent, then all node records.
    void loadRecords(const QDomElement& parent);
    void loadRecords(const CircuitFileText& text);
    /// The three groups of text boxes of a project, each behind its comment.
    void saveAnnotations(QDomDocument document, QDomElement parent);
    void loadAnnotations(const QDomElement& parent);
    /// Makes a text box of a record of a project; its colours are left as they are.
    CCircuitEditorTextBox* loadTextBox(const QDomElement& record);
    /// Makes a property box of a record of a project; nothing without its element.
    void loadElementPropertyTextBox(const QDomElement& record, ICircuit* owner);

    /// Takes a dying item out of whatever points to it.
    void forgetItem(QGraphicsItem* item);
    /// Deletes every item of the scene: wires, then elements, then what is left.
    void deleteItems();
    /// Writes the picture of the scene as it stands.
    bool writePicture(CCircuitEditor::CaptureFormat format, const QString& fileName);

    InterfacePointer<IPropertyEditor> propertyEditor;
    InterfacePointer<IElementExplorer> elementExplorer;
    QPointer<CCircuitEditorScene> scene;
    CCircuitEditor* circuitEditor = nullptr;
    InterfacePointer<ICircuitSolver> circuitSolver;
    // The object whose signals the editor hears.
    QPointer<QObject> boundCircuit;
    ICircuit* circuit = nullptr;
    InterfacePointer<ICircuitElementFactory> circuitElementFactory;
    InterfacePointer<IXmlUtils> xmlUtils;
    InterfacePointer<IMathUtils> mathUtils;
    InterfacePointer<IQObjectLoadSave> qobjectLoadSave;

    int gridSize = 10;
    QColor gridColor;
    QColor crosshairColor;
    int darkGridColorPercent = 100;
    QColor backgroundColor;
    bool gridVisible = true;
    QString gridLineType;
    QString gridType;
    int textBoxDefaultWidth = -1;
    int textBoxDefaultHeight = -1;

    CCircuitEditor::Mode mode = CCircuitEditor::EditMode;
    CUndoRedoStack* undoStack = nullptr;
    QPointer<QObject> lastPropertyObject;
    QPointer<QLabel> statusLabel;
    // The only way from a model object to its item.
    QMap<ICircuitElement*, CCircuitEditorElementItem*> elementItemMap;
    QMap<ICircuitNode*, CCircuitEditorNodeItem*> nodeItemMap;
    bool selectingNode = false;
    QGraphicsItem* connectionStartItem = nullptr;
    QGraphicsItem* connectionEndItem = nullptr;
    CManualConnectorLineItem* manualConnectorItem = nullptr;
    QGraphicsLineItem* connectorLineItem = nullptr;
    double minZ = 0;
    double maxZ = 0;
    bool fitToView = false;
    bool panning = false;
    // In global screen coordinates.
    QPoint lastPanPos;
    QList<CCircuitEditorTextBox*> textBoxes;
    QList<CCircuitEditorGlobaParamTextBox*> globalParamTextBoxes;
    bool textBoxLayerVisible = true;
    QList<CCircuitElementPropertyTextBox*> elementPropertyTextBoxes;
    QString defaultPSPath;
    InterfacePointer<IClipboard> clipboard;
    InterfacePointer<IClipboardWidget> clipboardWidget;
    // The entry that the next paste takes: -1 none in particular, -2 the system clipboard.
    int clipboardDataIndex = -1;
    CSelectionRectangleItem* selectionRectItem = nullptr;
    bool selecting = false;
    QPointF selectionStart;
    QPointF selectionEnd;
    std::unique_ptr<CCircuitEditorSelection> selection;
    QPointF crosshairPoint;
    bool crosshairVisible = false;
    bool internalMove = false;
    bool readOnly = false;
    double pictureMargin = 0;
    enum class Picture { None, UnderWay, GivenUp } picture = Picture::None;
    std::unique_ptr<CPlacementTool> placement;
    std::unique_ptr<CCanvasGestures> gestures;
    bool routeEmptyShapes = false;
    std::unique_ptr<CompleteHistory> completeHistory;
    // Set as long as the property MoveConnectedElements is on.
    std::unique_ptr<ConnectedDrag> connectedDrag;
    bool showJunctions = false;
    bool captionNewElements = false;
    bool keepTextStyles = false;
    bool placePastedItems = false;
    // The selection rectangle stands over what was pasted, and nothing else of what lies there.
    bool isPasteSelected = false;

private:
    int m_routingHolds = 0;
    QSet<CCircuitEditorNodeItem*> m_heldWires;

    QFont styledFont(const QDomElement& record) const;
    ICircuitNode* joinTerminals(ICircuitElementNode* a, ICircuitElementNode* b);
    ICircuitNode* joinTerminalToNode(ICircuitElementNode* terminal, ICircuitNode* node);
    ICircuitNode* mergeNodes(CCircuitEditorNodeItem* a, CCircuitEditorNodeItem* b);
    void loadNodeShape(const QDomElement& record, CCircuitEditorNodeItem* item);
};

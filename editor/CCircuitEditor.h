#pragma once

#include "ClipboardData.h"
#include "ICanvas.h"
#include "ICircuitEditor.h"
#include "ICircuitEditorExt.h"
#include "ICircuitEditorExt2.h"
#include "IProjectPart.h"
#include "IProjectPieces.h"
#include "IProjectSavedState.h"

#include <QColor>
#include <QGraphicsView>

#include <memory>

class CCircuitEditorData;
class CCircuitEditorElementItem;
class CCircuitEditorGlobaParamTextBox;
class CCircuitEditorNodeItem;
class CCircuitEditorTextBox;
class CCircuitElementPropertyTextBox;
class CPlacementTool;
class CUndoRedoStack;
class CompleteHistory;
class QLabel;

/// The schematic editor: a view over one scene that draws a circuit model and turns the user's
/// pointer and keys into calls on the model. The model leads: items are made, re-read and deleted
/// only in answer to its signals. Owns its scene if that has no parent, its items and its undo
/// history; never a collaborator. Positions are scene units unless a name says otherwise.
class CCircuitEditor : public QGraphicsView,
                       public virtual ICanvas,
                       public virtual ICircuitEditor,
                       public virtual IProjectPart,
                       public virtual ICircuitEditorExt,
                       public virtual ICircuitEditorExt2,
                       public virtual IProjectSavedState,
                       public virtual IProjectPieces {
    Q_OBJECT
    Q_INTERFACES(ICanvas ICircuitEditor IProjectPart ICircuitEditorExt ICircuitEditorExt2
                     IProjectSavedState IProjectPieces)
    Q_PROPERTY(int GridSize READ gridSize WRITE setGridSize)
    Q_PROPERTY(QColor GridColor READ gridColor WRITE setGridColor)
    Q_PROPERTY(int DarkGridColorPercent READ darkGridColorPercent WRITE setDarkGridColorPercent)
    Q_PROPERTY(QString DefaultPSPath READ defaultPSPath WRITE setDefaultPSPath)
    Q_PROPERTY(bool ReadOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool RouteEmptyShapes READ isRouteEmptyShapes WRITE setRouteEmptyShapes)
    Q_PROPERTY(bool ExtendedGestures READ isExtendedGestures WRITE setExtendedGestures)
    Q_PROPERTY(bool SpatialIndex READ hasSpatialIndex WRITE setSpatialIndex)
    Q_PROPERTY(bool CompleteHistory READ isCompleteHistory WRITE setCompleteHistory)
    Q_PROPERTY(
        bool MoveConnectedElements READ movesConnectedElements WRITE setMoveConnectedElements)
    Q_PROPERTY(bool ShowJunctions READ showsJunctions WRITE setShowJunctions)
    Q_PROPERTY(bool CaptionNewElements READ captionsNewElements WRITE setCaptionNewElements)
    Q_PROPERTY(bool KeepTextStyles READ keepsTextStyles WRITE setKeepTextStyles)
    Q_PROPERTY(bool PlacePastedItems READ placesPastedItems WRITE setPlacePastedItems)
    Q_PROPERTY(double PictureMargin READ pictureMargin WRITE setPictureMargin)

public:
    enum Mode { EditMode = 0, OutVarSelectionMode = 1, ManualConnectionMode = 2 };
    Q_ENUM(Mode)

    enum CaptureFormat { PS = 0, PDF = 1, JPG = 2, PNG = 3, SVG = 4 };

    explicit CCircuitEditor(QWidget* parent = nullptr);
    ~CCircuitEditor() override;

    // State.
    Mode mode() const;
    void setMode(Mode mode);
    int gridSize() const;
    /// Only stored: shows at the next repaint. Arithmetic takes a value under 1 as 1.
    void setGridSize(int size);
    QColor gridColor() const;
    void setGridColor(const QColor& color);
    QColor crosshairColor() const;
    void setCrosshairColor(const QColor& color);
    int darkGridColorPercent() const;
    /// Argument of `QColor::darker` for every fifth grid line.
    void setDarkGridColorPercent(int percent);
    /// Directory that the dialogs for pictures start in.
    QString defaultPSPath() const;
    void setDefaultPSPath(const QString& path);
    /// Whether a net that is pasted or shown for study without a path is routed. Otherwise it is
    /// taken at its word: a wire laid by hand, along nothing.
    bool isRouteEmptyShapes() const;
    void setRouteEmptyShapes(bool on);
    /// Room on each side of exported pictures, in scene units; 0 at first.
    double pictureMargin() const;
    void setPictureMargin(double margin);
    /// See `CCanvasGestures`.
    bool isExtendedGestures() const;
    void setExtendedGestures(bool on);
    /// Whether the scene finds items by their place instead of asking all. What lies where, and in
    /// which order, is the same; only the scene's list of all items is in another order.
    bool hasSpatialIndex() const;
    void setSpatialIndex(bool on);
    /// Whether each step of the user is an entry of the undo history that brings all back. Setting
    /// it forgets what the history holds.
    bool isCompleteHistory() const;
    void setCompleteHistory(bool on);
    /// Null while it is off.
    CompleteHistory* completeHistory() const;
    /// What is saved of the item may have changed; for the complete history. Items tell by
    /// themselves, but not a wire whose item is given another position.
    void touchHistory(QGraphicsItem* item);
    /// Whether wired elements can be moved, and turned, with their wires behind them.
    bool movesConnectedElements() const;
    void setMoveConnectedElements(bool on);
    /// Whether the branches of a net meet in dots, and terminals on no net have a mark.
    bool showsJunctions() const;
    void setShowJunctions(bool on);
    /// Whether a new element gets boxes with its caption and main values.
    bool captionsNewElements() const;
    void setCaptionNewElements(bool on);
    /// Whether boxes keep the size of their text, and property boxes their ground, in files and
    /// copies; and an edit of a text can be given up.
    bool keepsTextStyles() const;
    void setKeepTextStyles(bool on);
    /// Whether what is pasted hangs at the pointer until it is put down.
    bool placesPastedItems() const;
    void setPlacePastedItems(bool on);
    CUndoRedoStack* undoStack() const;
    /// Made on first call, without a parent: the caller gives it a place.
    QLabel* statusLabel() const;

    // The drawing.
    QPointF snapToGrid(const QPointF& point) const;
    QRectF snapToGrid(const QRectF& rect) const;
    /// Moves the element so that its first terminal lies on the grid.
    void snapToGrid(CCircuitEditorElementItem* item);
    /// Shows the crosshair on the grid point nearest to `point`, or takes it away at the next
    /// repaint.
    void highlightGridPoint(const QPointF& point, bool on);
    QRectF visibleItemsBoundingRect() const;
    void bringToFront(QGraphicsItem* item);
    void sendToBack(QGraphicsItem* item);
    /// Empty.
    void itemSelected(QGraphicsItem* item);
    CCircuitEditorElementItem* elementItem(ICircuitElement* element) const;
    CCircuitEditorNodeItem* nodeItem(ICircuitNode* node) const;
    /// While set, wired elements may be moved: the editor moves items in step with one another.
    void setInternalMove(bool on);
    bool isInternalMove() const;
    void clearEditor();

    // Annotations, in three lists. Adding makes the editor the box's QObject parent, and ignores
    // null and what is listed already; removing doesn't delete, and ignores null and what isn't
    // listed. Null for an index out of range.
    void addTextBox(CCircuitEditorTextBox* textBox);
    CCircuitEditorTextBox* addTextBox(const QRectF& rect);
    /// Of the default size, with its top left at the point.
    CCircuitEditorTextBox* addTextBox(const QPointF& point);
    void removeTextBox(CCircuitEditorTextBox* textBox);
    int textBoxCount() const;
    CCircuitEditorTextBox* textBox(int index) const;
    void addGlobalParamTextBox(CCircuitEditorGlobaParamTextBox* textBox);
    CCircuitEditorGlobaParamTextBox* addGlobalParamTextBox(const QRectF& rect);
    CCircuitEditorGlobaParamTextBox* addGlobalParamTextBox(const QPointF& point);
    void removeGlobalParamTextBox(CCircuitEditorGlobaParamTextBox* textBox);
    int globalParamTextBoxCount() const;
    CCircuitEditorGlobaParamTextBox* globalParamTextBox(int index) const;
    void addElementPropertyTextBox(CCircuitElementPropertyTextBox* textBox);
    CCircuitElementPropertyTextBox* addElementPropertyTextBox(const QRectF& rect);
    /// Of a fixed size: the default size is for the other two kinds.
    CCircuitElementPropertyTextBox* addElementPropertyTextBox(const QPointF& point);
    void removeElementPropertyTextBox(CCircuitElementPropertyTextBox* textBox);
    int elementPropertyTextBoxCount() const;
    CCircuitElementPropertyTextBox* elementPropertyTextBox(int index) const;
    bool isTextBoxLayerVisible() const;

    /// The item is dying: nothing of the editor may still point to it.
    void forgetItem(QGraphicsItem* item);

    /// Asks for a file name, writes the picture, and tells the user that it was saved.
    void captureTo(CaptureFormat format);
    /// Writes the picture of the drawing, without grid and selection; false if it can't be written.
    /// `format` is a value of `CaptureFormat`.
    Q_INVOKABLE bool captureToFile(int format, const QString& fileName);
    /// For items that are about to paint themselves: false in a picture that has been given up.
    bool hasTurnInPicture();
    /// The drawing as one JSON object in UTF-8 with stable order, for comparing drawings.
    Q_INVOKABLE QByteArray describe() const;
    /// Writes the same as it comes; false if the target doesn't take it.
    Q_INVOKABLE bool describeTo(QIODevice* target) const;
    /// What the next undo or redo is about; empty for a command without a text.
    Q_INVOKABLE QString undoText() const;
    Q_INVOKABLE QString redoText() const;
    /// Whether there is something to cut or copy.
    Q_INVOKABLE bool hasSelection() const;
    /// Whether there is something to delete.
    Q_INVOKABLE bool canErase() const;
    /// Deletes the group under the selection rectangle or else what has the focus, as the key does.
    Q_INVOKABLE void eraseSelection();
    /// Takes the whole drawing into one group.
    Q_INVOKABLE void selectAll();
    /// Hangs a new element of the type at the pointer, to be put down by clicks; see
    /// `CPlacementTool`. False, with nothing done, where nothing can be placed now.
    Q_INVOKABLE bool startPlacing(const QString& type);
    Q_INVOKABLE void stopPlacing();
    Q_INVOKABLE bool isPlacing() const;
    /// Copies the selection beside itself, past the clipboards.
    Q_INVOKABLE void duplicate();
    /// Puts one element of the type at the point, in scene units, as a click does.
    Q_INVOKABLE bool placeElement(const QString& type, const QPointF& point);
    /// Turns and flips what hangs at the pointer, or else the selected element, as R and F do.
    Q_INVOKABLE void turnSelection();
    Q_INVOKABLE void flipSelection();
    /// Whether these two have something to work on.
    Q_INVOKABLE bool canTurn() const;
    /// What the present tool expects next, for the user; empty if nothing in particular.
    Q_INVOKABLE QString toolHint() const;
    /// Adds a new element to the circuit, at the point and on the grid, and records it.
    void insertElement(ICircuitElement* element, const QPointF& point);
    CPlacementTool* placementTool() const;
    /// Lets the user choose what to take out of a net, and does it. `node` is the object of a net
    /// of this editor's circuit; anything else is ignored.
    Q_INVOKABLE void deletePartsOfNode(QObject* node);

    Q_INVOKABLE void setGridColorRGB(int red, int green, int blue);
    Q_INVOKABLE void setBackgroundColorRGB(int red, int green, int blue);
    Q_INVOKABLE void setCrosshairColorRGB(int red, int green, int blue);
    /// Makes the drawing area a square of that side around the origin.
    Q_INVOKABLE void setEditorSize(int size);
    /// "dotted" is told apart, anything else means solid lines.
    Q_INVOKABLE void setGridLineType(const QString& type);
    /// "dotted" is told apart, anything else means lines.
    Q_INVOKABLE void setGridType(const QString& type);
    Q_INVOKABLE void setTextBoxDefaultSize(int width, int height);

    /// Whether the item is the rectangle over the present group.
    bool isSelectionRectangle(const QGraphicsItem* item) const;

    // Called by the items when they are selected.
    void on_elementSelected(ICircuitElement* element);
    void on_circuitNodeSelected(ICircuitNode* node);
    void on_textBoxSelected(CCircuitEditorTextBox* textBox);

    // IContainer
    QObject* containerObject() override { return this; }

    // ICanvas
    QGraphicsView* graphicsView() override;
    QGraphicsScene* graphicsScene() override;

    // ICircuitEditor
    ICanvas* canvas() override;
    void save(QString fileName) override;
    void load(QString fileName) override;
    void highlight(ICircuitNode* node) override;
    void highlight(ICircuitElement* element) override;
    void highlight(ICircuitElementNode* elementNode) override;
    /// Drops the highlight, the scene's selection and what was captured of it.
    void unhighlight() override;

    // IProjectPart
    QString projectPartID() override;
    bool newProjectPart() override;
    bool loadProjectPart(QDomDocument document, QDomElement element) override;
    bool initializeProjectPart() override;
    bool saveProjectPart(QDomDocument document, QDomElement element) override;
    bool closeProjectPart() override;

    // IProjectPieces
    bool saveProjectPieces(QDomDocument document, QDomElement element,
                           const std::function<void()>& written) override;

    // IProjectSavedState: false without a complete history
    void markSaved() override;
    void forgetSaved() override;
    bool isAsSaved() override;

    // ICircuitEditorExt
    int typeOfItem(QGraphicsItem* item) const override;
    ICircuitElement* elementFromItem(QGraphicsItem* item) const override;
    ICircuitElementNode* elementNodeFromItem(QGraphicsItem* item) const override;
    ICircuitNode* circuitNodeFromItem(QGraphicsItem* item) const override;
    QGraphicsItem* itemFor(ICircuitElement* element) override;
    QGraphicsItem* itemFor(ICircuitElementNode* elementNode) override;
    QGraphicsItem* itemFor(ICircuitNode* node) override;

    // ICircuitEditorExt2
    void setQObjectLoadSave(IQObjectLoadSave* service) override;
    IQObjectLoadSave* qobjectLoadSave() const override;
    void setMathUtils(IMathUtils* service) override;
    IMathUtils* mathUtils() const override;
    void setClipboard(IClipboard* clipboard) override;
    IClipboard* clipboard() const override;
    void setClipboardWidget(IClipboardWidget* widget) override;
    IClipboardWidget* clipboardWidget() const override;
    void setPropertyEditor(IPropertyEditor* editor) override;
    IPropertyEditor* propertyEditor() const override;
    void setCircuitSolver(ICircuitSolver* solver) override;
    ICircuitSolver* circuitSolver() const override;
    void setCircuit(ICircuit* circuit) override;
    ICircuit* circuit() const override;
    void setCircuitElementFactory(ICircuitElementFactory* factory) override;
    ICircuitElementFactory* circuitElementFactory() const override;
    void setElementExplorer(IElementExplorer* explorer) override;
    IElementExplorer* elementExplorer() const override;
    void setXmlUtils(IXmlUtils* service) override;
    IXmlUtils* xmlUtils() const override;
    void setReadOnly(bool readOnly) override;
    bool isReadOnly() const override;

public slots:
    // ICanvas
    void setZoomLevel(int zoomLevel) override;
    void zoomIn() override;
    void zoomOut() override;
    void zoomFull() override;
    void zoomOne() override;
    void zoomFit() override;
    void bringToCenter() override;
    void cut() override;
    void copy() override;
    void paste() override;
    void paste(QPointF pos) override;
    void clear() override;
    /// Snaps every element.
    void snapToGrid() override;
    void undo() override;
    void redo() override;

    /// Pastes what the system clipboard holds at the pointer.
    void pasteFromClipboard();
    void pasteFromClipboard(QPointF pos);
    void setTextBoxLayerVisible(bool on);
    /// Makes a text box in the middle of the drawing and opens its dialog.
    void interactiveAddTextBox();
    void captureToPS();
    void captureToPDF();
    void captureToJPG();
    void captureToPNG();
    void captureToSVG();
    void captureToClipboard();

    /// The picture that is being written isn't wanted any more: its capture fails soon.
    void giveUpPicture();

signals:
    /// One more element or net of a picture has its turn. A listener may give the picture up, and
    /// leaves editor and drawing as they are.
    void pictureProgress();
    // Sent from within the handling of an event of the item concerned: a listener that wants the
    // item gone does so later, from the event loop.
    void zoomLevelChanged(int zl) override;
    void zoomScaleChanged(double zs) override;
    void canvasClickEvent(ICanvas* canvas, QPoint pos, Qt::MouseButton button,
                          Qt::KeyboardModifiers mod) override;
    void canvasDoubleClickEvent(ICanvas* canvas, QPoint pos, Qt::MouseButton button,
                                Qt::KeyboardModifiers mod) override;
    void canvasContextMenuEvent(ICanvas* canvas, QMenu* menu, Qt::KeyboardModifiers mod) override;
    void canUndoChanged(bool val) override;
    void canRedoChanged(bool val) override;
    void editorModeChanged(Mode mode);
    void elementClickEvent(ICircuitElement* element, QPoint pos, Qt::MouseButton button,
                           Qt::KeyboardModifiers mod) override;
    void elementDoubleClickEvent(ICircuitElement* element, QPoint pos, Qt::MouseButton button,
                                 Qt::KeyboardModifiers mod) override;
    void elementContextMenuEvent(ICircuitElement* element, QMenu* menu,
                                 Qt::KeyboardModifiers mod) override;
    void nodeClickEvent(ICircuitNode* node, QPoint pos, Qt::MouseButton button,
                        Qt::KeyboardModifiers mod) override;
    void nodeDoubleClickEvent(ICircuitNode* node, QPoint pos, Qt::MouseButton button,
                              Qt::KeyboardModifiers mod) override;
    void nodeContextMenuEvent(ICircuitNode* node, QMenu* menu, Qt::KeyboardModifiers mod) override;
    void elementSelected(ICircuitElement* element) override;
    void elementUnselected(ICircuitElement* element) override;
    void nodeSelected(ICircuitNode* node) override;
    void nodeUnselected(ICircuitNode* node) override;
    void textBoxSelected(CCircuitEditorTextBox* textBox);
    void outvarSelected(ICircuitElement* e, QString outVar);
    void outvarSelected(ICircuitElement* e, ICircuitElementNode* node);
    void outvarSelected(ICircuitNode* node);
    void projectPartModified() override;
    /// Another tool, or another load of it, is at work.
    void toolChanged();
    void toolHintChanged(QString hint);
    /// With a complete history only.
    void savedStateChanged(bool isAsSaved);
    /// What hasSelection() and canErase() answer may have changed.
    void selectionStateChanged();

protected slots:
    void on_scene_changed();
    void on_circuitNodeChanged();
    /// Empty: the element's signal goes to on_elementChanged().
    void on_circuitElementChanged();
    void on_circuitElementNodeAdded(ICircuitElementNode* elementNode);
    void on_circuitElementNodeRemoved(ICircuitElementNode* elementNode);
    void on_addGlobalVariable();
    void on_removeGlobalVariable();
    /// Puts the boxes in a column downward from the point, in scene units.
    void on_insertGlobalVarTextBox(QPointF pos);
    void on_editOutputVariables();
    void on_propertyValueChanged(QObject* object, QString propertyName, QVariant oldValue,
                                 QVariant newValue);
    void on_clipboardWidgetDataClicked(QString context, ClipboardData data, int index);
    void on_elementAdded(ICircuitElement* element);
    void on_elementRemoved(ICircuitElement* element);
    void on_nodeAdded(ICircuitNode* node);
    void on_nodeRemoved(ICircuitNode* node);
    // Called by the items.
    void on_removeElementRequest(ICircuitElement* element);
    void on_removeNodeRequest(ICircuitNode* node);
    void on_elementChanged();

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    // The items pass the user's requests on.
    friend class CCanvasGestures;
    friend class CCircuitEditorElementItem;
    friend class CCircuitEditorNodeItem;
    friend class ConnectedDrag;
    friend class ConnectedMove;
    friend class PastePlacement;

    void bindHistory();
    void restartHistory();
    void beginHistoryGesture();
    void endHistoryGesture();
    void answerRelease(QMouseEvent* event);
    QPoint roundedScenePosition(const QPoint& viewportPos) const;
    void startSelectionRectangle(const QPointF& corner);
    void closeSelectionRectangle();
    void pressOnCanvas(const QPoint& viewportPos);
    void pressOnItem(QMouseEvent* event, QGraphicsItem* item);
    /// The pointer, on the screen, has dragged the page to here.
    void panTo(const QPoint& pointer);
    bool canPlace() const;
    void sendKey(int key);
    /// Selects what was pasted last, as a group.
    void showPasted(const QRectF& rectangle);
    void eraseGroup();
    /// Whether the group under the rectangle goes on being one, whatever has changed in it; where
    /// wired elements move along, it is more than what lies there.
    bool isGroupKept() const;
    void captureKeptGroup();
    /// Pastes that entry of the clipboard at once.
    void pasteAt(const QPointF& pos, int index);
    /// Pastes that clipboard document, which lies in no clipboard.
    void pasteTextAt(const QPointF& pos, const QString& text);
    void captionNewElement(ICircuitElement* element);
    /// Ends the loading of a circuit file, which holds no boxes, or of a drawing that the host has
    /// made itself: there is nothing to undo.
    Q_INVOKABLE void captionElements();
    void leaveManualConnectionMode();
    void selectNextItem();
    /// The menu over two selected items that are joined; false if the selection isn't such a pair.
    bool offerDisconnection();
    void showCanvasMenu(const QPointF& point, Qt::KeyboardModifiers modifiers);
    void releaseConnection(QMouseEvent* event);
    void pickOutputVariable(QGraphicsItem* item);
    void pickElementVariable(ICircuitElement* element);
    /// A click of a wire that is laid by hand; the item may be null.
    void manualClick(QGraphicsItem* item, const QPoint& viewportPos);
    void finishManualConnection(QGraphicsItem* end);

    /// Whether the circuit is shown for study: it belongs to a sub-circuit and isn't to be changed.
    bool isStudy() const;
    void showElements(ICircuit* circuit, const QList<QDomElement>& records);
    void showNodes(ICircuit* circuit, const QList<QDomElement>& records);
    /// Makes the item of what has none yet, and enters it.
    CCircuitEditorElementItem* makeItem(ICircuitElement* element);
    CCircuitEditorNodeItem* makeItem(ICircuitNode* node);
    /// Null is ignored.
    void highlightItem(QGraphicsItem* item);

    void drawGridDots(QPainter* painter, const QRectF& rect, const QTransform& toDevice) const;
    void drawGridLines(QPainter* painter, const QRectF& rect, const QTransform& toDevice) const;
    void releaseGrabber(QMouseEvent* event);
    void hideRemovedFromPropertyEditor(QObject* object);
    void deleteTerminalOf(ICircuitNode* node, ICircuitElementNode* elementNode);
    /// What stays of a wire laid by hand when the terminal's branch goes, in item coordinates.
    /// Empty if that branch is none of its own, so that the wire can't be kept as it was laid.
    QPainterPath wireWithout(ICircuitElementNode* elementNode, ICircuitNode* node);
    void updateViewport();

    std::unique_ptr<CCircuitEditorData> d;
};

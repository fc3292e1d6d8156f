#pragma once

#include "IProjectPart.h"
#include "IProjectSavedState.h"

#include <QWidget>

#include <memory>

class CCircuitEditor;
class COutputVariablesWidgetData;
class ICircuitElement;
class ICircuitElementNode;
class ICircuitNode;
class ICircuitOutputVariable;
class IPropertyEditor;
class IXmlUtils;
class QContextMenuEvent;
class QTreeWidgetItem;

/// The panel that lists the circuit's output variables, and the project part that stores the list.
/// Rows come and go with the circuit's signals alone. Owns no collaborator, and each may be missing
/// or go away before the panel does.
class COutputVariablesWidget : public QWidget,
                               public virtual IProjectPart,
                               public virtual IProjectSavedState {
    Q_OBJECT
    Q_INTERFACES(IProjectPart IProjectSavedState)

public:
    explicit COutputVariablesWidget(QWidget* parent = nullptr);
    ~COutputVariablesWidget() override;

    void setXmlUtils(IXmlUtils* service);
    IXmlUtils* xmlUtils() const;
    /// Follows the editor's picks and its present circuit. Null is ignored, and an earlier editor
    /// stays connected.
    void setCircuitEditor(CCircuitEditor* editor);
    CCircuitEditor* circuitEditor() const;
    void setPropertyEditor(IPropertyEditor* editor);
    IPropertyEditor* propertyEditor() const;

    /// The variables in the order of the rows.
    QList<ICircuitOutputVariable*> outputVariables() const;
    /// The text that the variable's row shows.
    QString outvarText(ICircuitOutputVariable* variable) const;

    /// Gives the rows that order, which must name all of them.
    void arrange(const QList<ICircuitOutputVariable*>& order);

    // IContainer
    QObject* containerObject() override { return this; }

    // IProjectPart
    QString projectPartID() override;
    bool newProjectPart() override;
    /// Has the circuit add the recorded variables, with null for an element, terminal or node that
    /// it hasn't got: what becomes of those is the circuit's to say.
    bool loadProjectPart(QDomDocument document, QDomElement parent) override;
    bool initializeProjectPart() override;
    bool saveProjectPart(QDomDocument document, QDomElement parent) override;
    bool closeProjectPart() override;

    // IProjectSavedState: the editor's history holds the changes of the list, too.
    void markSaved() override;
    void forgetSaved() override;
    bool isAsSaved() override;

    bool eventFilter(QObject* object, QEvent* event) override;

public slots:
    void on_cmdAddVariable_toggled(bool checked);
    void on_cmdDeleteVariable_clicked();
    void on_cmdUp_clicked();
    void on_cmdDown_clicked();
    void on_circuitEditor_outvarSelected(ICircuitElement* element, QString varName);
    void on_circuitEditor_outvarSelected(ICircuitElement* element,
                                         ICircuitElementNode* elementNode);
    void on_circuitEditor_outvarSelected(ICircuitNode* node);
    void on_outputVariableAdded(ICircuitOutputVariable* variable);
    void on_outputVariableRemoved(ICircuitOutputVariable* variable);
    void on_outputVariableEdited(ICircuitOutputVariable* variable);
    void on_outVarsList_currentItemChanged(QTreeWidgetItem* item);
    void on_variableNameEditingDone();
    /// Lets the Add Variable button show the editor's mode.
    void slotEditorModeChanged();
    void slotPropertyValueChanged(QObject* object, QString name);

signals:
    void projectPartModified() override;
    /// Never: the editor tells.
    void savedStateChanged(bool isAsSaved);

private:
    void connectForm();
    void moveCurrentRow(int step);
    /// For a row that is current and has got other neighbours, too.
    void updateArrows();
    void touchHistory();
    void showOnDiagram(ICircuitOutputVariable* variable);
    void showContextMenu(const QContextMenuEvent* event);
    /// Null if the circuit makes no variable of it.
    ICircuitOutputVariable* addRecorded(const QDomElement& record);

    std::unique_ptr<COutputVariablesWidgetData> d;
};

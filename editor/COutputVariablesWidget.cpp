#include "COutputVariablesWidget.h"

#include "COutputVariablesWidgetData.h"
#include "COutputVariablesWidgetDelegate.h"
#include "CompleteHistory.h"
#include "ICircuitElement.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "ICircuitOutputVariableReorderSupport.h"
#include "ItemData.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QStyle>

COutputVariablesWidget::COutputVariablesWidget(QWidget* parent)
    : QWidget(parent), d(std::make_unique<COutputVariablesWidgetData>()) {
    qRegisterMetaType<ItemData>("ItemData");
    d->setupUi(this);
    d->outVarsList->setHeaderLabel(QStringLiteral("Output Variables"));
    connectForm();
    d->cmdAddVariable->installEventFilter(this);
    d->outVarsList->viewport()->installEventFilter(this);
    // Escape ends the picking wherever the focus is.
    QCoreApplication::instance()->installEventFilter(this);
    d->delegate = new COutputVariablesWidgetDelegate(d->outVarsList->itemDelegate(), this, d.get());
    d->delegate->setWidget(this);
    d->outVarsList->setItemDelegate(d->delegate);
    d->outVarsList->setDragDropMode(QAbstractItemView::InternalMove);
    d->outVarsList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    d->cmdUp->setIcon(style()->standardIcon(QStyle::SP_ArrowUp));
    d->cmdUp->setToolTip(QStringLiteral("Move Up"));
    d->cmdUp->setEnabled(false);
    d->cmdDown->setIcon(style()->standardIcon(QStyle::SP_ArrowDown));
    d->cmdDown->setToolTip(QStringLiteral("Move Down"));
    d->cmdDown->setEnabled(false);
}

COutputVariablesWidget::~COutputVariablesWidget() = default;

void COutputVariablesWidget::connectForm() {
    // Here, and not by the form's own search for slots: that complains at every start of the slots
    // whose sender, the editor, is no child of the panel.
    connect(d->cmdAddVariable, SIGNAL(toggled(bool)), SLOT(on_cmdAddVariable_toggled(bool)));
    connect(d->cmdDeleteVariable, SIGNAL(clicked()), SLOT(on_cmdDeleteVariable_clicked()));
    connect(d->cmdUp, SIGNAL(clicked()), SLOT(on_cmdUp_clicked()));
    connect(d->cmdDown, SIGNAL(clicked()), SLOT(on_cmdDown_clicked()));
    connect(d->outVarsList, SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*)),
            SLOT(on_outVarsList_currentItemChanged(QTreeWidgetItem*)));
    const QAbstractItemModel* rows = d->outVarsList->model();
    connect(rows, &QAbstractItemModel::rowsInserted, this, &COutputVariablesWidget::updateArrows);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, &COutputVariablesWidget::updateArrows);
    connect(rows, &QAbstractItemModel::rowsInserted, this, &COutputVariablesWidget::touchHistory);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, &COutputVariablesWidget::touchHistory);
}

void COutputVariablesWidget::setXmlUtils(IXmlUtils* service) {
    d->xmlUtils = service;
}

IXmlUtils* COutputVariablesWidget::xmlUtils() const {
    return d->xmlUtils;
}

void COutputVariablesWidget::setCircuitEditor(CCircuitEditor* editor) {
    if (!editor) {
        return;
    }
    d->circuitEditor = editor;
    connect(editor, SIGNAL(outvarSelected(ICircuitElement*, QString)),
            SLOT(on_circuitEditor_outvarSelected(ICircuitElement*, QString)));
    connect(editor, SIGNAL(outvarSelected(ICircuitElement*, ICircuitElementNode*)),
            SLOT(on_circuitEditor_outvarSelected(ICircuitElement*, ICircuitElementNode*)));
    connect(editor, SIGNAL(outvarSelected(ICircuitNode*)),
            SLOT(on_circuitEditor_outvarSelected(ICircuitNode*)));
    d->circuit = editor->circuit();
    if (!d->circuit) {
        return;
    }
    QObject* circuit = d->circuit->containerObject();
    connect(circuit, SIGNAL(outputVariableAdded(ICircuitOutputVariable*)),
            SLOT(on_outputVariableAdded(ICircuitOutputVariable*)));
    connect(circuit, SIGNAL(outputVariableRemoved(ICircuitOutputVariable*)),
            SLOT(on_outputVariableRemoved(ICircuitOutputVariable*)));
    connect(circuit, SIGNAL(outputVariableEdited(ICircuitOutputVariable*)),
            SLOT(on_outputVariableEdited(ICircuitOutputVariable*)));
    // A circuit that dies takes its variables along without a word on each.
    connect(circuit, &QObject::destroyed, d->outVarsList, &COutputVariableTreeWidget::removeRowsOf);
}

CCircuitEditor* COutputVariablesWidget::circuitEditor() const {
    return d->circuitEditor;
}

void COutputVariablesWidget::setPropertyEditor(IPropertyEditor* editor) {
    if (editor == d->propertyEditor) {
        return;
    }
    if (d->propertyEditor) {
        d->propertyEditor->containerObject()->disconnect(this);
    }
    d->propertyEditor = editor;
    if (editor) {
        connect(editor->containerObject(),
                SIGNAL(propertyValueChanged(QObject*, QString, QVariant, QVariant)),
                SLOT(slotPropertyValueChanged(QObject*, QString)));
    }
}

IPropertyEditor* COutputVariablesWidget::propertyEditor() const {
    return d->propertyEditor;
}

QList<ICircuitOutputVariable*> COutputVariablesWidget::outputVariables() const {
    QList<ICircuitOutputVariable*> variables;
    for (int row = 0; row < d->outVarsList->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = d->outVarsList->topLevelItem(row);
        if (auto* variable = COutputVariableTreeWidget::itemData(item).outputVariable) {
            variables.append(variable);
        }
    }
    return variables;
}

QString COutputVariablesWidget::outvarText(ICircuitOutputVariable* variable) const {
    return d->outvarText(variable);
}

void COutputVariablesWidget::on_cmdAddVariable_toggled(bool checked) {
    if (d->circuitEditor) {
        d->circuitEditor->setMode(checked ? CCircuitEditor::OutVarSelectionMode
                                          : CCircuitEditor::EditMode);
    }
}

void COutputVariablesWidget::slotEditorModeChanged() {
    if (!d->circuitEditor) {
        return;
    }
    const bool picking = d->circuitEditor->mode() == CCircuitEditor::OutVarSelectionMode;
    if (picking != d->cmdAddVariable->isChecked()) {
        d->cmdAddVariable->blockSignals(true);
        d->cmdAddVariable->setChecked(picking);
        d->cmdAddVariable->blockSignals(false);
    }
}

void COutputVariablesWidget::on_circuitEditor_outvarSelected(ICircuitElement* element,
                                                             QString varName) {
    if (d->circuit && element && !varName.isEmpty()) {
        d->circuit->addOutputVariable(element, varName);
    }
}

void COutputVariablesWidget::on_circuitEditor_outvarSelected(ICircuitElement* element,
                                                             ICircuitElementNode* elementNode) {
    if (d->circuit && element && elementNode) {
        d->circuit->addOutputVariable(element, elementNode);
    }
}

void COutputVariablesWidget::on_circuitEditor_outvarSelected(ICircuitNode* node) {
    if (d->circuit && node) {
        d->circuit->addOutputVariable(node);
    }
}

void COutputVariablesWidget::on_outputVariableAdded(ICircuitOutputVariable* variable) {
    if (!variable) {
        return;
    }
    const QString type = COutputVariablesWidgetData::nodeType(variable);
    ItemData data;
    data.outputVariable = variable;
    data.acCapable =
        type == QLatin1String("e") || type == QLatin1String("g") || type == QLatin1String("x");
    if (ICircuitElement* element = variable->element()) {
        data.elementObject = element->containerObject();
    }
    if (ICircuitNode* node = variable->node()) {
        data.nodeObject = node->containerObject();
    }
    const QObject* circuit = sender();
    if (!circuit && d->circuit) {
        circuit = d->circuit->containerObject();
    }
    COutputVariableTreeWidget::makeRow(new QTreeWidgetItem(d->outVarsList, 0), data, circuit);
    emit projectPartModified();
    if (!d->ctrlPressed) {
        d->cmdAddVariable->setChecked(false);
    }
}

void COutputVariablesWidget::on_outputVariableRemoved(ICircuitOutputVariable* variable) {
    if (variable && d->outVarsList->removeRowOf(variable)) {
        emit projectPartModified();
    }
}

void COutputVariablesWidget::on_outputVariableEdited(ICircuitOutputVariable* variable) {
    if (variable) {
        d->outVarsList->viewport()->repaint();
        emit projectPartModified();
    }
}

void COutputVariablesWidget::on_cmdDeleteVariable_clicked() {
    const QPointer<COutputVariablesWidget> self(this);
    for (ICircuitOutputVariable* variable : d->outVarsList->chosenVariables()) {
        if (!self) {
            return;
        }
        if (!variable || !d->outVarsList->rowOf(variable)) {
            // The second row of one that is gone, which a drop that was no move has left.
            delete d->outVarsList->rowOf(nullptr);
        } else if (d->circuit) {
            d->circuit->removeOutputVariable(variable);
        }
    }
}

void COutputVariablesWidget::on_cmdUp_clicked() {
    moveCurrentRow(-1);
}

void COutputVariablesWidget::on_cmdDown_clicked() {
    moveCurrentRow(1);
}

void COutputVariablesWidget::moveCurrentRow(int step) {
    COutputVariableTreeWidget* list = d->outVarsList;
    QTreeWidgetItem* item = list->currentItem();
    const int from = item ? list->indexOfTopLevelItem(item) : -1;
    const int to = from + step;
    if (!item || to < 0 || to >= list->topLevelItemCount()) {
        return;
    }
    list->takeTopLevelItem(from);
    list->insertTopLevelItem(to, item);
    list->setCurrentItem(item);
    QObject* circuit = d->circuit ? d->circuit->containerObject() : nullptr;
    if (auto* order = qobject_cast<ICircuitOutputVariableReorderSupport*>(circuit)) {
        order->moveOutputVariable(from, to);
    }
}

void COutputVariablesWidget::touchHistory() {
    if (CompleteHistory* history = CompleteHistory::of(d->circuitEditor)) {
        history->touchOutputs();
    }
}

void COutputVariablesWidget::arrange(const QList<ICircuitOutputVariable*>& order) {
    // Rows that become current meanwhile would be shown on the diagram.
    const QSignalBlocker blocker(d->outVarsList);
    QObject* circuit = d->circuit ? d->circuit->containerObject() : nullptr;
    auto* model = qobject_cast<ICircuitOutputVariableReorderSupport*>(circuit);
    for (int to = 0; to < order.size(); ++to) {
        const int from = d->outVarsList->indexOfTopLevelItem(d->outVarsList->rowOf(order.at(to)));
        if (from <= to) {
            continue;
        }
        d->outVarsList->insertTopLevelItem(to, d->outVarsList->takeTopLevelItem(from));
        if (model) {
            model->moveOutputVariable(from, to);
        }
    }
}

void COutputVariablesWidget::markSaved() {}

void COutputVariablesWidget::forgetSaved() {}

bool COutputVariablesWidget::isAsSaved() {
    return d->circuitEditor && d->circuitEditor->isAsSaved();
}

void COutputVariablesWidget::updateArrows() {
    QTreeWidgetItem* item = d->outVarsList->currentItem();
    const int row = item ? d->outVarsList->indexOfTopLevelItem(item) : -1;
    d->cmdUp->setEnabled(row > 0);
    d->cmdDown->setEnabled(row >= 0 && row < d->outVarsList->topLevelItemCount() - 1);
}

void COutputVariablesWidget::on_outVarsList_currentItemChanged(QTreeWidgetItem* item) {
    updateArrows();
    if (item) {
        showOnDiagram(COutputVariableTreeWidget::itemData(item).outputVariable);
    }
}

void COutputVariablesWidget::showOnDiagram(ICircuitOutputVariable* variable) {
    if (!d->circuitEditor || !variable) {
        return;
    }
    // Rows also become current while others go with a circuit that is being cleared: what is no
    // longer drawn may be on its way out, and isn't looked at.
    if (ICircuitElement* element = variable->element()) {
        if (!d->circuitEditor->elementItem(element)) {
            return;
        }
        if (ICircuitElementNode* terminal = variable->elementNode()) {
            d->circuitEditor->highlight(terminal);
        } else {
            d->circuitEditor->highlight(element);
        }
    } else if (d->circuitEditor->nodeItem(variable->node())) {
        d->circuitEditor->highlight(variable->node());
    }
}

void COutputVariablesWidget::slotPropertyValueChanged(QObject* object, QString) {
    for (int row = 0; row < d->outVarsList->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = d->outVarsList->topLevelItem(row);
        const ItemData data = COutputVariableTreeWidget::itemData(item);
        // A net's name may have changed with a property of anything.
        if ((object && data.elementObject == object) || data.nodeObject) {
            d->outVarsList->viewport()->update(d->outVarsList->visualItemRect(item));
        }
    }
}

void COutputVariablesWidget::on_variableNameEditingDone() {
    QPointer<QLineEdit> editor(d->delegate->takeLineEdit());
    // Hidden by the list, which drops the editors of rows that go.
    if (editor && editor->isHidden()) {
        editor = nullptr;
    }
    if (editor) {
        emit d->delegate->commitData(editor);
    }
    // Whoever hears of the new name may have removed the variable, and the editor with its row.
    if (editor) {
        emit d->delegate->closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

bool COutputVariablesWidget::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress && d->cmdAddVariable->isChecked() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        d->cmdAddVariable->setChecked(false);
        return true;
    }
    if (object == d->cmdAddVariable) {
        if (event->type() == QEvent::MouseButtonPress) {
            d->ctrlPressed =
                static_cast<QMouseEvent*>(event)->modifiers().testFlag(Qt::ControlModifier);
        }
        return false;
    }
    if (object == d->outVarsList->viewport() && event->type() == QEvent::ContextMenu) {
        showContextMenu(static_cast<QContextMenuEvent*>(event));
        return true;
    }
    return false;
}

void COutputVariablesWidget::showContextMenu(const QContextMenuEvent* event) {
    const QTreeWidgetItem* item = d->outVarsList->itemAt(event->pos());
    const ItemData data = item ? COutputVariableTreeWidget::itemData(item) : ItemData();
    if (!data.acCapable) {
        return;
    }
    const QPointer<COutputVariablesWidget> self(this);
    QMenu menu;
    QAction* ac = menu.addAction(QStringLiteral("AC"));
    ac->setCheckable(true);
    ac->setChecked(data.outputVariable->isAC());
    const QAction* chosen = menu.exec(QCursor::pos());
    // The menu ran its own event loop: the variable may be gone.
    if (self && chosen == ac && d->outVarsList->rowOf(data.outputVariable)) {
        data.outputVariable->setAC(ac->isChecked());
        d->outVarsList->viewport()->update();
    }
}

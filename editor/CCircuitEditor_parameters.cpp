// The dialogs of the circuit's global parameters.

#include "CCircuitEditorData.h"
#include "CCircuitEditorGlobaParamTextBox.h"
#include "HistoryStep.h"
#include "ICircuitGlobalVariableChangeNameSupport.h"
#include "ICircuitStringGlobalVariableSupport.h"
#include "ui_CAddGlobalVariableDialog.h"
#include "ui_CRemoveGlobalVariableDialog.h"

#include <QPair>
#include <QPushButton>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QStandardItemModel>
#include <QVector>

namespace {

constexpr int ValueRole = Qt::UserRole + 1;
// In scene units, between two boxes of a column.
constexpr double BoxGap = 5;

// White space of every script, not of ASCII alone.
QRegularExpression expression(const QString& pattern) {
    return QRegularExpression(pattern, QRegularExpression::UseUnicodePropertiesOption);
}

QStandardItem* cell(const QString& text, Qt::ItemFlags flags) {
    auto* item = new QStandardItem(text);
    item->setFlags(flags);
    return item;
}

QString typeWord(ICircuit* circuit, int index) {
    auto* strings = qobject_cast<ICircuitStringGlobalVariableSupport*>(circuit->containerObject());
    if (strings && strings->isStringGlobalVariable(index)) {
        return QStringLiteral("String");
    }
    return circuit->isRealGlobalVariable(index) ? QStringLiteral("Real")
                                                : QStringLiteral("Integer");
}

/// Shows the model, of which the dialog becomes the owner.
void showTable(QDialog* dialog, const Ui_CRemoveGlobalVariableDialog& form,
               QStandardItemModel* model, const QStringList& headers) {
    model->setParent(dialog);
    model->setHorizontalHeaderLabels(headers);
    form.lstGlobalVariables->setModel(model);
}

/// In the order of the selection.
QModelIndexList selectedIn(const Ui_CRemoveGlobalVariableDialog& form) {
    return form.lstGlobalVariables->selectionModel()->selection().indexes();
}

}  // namespace

void CCircuitEditor::on_addGlobalVariable() {
    const HistoryStep step(this);
    if (!circuit()) {
        return;
    }
    // On the heap: the editor may go while the dialog is open, and takes it along.
    const QPointer<QDialog> dialog(new QDialog(this));
    Ui_CAddGlobalVariableDialog form;
    form.setupUi(dialog);
    form.txtVariableName->setValidator(new QRegularExpressionValidator(
        expression(QStringLiteral("[^\\s]*")), form.txtVariableName));
    const bool isAccepted = dialog->exec() && dialog;
    if (!isAccepted) {
        delete dialog;
        return;
    }
    const QString name = form.txtVariableName->text();
    const bool isString = form.rbString->isChecked();
    const bool isReal = form.rbReal->isChecked();
    delete dialog;
    ICircuit* owner = circuit();
    if (owner && isString) {
        auto* strings =
            qobject_cast<ICircuitStringGlobalVariableSupport*>(owner->containerObject());
        if (strings) {
            strings->addStringGlobalVariable(name, QString());
        }
    } else if (owner) {
        owner->addGlobalVariable(name, QVariant(0), isReal);
    }
    emit projectPartModified();
}

void CCircuitEditor::on_removeGlobalVariable() {
    const HistoryStep step(this);
    ICircuit* owner = circuit();
    if (!owner) {
        return;
    }
    const QPointer<CCircuitEditor> self(this);
    const QPointer<QObject> object(owner->containerObject());
    auto* names = qobject_cast<ICircuitGlobalVariableChangeNameSupport*>(object.data());
    const QPointer<QDialog> dialog(new QDialog(this));
    Ui_CRemoveGlobalVariableDialog form;
    form.setupUi(dialog);
    auto* model = new QStandardItemModel;
    const Qt::ItemFlags nameFlags =
        Qt::ItemIsSelectable | Qt::ItemIsEnabled | (names ? Qt::ItemIsEditable : Qt::NoItemFlags);
    for (int i = 0; i < owner->globalVariableCount(); ++i) {
        model->appendRow({cell(owner->globalVariableName(i), nameFlags),
                          cell(typeWord(owner, i), Qt::ItemIsEnabled)});
    }
    showTable(dialog, form, model, {QStringLiteral("Name"), QStringLiteral("Type")});
    // The answers are turned around: accepting removes, and whatever else closes the dialog saves.
    form.buttonBox->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Remove Selected"));
    QPushButton* save = form.buttonBox->button(QDialogButtonBox::Cancel);
    save->setText(QStringLiteral("Save Changes"));
    save->setDefault(true);
    const bool isRemoval = dialog->exec() == QDialog::Accepted;
    // A name that is still being edited counts as typed.
    QWidget* edited = QApplication::focusWidget();
    if (dialog && edited && dialog->isAncestorOf(edited)) {
        edited->clearFocus();
    }
    // The rows are those from when the dialog opened, whatever is removed below.
    QVector<QPair<int, QString>> rows;
    if (dialog && isRemoval) {
        for (const QModelIndex& index : selectedIn(form)) {
            rows.append({index.row(), index.data().toString()});
        }
    } else if (dialog) {
        for (int i = 0; i < model->rowCount(); ++i) {
            rows.append({i, model->item(i)->text().remove(expression(QStringLiteral("\\s*")))});
        }
    }
    delete dialog;
    bool modified = false;
    for (const auto& [row, name] : qAsConst(rows)) {
        if (object && names) {
            modified = names->changeGlobalVariableName(row, name) || modified;
        }
        if (object && isRemoval) {
            owner->removeGlobalVariable(name);
            modified = true;
        }
    }
    if (self && modified) {
        emit projectPartModified();
    }
}

void CCircuitEditor::on_insertGlobalVarTextBox(QPointF pos) {
    const HistoryStep step(this);
    ICircuit* owner = circuit();
    if (!owner || !d->scene) {
        return;
    }
    const QPointer<QDialog> dialog(new QDialog(this));
    Ui_CRemoveGlobalVariableDialog form;
    form.setupUi(dialog);
    auto* model = new QStandardItemModel;
    for (int i = 0; i < owner->globalVariableCount(); ++i) {
        const QVariant value = owner->globalVariableValue(i);
        QStandardItem* name =
            cell(owner->globalVariableName(i), Qt::ItemIsSelectable | Qt::ItemIsEnabled);
        name->setData(value, ValueRole);
        model->appendRow({name, cell(value.toString(), Qt::ItemIsEnabled)});
    }
    showTable(dialog, form, model, {QStringLiteral("Name"), QStringLiteral("Value")});
    dialog->setWindowTitle(QStringLiteral("Insert global parameter text boxes"));
    form.label->setText(
        QStringLiteral("Select one or more global parmaeters and click insert to add global "
                       "parameter text boxes"));
    form.label_2->setText(QString());
    form.buttonBox->setStandardButtons(QDialogButtonBox::Ok);
    form.buttonBox->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Insert"));
    const bool isAccepted = dialog->exec() == QDialog::Accepted && dialog;
    const QModelIndexList chosen = isAccepted ? selectedIn(form) : QModelIndexList();
    for (const QModelIndex& index : chosen) {
        const QString name = index.data().toString();
        auto* box = new CCircuitEditorGlobaParamTextBox(this);
        addGlobalParamTextBox(box);
        box->setGlobalParameterName(name);
        box->setText(name + QStringLiteral(" = ") + index.data(ValueRole).toString());
        box->setPos(pos);
        pos.ry() += box->rect().height() + BoxGap;
    }
    const bool isAnyMade = !chosen.isEmpty();
    delete dialog;
    if (isAnyMade) {
        emit projectPartModified();
    }
}

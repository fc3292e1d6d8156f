#include "PropertyEditor.h"

#include "ICircuit.h"

#include <QComboBox>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int ValueColumn = 1;
/// Whole numbers of the model are distances in scene units.
constexpr int LargestNumber = 10000;
constexpr int RefusalTime = 4000;  // milliseconds
/// A value that refers to what isn't there.
const QColor ProblemColor(183, 28, 28);
/// Number of the row within the panel's list, on the value column.
constexpr int RowRole = Qt::UserRole;

/// Makes the in-place editor of a value: a list for named values and flags, a spin box for whole
/// numbers, else a line of text.
class ValueDelegate : public QStyledItemDelegate {
public:
    explicit ValueDelegate(PropertyEditor* panel) : QStyledItemDelegate(panel), m_panel(panel) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        const PropertyRow* row = m_panel->rowAt(index);
        if (!row || !m_panel->object() || !m_panel->isEditable(*row)) {
            return nullptr;
        }
        const QStringList choices = choicesOf(*row);
        if (choices.isEmpty() && row->value(m_panel->object()).userType() == QMetaType::Int) {
            auto* number = new QSpinBox(parent);
            number->setRange(0, LargestNumber);
            return number;
        }
        if (choices.isEmpty()) {
            return new QLineEdit(parent);
        }
        auto* box = new QComboBox(parent);
        box->addItems(choices);
        auto* self = const_cast<ValueDelegate*>(this);
        connect(box, QOverload<int>::of(&QComboBox::activated), self, [self, box] {
            emit self->commitData(box);
            emit self->closeEditor(box);
        });
        return box;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        const PropertyRow* row = m_panel->rowAt(index);
        if (auto* box = qobject_cast<QComboBox*>(editor)) {
            box->setCurrentText(index.data(Qt::DisplayRole).toString());
        } else if (auto* number = qobject_cast<QSpinBox*>(editor);
                   number && row && m_panel->object()) {
            number->setValue(row->value(m_panel->object()).toInt());
        } else if (auto* line = qobject_cast<QLineEdit*>(editor);
                   line && row && m_panel->object()) {
            // The value itself, which the line shows with its unit.
            line->setText(row->value(m_panel->object()).toString());
        }
    }

    void setModelData(QWidget* editor, QAbstractItemModel*,
                      const QModelIndex& index) const override {
        const PropertyRow* row = m_panel->rowAt(index);
        if (!row) {
            return;
        }
        // The commit may rebuild the rows.
        const PropertyRow edited = *row;
        if (auto* box = qobject_cast<QComboBox*>(editor)) {
            const bool isText = !edited.texts(m_panel->object()).isEmpty();
            m_panel->commit(edited,
                            isText ? QVariant(box->currentText()) : QVariant(box->currentIndex()));
        } else if (auto* number = qobject_cast<QSpinBox*>(editor)) {
            m_panel->commit(edited, number->value());
        } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            m_panel->commit(edited, line->text());
        }
    }

private:
    QStringList choicesOf(const PropertyRow& row) const {
        if (row.value(m_panel->object()).userType() == QMetaType::Bool) {
            return {QVariant(false).toString(), QVariant(true).toString()};
        }
        return row.choices().isEmpty() ? row.texts(m_panel->object()) : row.choices();
    }

    PropertyEditor* m_panel;
};

}  // namespace

PropertyEditor::PropertyEditor(QWidget* parent)
    : QWidget(parent), m_title(new QLabel(this)), m_tree(new QTreeWidget(this)) {
    setWindowTitle(tr("Properties"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setText(propertyTitleOf(nullptr));
    m_tree->setColumnCount(2);
    m_tree->setHeaderLabels({tr("Property"), tr("Value")});
    m_tree->setAccessibleName(tr("Properties"));
    m_tree->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_tree->setAlternatingRowColors(true);
    m_tree->setIndentation(12);
    auto* delegate = new ValueDelegate(this);
    m_tree->setItemDelegate(delegate);
    connect(delegate, &QAbstractItemDelegate::closeEditor, this,
            [this](QWidget*, QAbstractItemDelegate::EndEditHint hint) {
                if (hint == QAbstractItemDelegate::SubmitModelCache ||
                    hint == QAbstractItemDelegate::RevertModelCache) {
                    // Later: the view is still busy with the end of the edit.
                    QTimer::singleShot(0, this, &PropertyEditor::editEnded);
                }
            });
    m_tree->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::SelectedClicked);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_title);
    layout->addWidget(m_tree);
    setFocusProxy(m_tree);

    // Return on a value starts the edit, wherever in its line the cursor is.
    connect(m_tree, &QTreeWidget::itemActivated, this,
            [this](QTreeWidgetItem* item) { m_tree->editItem(item, ValueColumn); });
}

PropertyEditor::~PropertyEditor() {
    // A line that is being edited commits when it loses the focus: better now, while this is a
    // panel, and to no object.
    m_object = nullptr;
    hide();
}

void PropertyEditor::setReadOnly(bool readOnly) {
    m_readOnly = readOnly;
    rebuild();
}

void PropertyEditor::setObject(QObject* object, bool forceReload) {
    if (object == m_object && !forceReload) {
        refresh();
        return;
    }
    for (const QPointer<QObject>& earlier : {m_object, m_circuit}) {
        if (earlier) {
            disconnect(earlier, nullptr, this, nullptr);
        }
    }
    m_object = object;
    ICircuit* circuit = circuitOf(object);
    m_circuit = circuit ? circuit->containerObject() : nullptr;
    if (object) {
        watch(object);
    }
    rebuild();
}

void PropertyEditor::refreshAt(QObject* object, const QMetaMethod& signal) {
    const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("scheduleRefresh()"));
    connect(object, signal, this, slot, Qt::UniqueConnection);
}

void PropertyEditor::refreshAt(QObject* object, std::initializer_list<const char*> signalNames) {
    const QMetaObject* meta = object->metaObject();
    for (const char* name : signalNames) {
        const int signal = meta->indexOfSignal(name);
        if (signal >= 0) {
            refreshAt(object, meta->method(signal));
        }
    }
}

void PropertyEditor::watch(QObject* object) {
    refreshAt(object, {"propertyChanged(QString)", "elementChanged()", "nodeChanged()",
                       "assignedModelChanged()"});
    if (m_circuit) {
        refreshAt(m_circuit, {"globalVariableAdded(QString)", "globalVariableRemoved(QString)",
                              "globalVariableNameModified(QString,QString)",
                              "globalVariableValueModified(QString,QString)"});
    }
    const QMetaObject* meta = object->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        if (meta->property(i).hasNotifySignal()) {
            refreshAt(object, meta->property(i).notifySignal());
        }
    }
    connect(object, &QObject::destroyed, this, [this] {
        m_object = nullptr;
        rebuild();
    });
}

const PropertyRow* PropertyEditor::rowAt(const QModelIndex& index) const {
    const QVariant row = index.column() == ValueColumn ? index.data(RowRole) : QVariant();
    return row.isValid() && row.toInt() < m_rows.size() ? &m_rows.at(row.toInt()) : nullptr;
}

void PropertyEditor::commit(const PropertyRow& row, const QVariant& value) {
    const QPointer<QObject> object = m_object;
    // An editor that is open while the panel becomes read-only still commits what is in it.
    if (!object || !isEditable(row)) {
        return;
    }
    const QVariant oldValue = row.value(object);
    const QScopedValueRollback<bool> committing(m_isCommitting, true);
    row.setValue(object, value);
    if (!object) {
        return;
    }
    const QVariant newValue = row.value(object);
    if (newValue != oldValue) {
        emit propertyValueChanged(object, row.name, oldValue, newValue);
    } else if (value.toString().trimmed() != oldValue.toString() &&
               oldValue.userType() != QMetaType::Bool) {
        tellRefusal(row, value);
    }
    scheduleRefresh();
}

void PropertyEditor::editFirstValue() {
    QTreeWidgetItem* first = nullptr;
    for (int i = m_rows.size() - 1; i >= 0; --i) {
        const bool isBetter = m_rows.at(i).isParameter() || !first ||
                              !m_rows.at(first->data(ValueColumn, RowRole).toInt()).isParameter();
        if (isEditable(m_rows.at(i)) && isBetter) {
            first = m_items.at(i);
        }
    }
    if (first) {
        m_tree->setFocus();
        m_tree->setCurrentItem(first, ValueColumn);
        m_tree->scrollToItem(first);
        m_tree->editItem(first, ValueColumn);
    }
}

void PropertyEditor::tellRefusal(const PropertyRow& row, const QVariant& value) {
    QTreeWidgetItem* item = m_items.value(m_rows.indexOf(row));
    if (!item) {
        return;
    }
    // At the field, and gone by itself: a box would stop the work. Later, because the end of the
    // edit moves the focus, which takes any tip away.
    const QRect field = m_tree->visualItemRect(item);
    const QString text = tr("%1 does not take \"%2\"").arg(row.name, value.toString());
    QTimer::singleShot(0, m_tree, [this, field, text] {
        QToolTip::showText(m_tree->viewport()->mapToGlobal(field.bottomLeft()), text, m_tree, field,
                           RefusalTime);
    });
}

void PropertyEditor::scheduleRefresh() {
    if (!m_refreshScheduled) {
        m_refreshScheduled = true;
        QTimer::singleShot(0, this, [this] {
            m_refreshScheduled = false;
            refresh();
        });
    }
}

void PropertyEditor::refresh() {
    if (propertyRowsOf(m_object) != m_rows) {
        rebuild();
        return;
    }
    m_title->setText(propertyTitleOf(m_object));
    for (int i = 0; i < m_rows.size(); ++i) {
        // Only what differs: setting a text drops what the user is typing into the line.
        const QString text = m_rows.at(i).text(m_object);
        if (m_items.at(i)->text(ValueColumn) != text) {
            m_items.at(i)->setText(ValueColumn, text);
        }
        annotate(i);
    }
}

void PropertyEditor::rebuild() {
    if (m_isCommitting) {
        // The view hasn't done with the field that commits.
        QMetaObject::invokeMethod(this, &PropertyEditor::rebuild, Qt::QueuedConnection);
        return;
    }
    m_items.clear();
    m_tree->clear();
    m_rows = propertyRowsOf(m_object);
    m_title->setText(propertyTitleOf(m_object));
    QHash<QString, QTreeWidgetItem*> groups;
    for (int i = 0; i < m_rows.size(); ++i) {
        const PropertyRow& row = m_rows.at(i);
        QTreeWidgetItem*& group = groups[row.group];
        if (!group) {
            group = new QTreeWidgetItem(m_tree, {row.group});
            group->setFirstColumnSpanned(true);
            group->setFlags(Qt::ItemIsEnabled);
            group->setExpanded(true);
        }
        const QString text = row.text(m_object);
        auto* item = new QTreeWidgetItem(group, {row.name, text});
        item->setData(ValueColumn, RowRole, i);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable |
                       (isEditable(row) ? Qt::ItemIsEditable : Qt::NoItemFlags));
        item->setDisabled(!row.writable);
        m_items.append(item);
        annotate(i);
    }
}

void PropertyEditor::annotate(int row) {
    QTreeWidgetItem* item = m_items.at(row);
    const PropertyRow::Note note = m_rows.at(row).note(m_object);
    item->setToolTip(ValueColumn, note.text.isEmpty() ? item->text(ValueColumn) : note.text);
    item->setData(ValueColumn, Qt::ForegroundRole,
                  note.isProblem ? QVariant(QBrush(ProblemColor)) : QVariant());
}

#pragma once

#include "IPropertyEditor.h"
#include "PropertyEditorRows.h"

#include <QPointer>
#include <QVector>
#include <QWidget>

#include <initializer_list>

class QLabel;
class QMetaMethod;
class QTreeWidget;
class QTreeWidgetItem;

/// The property panel: the properties of one object by group. An edit goes to the object at once;
/// what the object made of it is read back, and reported only if it is something new. The object is
/// not owned and may die while it is shown.
class PropertyEditor : public QWidget, public IPropertyEditor {
    Q_OBJECT
    Q_INTERFACES(IPropertyEditor)
    Q_PROPERTY(bool ReadOnly READ isReadOnly WRITE setReadOnly)

public:
    explicit PropertyEditor(QWidget* parent = nullptr);
    ~PropertyEditor() override;

    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);

    QObject* containerObject() override { return this; }
    void setObject(QObject* object, bool forceReload) override;
    QObject* object() override { return m_object; }

    /// What the in-place editors work on: the row behind a line of the tree, null for a group.
    const PropertyRow* rowAt(const QModelIndex& index) const;
    bool isEditable(const PropertyRow& row) const { return row.writable && !m_readOnly; }
    void commit(const PropertyRow& row, const QVariant& value);

    /// Starts editing the first parameter of the object, or, without one, its first value.
    Q_INVOKABLE void editFirstValue();

signals:
    /// An edit was ended by Return or given up by Escape.
    void editEnded();
    void propertyValueChanged(QObject* object, QString name, QVariant oldValue, QVariant newValue);

private slots:
    /// Changes often come in swarms; the panel reads the object once after the last of them.
    void scheduleRefresh();

private:
    void watch(QObject* object);
    /// Names that the object doesn't have are passed over.
    void refreshAt(QObject* object, std::initializer_list<const char*> signalNames);
    void refreshAt(QObject* object, const QMetaMethod& signal);
    void tellRefusal(const PropertyRow& row, const QVariant& value);
    void refresh();
    void rebuild();
    /// Tells of a value that refers to global parameters what it amounts to.
    void annotate(int row);

    QPointer<QObject> m_object;
    /// Whose global parameters the values may refer to.
    QPointer<QObject> m_circuit;
    QVector<PropertyRow> m_rows;
    /// The line of each row, owned by the tree.
    QVector<QTreeWidgetItem*> m_items;
    QLabel* m_title = nullptr;
    QTreeWidget* m_tree = nullptr;
    bool m_readOnly = false;
    bool m_refreshScheduled = false;
    bool m_isCommitting = false;
};

#pragma once

#include <QAbstractItemDelegate>
#include <QLineEdit>
#include <QPointer>

class COutputVariablesWidget;
class COutputVariablesWidgetData;
class ICircuitOutputVariable;

/// Paints the rows of the output variables list, with texts made at every paint, and edits the
/// variable's bare name in place. The sizes are those of the delegate that it wraps.
class COutputVariablesWidgetDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    /// Neither `wrappedDelegate`, which may be null, nor `data` is owned.
    COutputVariablesWidgetDelegate(QAbstractItemDelegate* wrappedDelegate, QObject* parent,
                                   COutputVariablesWidgetData* data);

    /// The panel that is told when an edit is done.
    void setWidget(COutputVariablesWidget* widget) { m_widget = widget; }
    /// The open name editor, which from now on tells the panel nothing; null if none is open.
    QLineEdit* takeLineEdit();

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    /// Escape gives an open edit up.
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    /// The same for Escape within the editor, which the view lets this object watch.
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void giveUpEdit();

    QAbstractItemDelegate* m_wrappedDelegate;
    COutputVariablesWidgetData* m_data;
    // Made by a const function of the base; the view deletes it when it likes.
    mutable QPointer<QLineEdit> m_lineEdit;
    COutputVariablesWidget* m_widget = nullptr;
};

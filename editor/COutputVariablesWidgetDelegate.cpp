#include "COutputVariablesWidgetDelegate.h"

#include "COutputVariablesWidget.h"
#include "COutputVariablesWidgetData.h"
#include "ICircuitOutputVariable.h"
#include "ItemData.h"

#include <QKeyEvent>
#include <QPainter>

namespace {

ICircuitOutputVariable* variableAt(const QModelIndex& index) {
    return index.data(Qt::UserRole).value<ItemData>().outputVariable;
}

bool isEscape(const QEvent* event) {
    return event->type() == QEvent::KeyPress &&
           static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape;
}

}  // namespace

COutputVariablesWidgetDelegate::COutputVariablesWidgetDelegate(
    QAbstractItemDelegate* wrappedDelegate, QObject* parent, COutputVariablesWidgetData* data)
    : QAbstractItemDelegate(parent), m_wrappedDelegate(wrappedDelegate), m_data(data) {}

void COutputVariablesWidgetDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                           const QModelIndex& index) const {
    if (!index.isValid()) {
        if (m_wrappedDelegate) {
            m_wrappedDelegate->paint(painter, option, index);
        }
        return;
    }
    const QString text = m_data->outvarText(variableAt(index));
    const QPalette& palette = option.palette;
    if (option.state & QStyle::State_Selected) {
        painter->fillRect(option.rect, palette.brush(QPalette::Current, QPalette::Highlight));
        painter->setPen(palette.color(QPalette::Current, QPalette::HighlightedText));
    }
    painter->drawText(option.rect, Qt::AlignLeft | Qt::AlignVCenter, text);
    painter->setPen(palette.color(QPalette::Current, QPalette::Text));
}

QSize COutputVariablesWidgetDelegate::sizeHint(const QStyleOptionViewItem& option,
                                               const QModelIndex& index) const {
    return m_wrappedDelegate ? m_wrappedDelegate->sizeHint(option, index) + QSize(4, 4)
                             : QSize(25, 25);
}

QWidget* COutputVariablesWidgetDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                                      const QModelIndex& index) const {
    ICircuitOutputVariable* variable = variableAt(index);
    if (!index.isValid() || !variable) {
        return nullptr;
    }
    m_lineEdit = new QLineEdit(parent);
    m_lineEdit->setText(variable->name());
    if (m_widget) {
        connect(m_lineEdit, SIGNAL(editingFinished()), m_widget,
                SLOT(on_variableNameEditingDone()));
    }
    return m_lineEdit;
}

void COutputVariablesWidgetDelegate::setEditorData(QWidget* editor,
                                                   const QModelIndex& index) const {
    auto* line = qobject_cast<QLineEdit*>(editor);
    ICircuitOutputVariable* variable = variableAt(index);
    if (line && variable) {
        line->setText(variable->name());
    }
}

void COutputVariablesWidgetDelegate::setModelData(QWidget* editor, QAbstractItemModel*,
                                                  const QModelIndex& index) const {
    auto* line = qobject_cast<QLineEdit*>(editor);
    ICircuitOutputVariable* variable = variableAt(index);
    if (line && variable) {
        variable->setName(line->text());
    }
}

void COutputVariablesWidgetDelegate::updateEditorGeometry(QWidget* editor,
                                                          const QStyleOptionViewItem& option,
                                                          const QModelIndex& index) const {
    if (index.isValid()) {
        editor->setGeometry(option.rect);
    }
}

bool COutputVariablesWidgetDelegate::editorEvent(QEvent* event, QAbstractItemModel*,
                                                 const QStyleOptionViewItem&, const QModelIndex&) {
    if (!isEscape(event)) {
        return false;
    }
    giveUpEdit();
    return true;
}

bool COutputVariablesWidgetDelegate::eventFilter(QObject* object, QEvent* event) {
    if (object != m_lineEdit || !isEscape(event)) {
        return false;
    }
    giveUpEdit();
    return true;
}

QLineEdit* COutputVariablesWidgetDelegate::takeLineEdit() {
    QLineEdit* editor = m_lineEdit;
    m_lineEdit = nullptr;
    if (editor && m_widget) {
        // The editor reports the end of editing once more when it loses the focus.
        editor->disconnect(m_widget);
    }
    return editor;
}

void COutputVariablesWidgetDelegate::giveUpEdit() {
    const QPointer<QLineEdit> editor(takeLineEdit());
    if (!editor) {
        return;
    }
    emit closeEditor(editor, NoHint);
    // Later: the key may still be on its way through the editor. The view has said the same of an
    // editor that it knows.
    if (editor) {
        editor->deleteLater();
    }
}

#include "CDeleteCircuitNodeDialog.h"

#include "CCircuitEditor.h"
#include "CCircuitEditorNodeItem.h"
#include "GlViewport.h"
#include "ICircuit.h"
#include "ICircuitElement.h"
#include "ICircuitNode.h"
#include "InterfacePointer.h"
#include "ui_CDeleteCircuitNodeDialog.h"

#include <QEvent>

class CDeleteCircuitNodeDialogData {
public:
    ICircuitNode* circuitNode = nullptr;
    CCircuitEditorNodeItem* circuitNodeItem = nullptr;
    InterfacePointer<ICircuit> circuit;
    QPointer<CCircuitEditor> circuitEditor;
    Ui_CDeleteCircuitNodeDialog form;

    void addRow(const QString& text, Qt::CheckState state, const QVariant& terminal = {}) {
        auto* row = new QListWidgetItem(text, form.listWidget);
        row->setCheckState(state);
        row->setData(Qt::UserRole, terminal);
    }
};

CDeleteCircuitNodeDialog::CDeleteCircuitNodeDialog(QWidget* parent)
    : QDialog(parent), d(std::make_unique<CDeleteCircuitNodeDialogData>()) {
    qRegisterMetaType<ICircuitElementNode*>("ICircuitElementNode*");
    d->form.setupUi(this);
    QGraphicsView* view = d->form.graphicsView;
    if (QWidget* gl = makeGlViewport(view)) {
        view->setViewport(gl);
    }
    view->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                         QPainter::SmoothPixmapTransform);
    view->installEventFilter(this);
    // The wheel reaches the view through its viewport alone.
    view->viewport()->installEventFilter(this);
}

CDeleteCircuitNodeDialog::~CDeleteCircuitNodeDialog() = default;

CCircuitEditor* CDeleteCircuitNodeDialog::circuitEditor() const {
    return d->circuitEditor;
}

void CDeleteCircuitNodeDialog::setCircuitEditor(CCircuitEditor* editor) {
    d->circuitEditor = editor;
    d->circuit = editor ? editor->circuit() : nullptr;
    if (editor) {
        d->form.graphicsView->setScene(editor->scene());
        d->form.graphicsView->setInteractive(false);
    }
}

ICircuit* CDeleteCircuitNodeDialog::circuit() const {
    return d->circuit;
}

void CDeleteCircuitNodeDialog::setCircuit(ICircuit* circuit) {
    d->circuit = circuit;
}

ICircuitNode* CDeleteCircuitNodeDialog::circuitNode() const {
    return d->circuitNode;
}

void CDeleteCircuitNodeDialog::setCirucitNode(ICircuitNode* node) {
    if (node == d->circuitNode) {
        return;
    }
    d->circuitNode = node;
    d->circuitNodeItem = d->circuitEditor ? d->circuitEditor->nodeItem(node) : nullptr;
    d->form.listWidget->clear();
    if (node) {
        d->addRow(QStringLiteral("Whole node"), Qt::Checked);
        for (int i = 2; i < node->elementNodeCount(); ++i) {
            ICircuitElementNode* terminal = node->elementNode(i);
            d->addRow(
                QStringLiteral("%1 of %2").arg(terminal->name(), terminal->element()->caption()),
                Qt::Unchecked, QVariant::fromValue(terminal));
        }
    }
    fitNodeInView();
}

bool CDeleteCircuitNodeDialog::deleteWholeNode() const {
    const QListWidgetItem* row = d->form.listWidget->item(0);
    return row && row->checkState() == Qt::Checked;
}

QList<ICircuitElementNode*> CDeleteCircuitNodeDialog::selectedElementNodes() const {
    QList<ICircuitElementNode*> terminals;
    for (int i = 1; i < d->form.listWidget->count(); ++i) {
        const QListWidgetItem* row = d->form.listWidget->item(i);
        if (row->checkState() == Qt::Checked) {
            terminals.append(row->data(Qt::UserRole).value<ICircuitElementNode*>());
        }
    }
    return terminals;
}

void CDeleteCircuitNodeDialog::fitNodeInView() {
    // The wire may have gone while the dialog was open: it is only compared before it is used.
    if (!d->circuitNodeItem || !d->circuitEditor ||
        d->circuitEditor->nodeItem(d->circuitNode) != d->circuitNodeItem) {
        return;
    }
    d->circuitNodeItem->setSelected(true);
    const QRectF place =
        d->circuitNodeItem->mapToScene(d->circuitNodeItem->boundingRect()).boundingRect();
    d->form.graphicsView->fitInView(place, Qt::KeepAspectRatio);
}

bool CDeleteCircuitNodeDialog::eventFilter(QObject* object, QEvent* event) {
    if (object == d->form.graphicsView && event->type() == QEvent::Resize) {
        // The view's size isn't final yet.
        QMetaObject::invokeMethod(this, "fitNodeInView", Qt::QueuedConnection);
    }
    return event->type() == QEvent::Wheel;
}

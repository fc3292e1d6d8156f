#include "CElementPropertySelectionDialog.h"

#include "CCircuitView.h"
#include "ICircuitElement.h"
#include "InterfacePointer.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr int LabelPointSize = 16;
constexpr QSize DialogSize(640, 480);

}  // namespace

class CElementPropertySelectionDialogData {
public:
    CCircuitView* circuitView = nullptr;
    QLabel* label = nullptr;
    InterfacePointer<ICircuitElement> element;
    QString propertyName;
};

CElementPropertySelectionDialog::CElementPropertySelectionDialog(QWidget* parent)
    : QDialog(parent), d(std::make_unique<CElementPropertySelectionDialogData>()) {
    d->circuitView = new CCircuitView(this);
    d->label = new QLabel(this);
    d->label->setFont(QFont(font().family(), LabelPointSize));
    auto* buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(d->label);
    layout->addWidget(d->circuitView);
    layout->addWidget(buttons);
    setWindowTitle(QStringLiteral("Element-Property Selection Dialog"));
    setFixedSize(DialogSize);
    updateElementPropertyDisplay();
}

CElementPropertySelectionDialog::~CElementPropertySelectionDialog() = default;

void CElementPropertySelectionDialog::setElementProperty(ICircuitElement* element,
                                                         const QString& propertyName) {
    d->element = element;
    d->propertyName = propertyName;
    d->circuitView->viewport()->update();
    updateElementPropertyDisplay();
}

ICircuitElement* CElementPropertySelectionDialog::element() const {
    return d->element;
}

QString CElementPropertySelectionDialog::propertyName() const {
    return d->propertyName;
}

void CElementPropertySelectionDialog::updateElementPropertyDisplay() {
    ICircuitElement* element = d->element;
    d->label->setText(element ? QStringLiteral("%1 - %2").arg(element->name(), d->propertyName)
                              : QStringLiteral("No element selected"));
}

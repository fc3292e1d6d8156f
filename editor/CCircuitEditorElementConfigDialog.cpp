#include "CCircuitEditorElementConfigDialog.h"

#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "IElementBasicParametersDesc.h"
#include "ui_CCircuitEditorElementConfigDialog.h"

#include <Plexa/DataStore.h>

class CCircuitEditorElementConfigDialogData {
public:
    Ui_CCircuitEditorElementConfigDialog form;
    ICircuitElement* circuitElement = nullptr;
};

CCircuitEditorElementConfigDialog::CCircuitEditorElementConfigDialog(QWidget* parent)
    : QDialog(parent), d(std::make_unique<CCircuitEditorElementConfigDialogData>()) {
    d->form.setupUi(this);
}

CCircuitEditorElementConfigDialog::~CCircuitEditorElementConfigDialog() = default;

ICircuitElement* CCircuitEditorElementConfigDialog::circuitElement() const {
    return d->circuitElement;
}

void CCircuitEditorElementConfigDialog::setCircuitElement(ICircuitElement* element) {
    d->form.lstOutVars->clear();
    d->circuitElement = element;
    if (!element) {
        return;
    }
    void* basic = nullptr;
    element->desc()->queryInterface(QStringLiteral("IElementBasicParametersDesc"), &basic);
    if (!basic) {
        return;
    }
    auto* parameters = static_cast<IElementBasicParametersDesc*>(basic);
    d->form.lstOutVars->addItems(parameters->outputVariables().keys());
    void* mixed = nullptr;
    element->desc()->queryInterface(QStringLiteral("IGeneralMixedElementDesc"), &mixed);
    if (!mixed) {
        d->form.lstOutVars->addItems(parameters->realParameters().keys());
    }
}

// The tables of the interfaces, which hosts and plug-ins built elsewhere count on.

#include "IAboutData.h"
#include "ICanvas.h"
#include "ICircuit.h"
#include "ICircuitEditor.h"
#include "ICircuitEditorExt.h"
#include "ICircuitEditorExt2.h"
#include "ICircuitElement.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementFactory.h"
#include "ICircuitElementNode.h"
#include "ICircuitElementVisual.h"
#include "ICircuitGlobalVariableChangeNameSupport.h"
#include "ICircuitNode.h"
#include "ICircuitOutputVariable.h"
#include "ICircuitOutputVariableReorderSupport.h"
#include "ICircuitSolver.h"
#include "ICircuitSolverEx.h"
#include "ICircuitStringGlobalVariableSupport.h"
#include "ICircuitTitle.h"
#include "IClipboard.h"
#include "IEditableProperties.h"
#include "IElementBasicParametersDesc.h"
#include "IElementExplorer.h"
#include "IProjectExt.h"
#include "IProjectPart.h"
#include "IPropertyEditor.h"
#include "IQObjectLoadSave.h"
#include "ISubCircuitElementDesc.h"
#include "IXmlUtils.h"

#include <Plexa/IComponentPlugin.h>

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

/// Place in its class's table of the virtual operation that a member pointer names. On the platform
/// that the program is built for, such a pointer holds one more than the offset in bytes.
template <class Member>
int entryOf(Member member) {
    std::size_t word = 0;
    std::memcpy(&word, &member, sizeof word);
    return int((word - 1) / sizeof(void*));
}

template <class... Members>
void expectTable(int first, Members... members) {
    const std::vector<int> entries{entryOf(members)...};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i], first + int(i)) << "operation " << i << " of the table";
    }
}

/// `containerObject()` comes before an interface's own operations.
#define OWN(Interface, ...)          \
    {                                \
        SCOPED_TRACE(#Interface);    \
        using I = Interface;         \
        expectTable(1, __VA_ARGS__); \
    }

}  // namespace

TEST(Interfaces, HaveTheirOperationsWhereOthersLookForThem) {
    expectTable(0, &IContainer::containerObject);
    expectTable(0, &IInterfaceQuery::queryInterface);
    expectTable(0, &IComponentPlugin::componentName, &IComponentPlugin::registerComponent,
                &IComponentPlugin::componentMeta, &IComponentPlugin::buildKey);
    OWN(ICircuit, &I::circuitSolver, &I::addElement, &I::removeElement, &I::elementCount,
        &I::element, &I::removeNode, &I::nodeCount, &I::node, &I::nodes, &I::clear,
        &I::addGlobalVariable, &I::removeGlobalVariable, &I::globalVariableCount,
        &I::globalVariableName, &I::isRealGlobalVariable, &I::globalVariableValue,
        qOverload<ICircuitElement*, QString>(&I::addOutputVariable),
        qOverload<ICircuitElement*, ICircuitElementNode*>(&I::addOutputVariable),
        qOverload<ICircuitNode*>(&I::addOutputVariable), &I::removeOutputVariable, &I::modelCount,
        &I::modelName, &I::modelFile)
    OWN(ICircuitElement, &I::name, &I::caption, &I::setCaption, &I::circuit, &I::visual, &I::desc,
        &I::elementNodeNames, &I::elementNode, &I::flip, &I::rotation, &I::setModelName,
        &I::modelName)
    OWN(ICircuitElementVisual, &I::pixmap, &I::pictureOffset, &I::renderer)
    OWN(ICircuitElementDesc, &I::label, &I::elementType, &I::category, &I::info)
    OWN(IElementBasicParametersDesc, &I::realParameters, &I::outputVariables, &I::outputACVariables)
    OWN(ISubCircuitElementDesc, &I::subCircuitInfo)
    OWN(ICircuitElementNode, &I::element, &I::name, &I::type, &I::position, &I::color)
    OWN(ICircuitNode, &I::circuit, &I::elementNodeCount, &I::elementNode, &I::setName, &I::name,
        &I::wireClearance, &I::type)
    OWN(ICircuitOutputVariable, &I::name, &I::setName, &I::setAC, &I::isAC, &I::type, &I::element,
        &I::elementNode, &I::node, &I::elementVarName)
    OWN(ICircuitTitle, &I::setTitle, &I::title)
    OWN(ICircuitStringGlobalVariableSupport, &I::addStringGlobalVariable,
        &I::isStringGlobalVariable)
    OWN(ICircuitGlobalVariableChangeNameSupport, &I::changeGlobalVariableName)
    OWN(ICircuitOutputVariableReorderSupport, &I::moveOutputVariable)
    OWN(IEditableProperties, &I::propertyCount, &I::propertyName, &I::propertyGroup,
        &I::propertyValue, &I::setPropertyValue, &I::propertyValueString)
    OWN(ICircuitSolver, &I::circuitSolverName, &I::circuit,
        qOverload<ICircuitElementNode*, ICircuitElementNode*>(&I::makeConnection),
        qOverload<ICircuitElementNode*, ICircuitNode*>(&I::makeConnection),
        qOverload<ICircuitNode*>(&I::breakConnection),
        qOverload<ICircuitElementNode*, ICircuitNode*>(&I::breakConnection),
        qOverload<ICircuitElement*>(&I::disconnectElement),
        qOverload<ICircuitElement*, ICircuitElement*>(&I::disconnectElement))
    OWN(ICircuitSolverEx, &I::makeConnection)
    OWN(ICircuitElementFactory, &I::createElement)
    OWN(IPropertyEditor, &I::setObject, &I::object)
    OWN(IElementExplorer, &I::selectedElementName)
    OWN(IXmlUtils, &I::findElements, &I::findElement, &I::loadBinaryData)
    OWN(IQObjectLoadSave, &I::save, &I::load)
    OWN(IClipboard, &I::addContext, &I::setActiveContext, &I::addData, &I::dataCount, &I::data)
    OWN(IProjectExt, &I::projectFileName)
    OWN(IAboutData, &I::productName, &I::organization, &I::programLogo, &I::version,
        &I::shortDescription, &I::homepage, &I::bugAddress, &I::authors, &I::credits, &I::license,
        &I::copyrightStatement)
    OWN(ICanvas, &I::graphicsView, &I::graphicsScene, &I::setZoomLevel, &I::zoomIn, &I::zoomOut,
        &I::zoomFull, &I::zoomOne, &I::zoomFit, &I::bringToCenter, &I::cut, &I::copy,
        qOverload<>(&I::paste), qOverload<QPointF>(&I::paste), &I::clear, &I::snapToGrid, &I::undo,
        &I::redo, &I::zoomLevelChanged, &I::zoomScaleChanged, &I::canvasClickEvent,
        &I::canvasDoubleClickEvent, &I::canvasContextMenuEvent, &I::canUndoChanged,
        &I::canRedoChanged)
    OWN(ICircuitEditor, &I::canvas, &I::save, &I::load, qOverload<ICircuitNode*>(&I::highlight),
        qOverload<ICircuitElement*>(&I::highlight), qOverload<ICircuitElementNode*>(&I::highlight),
        &I::unhighlight, &I::elementClickEvent, &I::elementDoubleClickEvent,
        &I::elementContextMenuEvent, &I::nodeClickEvent, &I::nodeDoubleClickEvent,
        &I::nodeContextMenuEvent, &I::elementSelected, &I::elementUnselected, &I::nodeSelected,
        &I::nodeUnselected)
    OWN(IProjectPart, &I::projectPartID, &I::newProjectPart, &I::loadProjectPart,
        &I::initializeProjectPart, &I::saveProjectPart, &I::closeProjectPart,
        &I::projectPartModified)
    OWN(ICircuitEditorExt, &I::typeOfItem, &I::elementFromItem, &I::elementNodeFromItem,
        &I::circuitNodeFromItem, qOverload<ICircuitElement*>(&I::itemFor),
        qOverload<ICircuitElementNode*>(&I::itemFor), qOverload<ICircuitNode*>(&I::itemFor))
    OWN(ICircuitEditorExt2, &I::setQObjectLoadSave, &I::qobjectLoadSave, &I::setMathUtils,
        &I::mathUtils, &I::setClipboard, &I::clipboard, &I::setClipboardWidget, &I::clipboardWidget,
        &I::setPropertyEditor, &I::propertyEditor, &I::setCircuitSolver, &I::circuitSolver,
        &I::setCircuit, &I::circuit, &I::setCircuitElementFactory, &I::circuitElementFactory,
        &I::setElementExplorer, &I::elementExplorer, &I::setXmlUtils, &I::xmlUtils, &I::setReadOnly,
        &I::isReadOnly)
}

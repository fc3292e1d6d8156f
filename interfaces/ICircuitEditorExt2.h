#pragma once

#include "IContainer.h"

class ICircuit;
class ICircuitElementFactory;
class ICircuitSolver;
class IClipboard;
class IClipboardWidget;
class IElementExplorer;
class IMathUtils;
class IPropertyEditor;
class IQObjectLoadSave;
class IXmlUtils;

/// The editor's collaborators. None is owned; each may be null, and the features that rest on it
/// are then absent.
class ICircuitEditorExt2 : public virtual IContainer {
public:
    virtual void setQObjectLoadSave(IQObjectLoadSave* service) = 0;
    virtual IQObjectLoadSave* qobjectLoadSave() const = 0;
    virtual void setMathUtils(IMathUtils* service) = 0;
    virtual IMathUtils* mathUtils() const = 0;
    virtual void setClipboard(IClipboard* clipboard) = 0;
    virtual IClipboard* clipboard() const = 0;
    virtual void setClipboardWidget(IClipboardWidget* widget) = 0;
    virtual IClipboardWidget* clipboardWidget() const = 0;
    virtual void setPropertyEditor(IPropertyEditor* editor) = 0;
    virtual IPropertyEditor* propertyEditor() const = 0;
    /// Binds the editor to the solver's circuit and draws what it holds.
    virtual void setCircuitSolver(ICircuitSolver* solver) = 0;
    virtual ICircuitSolver* circuitSolver() const = 0;
    /// Fills a fresh editor with the static picture of a sub-circuit; null does nothing.
    virtual void setCircuit(ICircuit* circuit) = 0;
    /// The solver's circuit; null without a solver.
    virtual ICircuit* circuit() const = 0;
    virtual void setCircuitElementFactory(ICircuitElementFactory* factory) = 0;
    virtual ICircuitElementFactory* circuitElementFactory() const = 0;
    virtual void setElementExplorer(IElementExplorer* explorer) = 0;
    virtual IElementExplorer* elementExplorer() const = 0;
    virtual void setXmlUtils(IXmlUtils* service) = 0;
    virtual IXmlUtils* xmlUtils() const = 0;
    virtual void setReadOnly(bool readOnly) = 0;
    virtual bool isReadOnly() const = 0;

protected:
    ~ICircuitEditorExt2() = default;
};

Q_DECLARE_INTERFACE(ICircuitEditorExt2, "com.tesmira.ICircuitEditorExt2/1.0")

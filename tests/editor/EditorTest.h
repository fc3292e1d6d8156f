#pragma once

#include "CCircuitEditor.h"
#include "Circuit.h"
#include "CircuitElement.h"
#include "CircuitNode.h"
#include "CircuitSolver.h"
#include "ElementFactory.h"
#include "ElementLibrary.h"
#include "ICircuitElementDesc.h"
#include "ICircuitElementNode.h"
#include "ObjectLoadSave.h"
#include "XmlUtils.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <memory>

class CCircuitEditorElementItem;
class CCircuitEditorElementNodeItem;
class CCircuitEditorNodeItem;

/// The element types that the workbench ships, loaded once.
const ElementLibrary& shippedLibrary();

/// An editor on the reference model, with all collaborators that need no window.
class EditorTest : public testing::Test {
protected:
    EditorTest();
    ~EditorTest() override;

    /// Adds an element at a position in scene units.
    CircuitElement* add(const char* type, QPointF position);
    /// Joins two terminals, named "R1.p".
    ICircuitNode* join(const char* first, const char* second);
    CircuitElement* element(const QString& name);
    ICircuitElementNode* terminal(const QString& name);

    CCircuitEditorElementItem* itemOf(ICircuitElement* element);
    CCircuitEditorNodeItem* itemOf(ICircuitNode* node);
    CCircuitEditorElementNodeItem* itemOf(ICircuitElementNode* terminal);
    /// Scene position of a terminal.
    QPointF placeOf(const char* terminalName);

    QString tempFile(const QString& name) const { return m_folder.filePath(name); }

    Circuit circuit;
    CircuitSolver solver{&circuit};
    ElementFactory factory{shippedLibrary()};
    XmlUtils xmlUtils;
    ObjectLoadSave loadSave;
    std::unique_ptr<CCircuitEditor> editor;

private:
    QTemporaryDir m_folder;
};

/// The points of a path, for comparing.
std::vector<QPointF> pathPoints(const QPainterPath& path);

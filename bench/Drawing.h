#pragma once

#include "CCircuitEditor.h"
#include "Circuit.h"
#include "CircuitSolver.h"
#include "ElementFactory.h"
#include "ElementLibrary.h"
#include "ObjectLoadSave.h"
#include "XmlUtils.h"

#include <QTemporaryDir>

#include <memory>

/// An editor on the reference model, and a file with a generated circuit for it. The editor is
/// never shown.
class Drawing {
public:
    explicit Drawing(int elementCount);
    explicit Drawing(const QByteArray& circuitFile);

    /// Loads the file. What was drawn before goes first.
    void load();
    /// Runs what the scene has put off until the event loop, as a window does by itself.
    void settle();
    /// Empties the drawing and destroys what the model has only dropped.
    void clear();
    QString outputFile(const QString& name) const { return m_folder.filePath(name); }

    Circuit circuit;
    CircuitSolver solver{&circuit};
    ElementFactory factory;
    XmlUtils xmlUtils;
    ObjectLoadSave loadSave;
    std::unique_ptr<CCircuitEditor> editor;

private:
    QTemporaryDir m_folder;
    QString m_file;
};

#pragma once

#include "ElementDescription.h"

#include <QString>
#include <QStringList>

#include <QVector>

#include <map>
#include <memory>

class SubCircuitDescription;

/// The element types of an application, by complete name. Owns their descriptions, and so outlives
/// every element of these types.
class ElementLibrary {
public:
    ElementLibrary();
    ~ElementLibrary();
    ElementLibrary(const ElementLibrary&) = delete;
    ElementLibrary& operator=(const ElementLibrary&) = delete;

    /// Adds the types of a folder that holds one folder per library. A file that can't be used adds
    /// to `problems()` and is passed over, and so is a type that is known already. A sub-circuit
    /// may contain types of this folder and of those loaded before; one that contains itself is
    /// refused. True if nothing was wrong.
    bool load(const QString& folder);
    /// One sentence each, with the file's name.
    const QStringList& problems() const { return m_problems; }

    /// Complete names, sorted.
    QStringList types() const;
    /// Null for an unknown type. A type whose name tells all there is to know of it is made when it
    /// is first asked for; see `NetlistType`, `BoxType` and
    /// `DrawingType`.
    ElementDescription* description(const QString& type) const;

private:
    struct NewSubCircuit {
        QString fileName;
        SubCircuitDescription* description;
    };

    void loadFile(const QString& fileName, QVector<NewSubCircuit>* subCircuits);
    void refuseCircles(QVector<NewSubCircuit>* subCircuits);

    std::map<QString, std::unique_ptr<ElementDescription>> m_descriptions;
    // Made of their names.
    mutable std::map<QString, std::unique_ptr<ElementDescription>> m_named;
    mutable int m_depth = 0;  // of drawings that are being made
    QStringList m_problems;
};

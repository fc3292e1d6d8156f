#pragma once

#include "ElementTypeData.h"

class QJsonObject;

/// Reads the JSON file of one element type and checks it. Every complaint is one sentence that
/// begins with the file's name.
class ElementTypeReader {
public:
    explicit ElementTypeReader(QString fileName);

    /// False if anything is wrong; `problems()` then says what.
    bool read(ElementTypeData* data);
    const QStringList& problems() const { return m_problems; }

private:
    void complain(const QString& reason);
    /// Instead of all that follows: see `NetlistType`.
    void readNetlist(const QString& netlist);
    void readTerminals(const QJsonObject& root);
    void readParameters(const QJsonObject& root);
    void readPicture(const QJsonObject& root);
    void readInside(const QJsonObject& root);
    void readSpice(const QJsonObject& root);
    /// Complains about a placeholder in a text for the simulator that means nothing.
    void checkPlaceholders(const QString& text);
    /// False, with a complaint, unless the name is good and new among the type's properties.
    bool claimName(const QString& name, const QString& kind);
    void checkReferences();

    QString m_fileName;
    ElementTypeData m_data;
    QStringList m_names;
    QStringList m_problems;
};

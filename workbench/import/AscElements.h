#pragma once

#include "AscPins.h"

#include <QPair>

#include <functional>

class ElementLibrary;

/// What the workbench makes of a symbol.
struct ImportedElement {
    QString name;
    /// Empty for a box, whose type depends on where its terminals are.
    QString type;
    QString model;
    QVector<QPair<QString, QString>> parameters;
    /// The terminals of the type, as the pins are.
    QStringList terminals;

    /// Of a box.
    QString label;
    QChar device;
    QString line;
};

/// What the directives of the sheet say that elements need.
struct AscContext {
    QHash<QString, QString> parameters;  ///< as they are spelt, by their lower case
    /// Tells whether a device model is known, be it by the library or by the sheet.
    std::function<bool(const QString&)> knowsModel;
    /// Whether sources are asked for their small-signal value.
    bool isSmallSignal = false;
};

/// Maps symbols to element types. What has no type, or a value that its type doesn't take, becomes
/// a box, and a remark says so, but for those of sub-circuits.
class AscElements {
public:
    AscElements(const ElementLibrary& library, AscContext context, QStringList* remarks)
        : m_library(library), m_context(std::move(context)), m_remarks(remarks) {}

    ImportedElement elementOf(const AscDevice& device);

private:
    using Assignments = QVector<QPair<QString, QString>>;

    bool map(const AscDevice& device, ImportedElement* element);
    bool mapPassive(const AscDevice& device, ImportedElement* element);
    bool mapSource(const AscDevice& device, ImportedElement* element);
    bool mapWaveform(bool isVoltage, const QString& text, ImportedElement* element);
    bool mapSemiconductor(const AscDevice& device, ImportedElement* element);
    bool mapSwitch(const AscDevice& device, ImportedElement* element);
    /// The values of the list that the type of the element has take effect, the others are told.
    void takeExtras(const QString& text, const QHash<QString, QString>& known,
                    ImportedElement* element);
    QString value(const QString& text) const;
    bool doesFit(const ImportedElement& element) const;
    ImportedElement boxOf(const AscDevice& device);
    void remark(const ImportedElement& element, const QString& text);

    const ElementLibrary& m_library;
    AscContext m_context;
    QStringList* m_remarks;
};

#pragma once

#include "AscPins.h"
#include "BoxType.h"
#include "ImportedDrawing.h"

#include <QHash>

#include <functional>
#include <optional>

/// Makes sub-circuit types of symbols whose circuits are schematics that lie beside the sheet.
class AscBlocks {
public:
    /// The drawing of a file with remarks, which begin with its elements' names; nothing if it
    /// can't be read, or would be inside of itself.
    using Reader = std::function<std::optional<ImportedDrawing>(const QString& fileName,
                                                                QStringList* remarks)>;

    AscBlocks(QString folder, Reader reader, QStringList* remarks)
        : m_folder(std::move(folder)), m_reader(std::move(reader)), m_remarks(remarks) {}

    /// The complete name of the type with the box's looks, with the values that are assigned to the
    /// inside's parameters. Empty, with a remark, if there is no schematic or it lacks a net for a
    /// terminal.
    QString typeOf(const AscDevice& device, const BoxType& box, const QString& name,
                   const QString& assignments);
    /// The device models that the drawings define, for the sheet to define them, too.
    const QStringList& directives() const { return m_directives; }

private:
    std::optional<ImportedDrawing> read(const QString& fileName);

    QString m_folder;
    Reader m_reader;
    QStringList* m_remarks;
    QHash<QString, std::optional<ImportedDrawing>> m_drawings;
    QStringList m_directives;
};

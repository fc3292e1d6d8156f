#include "AscBlocks.h"

#include "AscValues.h"
#include "DrawingType.h"
#include "ProjectFile.h"
#include "SpiceModels.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Import", text);
}

void assign(const QString& assignments, ImportedDrawing* drawing) {
    QHash<QString, QString> spelling;
    for (const auto& parameter : qAsConst(drawing->parameters)) {
        spelling.insert(parameter.first.toLower(), parameter.first);
    }
    for (const auto& assignment : AscValues::assignments(assignments)) {
        const QString value = AscValues::value(assignment.second);
        const QString name = spelling.value(assignment.first.toLower(), assignment.first);
        auto& parameters = drawing->parameters;
        parameters.erase(std::remove_if(parameters.begin(), parameters.end(),
                                        [&name](const auto& known) { return known.first == name; }),
                         parameters.end());
        parameters.append({name, value.isNull() ? assignment.second : value});
    }
}

QString typeName(const BoxType& box, const ImportedDrawing& drawing) {
    ProjectFile project;
    drawing.write(&project);
    QDomDocument part;
    part.appendChild(part.importNode(project.part(QLatin1String(ProjectFile::CircuitPart)), true));
    return DrawingType::nameFor(box, part);
}

}  // namespace

std::optional<ImportedDrawing> AscBlocks::read(const QString& fileName) {
    const auto known = m_drawings.constFind(fileName);
    if (known != m_drawings.constEnd()) {
        return *known;
    }
    QStringList remarks;
    auto drawing = m_reader(fileName, &remarks);
    for (const QString& remark : qAsConst(remarks)) {
        m_remarks->append(QFileInfo(fileName).fileName() + QLatin1String(": ") + remark);
    }
    for (int i = 0; drawing && i < drawing->texts.size(); ++i) {
        const QString& text = drawing->texts.at(i).text;
        if (SpiceModels::isDirective(text) && !m_directives.contains(text)) {
            m_directives.append(text);
        }
    }
    m_drawings.insert(fileName, drawing);
    return drawing;
}

QString AscBlocks::typeOf(const AscDevice& device, const BoxType& box, const QString& name,
                          const QString& assignments) {
    const QString fileName = fileBeside(m_folder, device.kind + QLatin1String(".asc"));
    std::optional<ImportedDrawing> drawing;
    if (!fileName.isEmpty()) {
        drawing = read(fileName);
    }
    if (!drawing) {
        m_remarks->append(tr("%1: the sub-circuit %2 is a box; there is no drawing of its inside "
                             "that can be read")
                              .arg(name, device.symbol.name));
        return {};
    }
    for (int i = 0; i < device.pins.size(); ++i) {
        const QString pin = device.pins.at(i).name;
        const auto net = std::find_if(drawing->nets.begin(), drawing->nets.end(),
                                      [&pin](const ImportedDrawing::Net& net) {
                                          return net.name.compare(pin, Qt::CaseInsensitive) == 0;
                                      });
        if (net == drawing->nets.end()) {
            m_remarks->append(tr("%1: the sub-circuit %2 is a box; its inside has no net %3 for "
                                 "the terminal")
                                  .arg(name, device.symbol.name, pin));
            return {};
        }
        net->name = box.terminals.at(i).name;
    }
    assign(assignments, &*drawing);
    return typeName(box, *drawing);
}

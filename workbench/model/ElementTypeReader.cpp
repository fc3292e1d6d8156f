#include "ElementTypeReader.h"

#include "CircuitElement.h"
#include "ICircuitElementDesc.h"
#include "NetlistType.h"
#include "SubCircuitProject.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <cmath>

namespace {

constexpr int TerminalGrid = 10;

QString text(const QJsonObject& object, const char* key) {
    return object.value(QLatin1String(key)).toString();
}

QStringList textList(const QJsonObject& object, const char* key) {
    return object.value(QLatin1String(key)).toVariant().toStringList();
}

Plexa::DataStore store(const QJsonObject& object, const char* key) {
    Plexa::DataStore result;
    const QJsonObject facts = object.value(QLatin1String(key)).toObject();
    for (auto it = facts.begin(); it != facts.end(); ++it) {
        result.insert(it.key(), it.value().toString());
    }
    return result;
}

bool readPoint(const QJsonValue& value, QPointF* point) {
    const QJsonArray pair = value.toArray();
    if (pair.size() != 2 || !pair.at(0).isDouble() || !pair.at(1).isDouble()) {
        return false;
    }
    *point = {pair.at(0).toDouble(), pair.at(1).toDouble()};
    return true;
}

bool isOnGrid(double coordinate) {
    return std::fmod(coordinate, TerminalGrid) == 0;
}

}  // namespace

ElementTypeReader::ElementTypeReader(QString fileName) : m_fileName(std::move(fileName)) {}

void ElementTypeReader::complain(const QString& reason) {
    m_problems.append(m_fileName + QLatin1String(": ") + reason);
}

bool ElementTypeReader::read(ElementTypeData* data) {
    QFile file(m_fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        complain(file.errorString());
        return false;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isObject()) {
        complain(error.error == QJsonParseError::NoError
                     ? QStringLiteral("is no JSON object")
                     : QStringLiteral("is no JSON: %1 at byte %2")
                           .arg(error.errorString())
                           .arg(error.offset));
        return false;
    }
    const QJsonObject root = document.object();
    const QFileInfo info(m_fileName);
    m_data.type = info.completeBaseName() + QLatin1Char('.') + info.absoluteDir().dirName();
    if (m_data.type.count(QLatin1Char('.')) != 1 || info.completeBaseName().isEmpty()) {
        complain(QStringLiteral("the type name \"%1\" must have exactly one dot").arg(m_data.type));
    }
    m_data.label = text(root, "label");
    m_data.description = text(root, "description");
    m_data.keywords = textList(root, "keywords");
    m_data.shortcut = text(root, "shortcut");
    m_data.namePrefix = text(root, "namePrefix");
    m_data.category = root.value(QLatin1String("category")).toInt();
    m_data.display = textList(root, "display");
    m_data.models = textList(root, "models");
    m_data.outputVariables = store(root, "outputVariables");
    m_data.outputACVariables = store(root, "outputACVariables");
    m_data.mixed = root.value(QLatin1String("mixed")).toBool();
    m_data.resolvesControls = root.value(QLatin1String("resolvesControls")).toBool();
    if (m_data.label.isEmpty()) {
        complain(QStringLiteral("\"label\" is missing"));
    }
    if (m_data.namePrefix.isEmpty()) {
        complain(QStringLiteral("\"namePrefix\" is missing"));
    }
    static const QRegularExpression key(QStringLiteral("\\A[A-Z0-9]?\\z"));
    if (!key.match(m_data.shortcut).hasMatch()) {
        complain(QStringLiteral("the shortcut \"%1\" is no capital letter or digit")
                     .arg(m_data.shortcut));
    }
    if (root.contains(QLatin1String("netlist"))) {
        readNetlist(text(root, "netlist"));
    } else {
        readTerminals(root);
        readParameters(root);
        readPicture(root);
        readInside(root);
        readSpice(root);
    }
    checkReferences();
    *data = m_data;
    return m_problems.isEmpty();
}

bool ElementTypeReader::claimName(const QString& name, const QString& kind) {
    // An element shows its own properties, its parameters and its terminals under one roof, where
    // the first of a name hides the others.
    if (name.isEmpty()) {
        complain(QStringLiteral("a %1 has no name").arg(kind));
        return false;
    }
    if (CircuitElement::staticMetaObject.indexOfProperty(name.toUtf8()) >= 0) {
        complain(QStringLiteral("the %1 \"%2\" is named like a property of all elements")
                     .arg(kind, name));
        return false;
    }
    if (m_names.contains(name)) {
        complain(QStringLiteral("the %1 \"%2\" bears a name that is taken").arg(kind, name));
        return false;
    }
    m_names.append(name);
    return true;
}

void ElementTypeReader::readNetlist(const QString& netlist) {
    QFile file(QFileInfo(m_fileName).absoluteDir().absoluteFilePath(netlist));
    QString reason;
    if (!file.open(QIODevice::ReadOnly)) {
        complain(QStringLiteral("the netlist \"%1\" can not be read: %2")
                     .arg(netlist, file.errorString()));
    } else if (!NetlistType::describe(QString::fromUtf8(file.readAll()), &m_data, &reason)) {
        complain(QStringLiteral("the netlist \"%1\" can not be used: %2").arg(netlist, reason));
    }
    for (const ParameterData& parameter : qAsConst(m_data.parameters)) {
        m_names.append(parameter.name);
    }
}

void ElementTypeReader::readTerminals(const QJsonObject& root) {
    for (const QJsonValue& value : root.value(QLatin1String("terminals")).toArray()) {
        const QJsonObject object = value.toObject();
        TerminalData terminal{text(object, "name"),
                              text(object, "type"),
                              {},
                              text(object, "netName"),
                              text(object, "innerNet")};
        if (!claimName(terminal.name, QStringLiteral("terminal"))) {
            continue;
        }
        if (terminal.type.size() != 1 || !QStringLiteral("edtpgx").contains(terminal.type)) {
            complain(QStringLiteral("the terminal \"%1\" has the unknown type \"%2\"")
                         .arg(terminal.name, terminal.type));
        }
        if (!readPoint(object.value(QLatin1String("position")), &terminal.position)) {
            complain(QStringLiteral("the terminal \"%1\" has no position").arg(terminal.name));
        } else if (!isOnGrid(terminal.position.x()) || !isOnGrid(terminal.position.y())) {
            complain(QStringLiteral("the terminal \"%1\" does not lie on a multiple of %2")
                         .arg(terminal.name)
                         .arg(TerminalGrid));
        }
        m_data.terminals.append(terminal);
    }
    if (m_data.terminals.isEmpty()) {
        complain(QStringLiteral("there is no terminal"));
    }
    for (const TerminalData& terminal : qAsConst(m_data.terminals)) {
        m_data.mixed = m_data.mixed || terminal.type != m_data.terminals.first().type;
    }
}

void ElementTypeReader::readParameters(const QJsonObject& root) {
    for (const QJsonValue& value : root.value(QLatin1String("parameters")).toArray()) {
        const QJsonObject object = value.toObject();
        ParameterData parameter;
        parameter.name = text(object, "name");
        parameter.value = text(object, "value");
        parameter.unit = text(object, "unit");
        parameter.description = text(object, "description");
        parameter.choices = textList(object, "choices");
        if (!claimName(parameter.name, QStringLiteral("parameter"))) {
            continue;
        }
        const QString kind = object.value(QLatin1String("kind")).toString(QStringLiteral("number"));
        if (kind == QLatin1String("text")) {
            parameter.kind = ParameterData::Text;
        } else if (kind == QLatin1String("choice")) {
            parameter.kind = ParameterData::Choice;
        } else if (kind != QLatin1String("number")) {
            complain(QStringLiteral("the parameter \"%1\" is of the unknown kind \"%2\"")
                         .arg(parameter.name, kind));
            continue;
        }
        if (!parameter.accepts(parameter.value)) {
            complain(QStringLiteral("the parameter \"%1\" can not have the value \"%2\"")
                         .arg(parameter.name, parameter.value));
        }
        m_data.parameters.append(parameter);
    }
}

void ElementTypeReader::readPicture(const QJsonObject& root) {
    const QString picture = text(root, "picture");
    const QFileInfo file(QFileInfo(m_fileName).absoluteDir(), picture);
    if (picture.isEmpty() || !file.isFile()) {
        complain(QStringLiteral("there is no picture \"%1\"").arg(picture));
    }
    m_data.picture = file.absoluteFilePath();
    const QJsonValue offset = root.value(QLatin1String("pictureOffset"));
    if (!offset.isUndefined() && !readPoint(offset, &m_data.pictureOffset)) {
        complain(QStringLiteral("\"pictureOffset\" is no pair of numbers"));
    }
}

void ElementTypeReader::readInside(const QJsonObject& root) {
    const QString inside = text(root, "inside");
    const bool isSubCircuit = m_data.category == ICircuitElementDesc::SubCircuitCategory;
    if (isSubCircuit == inside.isEmpty()) {
        complain(isSubCircuit
                     ? QStringLiteral("a sub-circuit needs an \"inside\"")
                     : QStringLiteral("only a sub-circuit, of category %1, has an \"inside\"")
                           .arg(ICircuitElementDesc::SubCircuitCategory));
    }
    if (!isSubCircuit || inside.isEmpty()) {
        return;
    }
    QString problem;
    m_data.inside = SubCircuitProject::read(
        QFileInfo(m_fileName).absoluteDir().absoluteFilePath(inside), &problem);
    if (!problem.isEmpty()) {
        complain(QStringLiteral("the inside \"%1\" can not be used: %2").arg(inside, problem));
        return;
    }
    QStringList nets;
    for (const QDomElement& record : SubCircuitProject::records(m_data.inside, "CircuitNode")) {
        nets.append(record.attribute(QStringLiteral("Name")));
    }
    for (TerminalData& terminal : m_data.terminals) {
        if (terminal.innerNet.isEmpty()) {
            terminal.innerNet = terminal.name;
        }
        if (!nets.contains(terminal.innerNet)) {
            complain(
                QStringLiteral("the terminal \"%1\" belongs to the net \"%2\", which the inside "
                               "does not have")
                    .arg(terminal.name, terminal.innerNet));
        }
    }
}

void ElementTypeReader::readSpice(const QJsonObject& root) {
    const QJsonValue value = root.value(QLatin1String("spice"));
    if (value.isUndefined()) {
        return;
    }
    const QJsonObject object = value.toObject();
    SpiceData& spice = m_data.spice;
    spice.known = true;
    spice.lines = textList(object, "lines");
    spice.subcircuitLines = textList(object, "subcircuitLines");
    spice.model = text(object, "model");
    spice.joinsNets = object.value(QLatin1String("joinsNets")).toBool();
    const QJsonValue paths = object.value(QLatin1String("paths"));
    spice.blocks = paths.isArray() && paths.toArray().isEmpty();
    for (const QJsonValue& path : paths.toArray()) {
        spice.paths.append(path.toVariant().toStringList());
        for (const QString& name : qAsConst(spice.paths.last())) {
            if (name != QLatin1String("0")) {
                checkPlaceholders(QStringLiteral("${%1}").arg(name));
            }
        }
    }
    const QJsonObject results = object.value(QLatin1String("results")).toObject();
    for (auto it = results.begin(); it != results.end(); ++it) {
        spice.results.insert(it.key(), it.value().toString());
    }
    const QJsonObject choices = object.value(QLatin1String("choices")).toObject();
    for (auto it = choices.begin(); it != choices.end(); ++it) {
        const QJsonObject texts = it.value().toObject();
        SpiceData::Choice choice{it.key(), text(texts, "of"), {}};
        for (auto pair = texts.begin(); pair != texts.end(); ++pair) {
            if (pair.key() != QLatin1String("of")) {
                choice.texts.insert(pair.key(), pair.value().toString());
            }
        }
        spice.choices.append(choice);
    }
    for (const QString& line : spice.lines + spice.subcircuitLines + QStringList{spice.model}) {
        checkPlaceholders(line);
    }
    for (const SpiceData::Choice& choice : qAsConst(spice.choices)) {
        for (const QString& text : choice.texts) {
            checkPlaceholders(text);
        }
    }
}

void ElementTypeReader::checkPlaceholders(const QString& text) {
    static const QRegularExpression placeholder(QStringLiteral("\\$[{(]([^})]*)[})]"));
    QStringList known = m_names;
    known << QStringLiteral("name") << QStringLiteral("model") << QStringLiteral("branch");
    for (const SpiceData::Choice& choice : qAsConst(m_data.spice.choices)) {
        known.append(choice.name);
    }
    for (auto it = placeholder.globalMatch(text); it.hasNext();) {
        const QString name = it.next().captured(1);
        if (!known.contains(name)) {
            complain(QStringLiteral("\"spice\" names \"%1\", which there is not").arg(name));
        }
    }
}

void ElementTypeReader::checkReferences() {
    for (const QString& name : qAsConst(m_data.display)) {
        if (!m_names.contains(name)) {
            complain(QStringLiteral("\"display\" names \"%1\", which there is not").arg(name));
        }
    }
    if (m_data.resolvesControls && !m_names.contains(QStringLiteral("control"))) {
        complain(QStringLiteral("\"resolvesControls\" needs a parameter \"control\""));
    }
}

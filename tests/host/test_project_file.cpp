// The document of a project file, and what becomes of it in bytes.

#include "ProjectFile.h"

#include <gtest/gtest.h>

#include <QDomElement>

namespace {

const QByteArray Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

QDomElement child(QDomElement parent, const char* tag) {
    QDomElement element = parent.ownerDocument().createElement(QLatin1String(tag));
    parent.appendChild(element);
    return element;
}

ProjectFile readBack(const ProjectFile& file) {
    QString reason;
    const std::optional<ProjectFile> back = ProjectFile::fromBytes(file.toBytes(), &reason);
    EXPECT_TRUE(back) << qPrintable(reason);
    return back ? *back : ProjectFile();
}

}  // namespace

TEST(ProjectFileTest, NumbersTheElementsFromZero) {
    ProjectFile file;
    QDomElement circuit = file.addPart(QLatin1String(ProjectFile::CircuitPart));
    // The new numbers of some are the old ones of others.
    for (const char* id : {"2", "0", "17"}) {
        child(circuit, "CircuitElement").setAttribute("ID", QLatin1String(id));
    }
    QDomElement node = child(circuit, "CircuitNode");
    for (const char* id : {"17", "2", "0", "99"}) {
        child(node, "ElementNode").setAttribute("ElementID", QLatin1String(id));
    }
    // Numbers of other parts are their own.
    child(file.addPart("Other"), "CircuitElement").setAttribute("ID", 5);

    EXPECT_EQ(file.toBytes(), Declaration +
                                  "<VortelProject Format=\"1\">\n"
                                  "  <ProjectPart ID=\"VortelCircuit\">\n"
                                  "    <CircuitElement ID=\"0\"/>\n"
                                  "    <CircuitElement ID=\"1\"/>\n"
                                  "    <CircuitElement ID=\"2\"/>\n"
                                  "    <CircuitNode>\n"
                                  "      <ElementNode ElementID=\"2\"/>\n"
                                  "      <ElementNode ElementID=\"0\"/>\n"
                                  "      <ElementNode ElementID=\"1\"/>\n"
                                  "      <ElementNode ElementID=\"99\"/>\n"
                                  "    </CircuitNode>\n"
                                  "  </ProjectPart>\n"
                                  "  <ProjectPart ID=\"Other\">\n"
                                  "    <CircuitElement ID=\"5\"/>\n"
                                  "  </ProjectPart>\n"
                                  "</VortelProject>\n");
}

TEST(ProjectFileTest, TextComesBackWhateverItHolds) {
    const QString pair = QString::fromUtf8("\xf0\x9f\x98\x80");
    const struct {
        QString text;
        QString back;
    } table[] = {
        {QString::fromUtf8("4.7 k\xce\xa9 <&>\"'"), QString::fromUtf8("4.7 k\xce\xa9 <&>\"'")},
        {"a\tb\nc  d", "a\tb\nc  d"},
        {pair, pair},
        {QString("x") + QChar(1) + QChar(0x1b) + QChar(0) + "y", "xy"},
        {QString("x") + pair.at(0) + "y" + pair.at(1), "xy"},
        {QString("x") + QChar(0xffff), "x"},
        {"<!ENTITY a \"b\"> <!DOCTYPE [", "<!ENTITY a \"b\"> <!DOCTYPE ["},
        {"a ]]> b ]]>", "a ]]> b ]]>"},
        {QString("<a>").repeated(2000), QString("<a>").repeated(2000)}};
    for (const auto& row : table) {
        SCOPED_TRACE(qPrintable(row.text.left(40)));
        ProjectFile file;
        QDomElement part = file.addPart("Part");
        part.setAttribute("Text", row.text);
        part.appendChild(file.document().createCDATASection(row.text));
        const QDomElement back = readBack(file).part("Part");
        EXPECT_EQ(back.attribute("Text"), row.back);
        EXPECT_EQ(back.text(), row.back);
    }
}

TEST(ProjectFileTest, KeepsWhatItDoesNotKnow) {
    const QByteArray bytes = Declaration +
                             "<VortelProject Format=\"1\" Mood=\"good\">\n"
                             "  <ProjectPart Age=\"old\" ID=\"Known\"/>\n"
                             "  <ProjectPart ID=\"Future\" a=\"1\" b=\"2\">\n"
                             "    <Deep><![CDATA[ as it is ]]></Deep>\n"
                             "  </ProjectPart>\n"
                             "  <ProjectPart Age=\"second\" ID=\"Known\"/>\n"
                             "  <Note>kept</Note>\n"
                             "</VortelProject>\n";
    QString reason;
    const std::optional<ProjectFile> old = ProjectFile::fromBytes(bytes, &reason);
    ASSERT_TRUE(old) << qPrintable(reason);
    ProjectFile file;
    file.addPart("Known").setAttribute("Age", "new");
    file.keepStrangers(*old);
    QByteArray expected = bytes;
    EXPECT_EQ(file.toBytes(), expected.replace("\"old\"", "\"new\""));
}

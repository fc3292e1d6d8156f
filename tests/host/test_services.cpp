#include "ElementFactory.h"
#include "HostFixture.h"
#include "MathUtils.h"
#include "ObjectLoadSave.h"
#include "XmlUtils.h"

#include <QLocale>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

TEST(MathService, ReadsEngineeringNotation) {
    const struct {
        const char* text;
        double value;
    } good[] = {
        {"0", 0},         {"-0", -0.0},     {"42", 42},          {"+1.5", 1.5},      {"4.7k", 4700},
        {"4.7K", 4700},   {"100n", 100e-9}, {"10u", 10e-6},      {"10µ", 10e-6},     {"10μ", 10e-6},
        {"3m", 3e-3},     {"3M", 3e6},      {"1Meg", 1e6},       {"1meg", 1e6},      {"1MEG", 1e6},
        {"2G", 2e9},      {"2T", 2e12},     {"5f", 5e-15},       {"5p", 5e-12},      {".5", 0.5},
        {"5.", 5},        {"1e-14", 1e-14}, {"-1.25E+3", -1250}, {"1e3k", 1e6},      {" 7k ", 7000},
        {"4.7n", 4.7e-9}, {"0.1m", 0.1e-3}, {"4k7", 4700},       {"-1M25", -1.25e6}, {"4R7", 4.7},
    };
    MathUtils service;
    IMathUtils* math = &service;
    for (const auto& row : good) {
        bool ok = false;
        EXPECT_EQ(math->toNumber(QString::fromUtf8(row.text), &ok), row.value) << row.text;
        EXPECT_TRUE(ok) << row.text;
    }
    for (const char* bad :
         {"",       " ",    "k",    "-",     ".",   "e3",    "nan", "inf",   "infinity",
          "-inf",   "1x",   "1kk",  "1 k",   "1,5", "1.2.3", "1e",  "1e400", "1e99999999999",
          "9e307k", "0x10", "1k2k", "1e2k3", "{R}", "٣",     "--1", "1_000", "1k\n2"}) {
        bool ok = true;
        EXPECT_EQ(math->toNumber(QString::fromUtf8(bad), &ok), 0) << bad;
        EXPECT_FALSE(ok) << bad;
    }
    EXPECT_EQ(math->toNumber("1k", nullptr), 1000);
    EXPECT_EQ(math->toNumber("x", nullptr), 0);
}

TEST(MathService, WritesTheShortestNotationThatReadsBack) {
    const struct {
        double value;
        const char* text;
    } table[] = {
        {0, "0"},         {1, "1"},           {-1, "-1"},         {1000, "1k"}, {4700, "4.7k"},
        {999, "999"},     {12345, "12.345k"}, {1e5, "100k"},      {1e6, "1M"},  {0.5, "500m"},
        {4.7e-9, "4.7n"}, {1e-15, "1f"},      {1e-16, "100e-18"}, {1e12, "1T"}, {1e15, "1e15"},
        {10e-6, "10u"},   {-2.5e-3, "-2.5m"}, {0.1, "100m"},
    };
    MathUtils math;
    for (const auto& row : table) {
        EXPECT_EQ(math.toEngineering(row.value), QString::fromUtf8(row.text));
    }
    EXPECT_EQ(math.toEngineering(std::nan("")), "");
    EXPECT_EQ(math.toEngineering(std::numeric_limits<double>::infinity()), "");

    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    std::mt19937_64 random(20240607);
    for (int i = 0; i < 20000; ++i) {
        const quint64 bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            continue;
        }
        bool ok = false;
        const double back = math.toNumber(math.toEngineering(value), &ok);
        ASSERT_TRUE(ok && back == value) << qPrintable(math.toEngineering(value));
    }
    QLocale::setDefault(before);
}

TEST(MathService, EvaluatesExpressions) {
    const QMap<QString, QString> parameters{
        {"R", "2k"},        {"_x1", "{R/4}"},      {"e3", "7"},        {"zero", "0"},
        {"word", "five"},   {"empty", ""},         {"loop", "{pool}"}, {"pool", "{2*loop}"},
        {"self", "{self}"}, {"ghost", "{gone+1}"}, {"broken", "{1+}"}, {"huge", "1e308"}};
    const auto lookup = [&](const QString& name) { return parameters.value(name); };
    const struct {
        QString text;
        double value;
        const char* problem;  // null for none
    } table[] = {
        {"4.7k", 4700, nullptr},
        {"{R}", 2000, nullptr},
        {" { 2*R + 1k } ", 5000, nullptr},
        {"{1k+2*R}", 5000, nullptr},
        {"{_x1*e3}", 3500, nullptr},
        {"{8/2/2-1-1}", 0, nullptr},
        {"{-(R-1k)*-2}", 2000, nullptr},
        {"{1e-3*1e+3+1e3}", 1001, nullptr},
        {QString::fromUtf8("{10µ*1Meg}"), 10, nullptr},
        {"{gone}", 0, "there is no parameter \"gone\""},
        {"{R*ghost}", 0, "there is no parameter \"gone\""},
        {"{loop}", 0, "\"loop\" refers to itself"},
        {"{self}", 0, "\"self\" refers to itself"},
        {"{R/zero}", 0, "division by zero"},
        {"{1/(R-2k)}", 0, "division by zero"},
        {"{huge*10}", 0, "too large"},
        {"{word}", 0, "\"word\" is no number"},
        {"{empty}", 0, "\"empty\" is no number"},
        {"{broken}", 0, "can not be understood"},
        {"", 0, "neither a number nor"},
        {"R", 0, "neither a number nor"},
        {"{", 0, "neither a number nor"},
        {"{R", 0, "neither a number nor"},
        {"R}", 0, "neither a number nor"},
        {"{}", 0, "can not be understood at character 2"},
        {"{{R}}", 0, "can not be understood"},
        {"{R R}", 0, "can not be understood at character 4"},
        {"{2R}", 0, "can not be understood"},
        {"{1k.5}", 0, "can not be understood"},
        {"{1e+}", 0, "can not be understood"},
        {"{(R}", 0, "can not be understood"},
        {"{R)}", 0, "can not be understood"},
        {"{*R}", 0, "can not be understood"},
        {QString::fromUtf8("{Ω}"), 0, "can not be understood"},
        {QString::fromUtf8("{RΩ}"), 0, "can not be understood"},
        {'{' + QString(100000, '('), 0, "neither a number nor"},
        {'{' + QString(100000, '(') + '}', 0, "nested too deeply"},
        {'{' + QString(100000, '-') + "1}", 1, nullptr},
        {'{' + QString("1+").repeated(50000) + "1}", 50001, nullptr},
        {'{' + QString(100000, 'a') + '}', 0, "there is no parameter"},
        {'{' + QString(100000, '9') + '}', 0, "can not be understood"},
        {QString(100000, '{'), 0, "neither a number nor"},
    };
    MathUtils service;
    IMathUtils* math = &service;
    for (const auto& row : table) {
        SCOPED_TRACE(row.text.left(40).toStdString());
        const IMathUtils::Evaluation result = math->evaluate(row.text, lookup);
        EXPECT_EQ(result.ok, !row.problem);
        EXPECT_DOUBLE_EQ(result.value, row.value);
        EXPECT_EQ(result.problem.isEmpty(), !row.problem) << result.problem.toStdString();
        EXPECT_TRUE(!row.problem || result.problem.contains(row.problem))
            << result.problem.toStdString();
    }
    EXPECT_EQ(math->evaluate("{R*ghost}", lookup).missing, "gone");
    EXPECT_EQ(math->evaluate("{R}", nullptr).missing, "R");

    // Each parameter is twice the next: worked out once each, and only so deep.
    const auto chain = [](int length) {
        return [length](const QString& name) {
            const int next = name.mid(1).toInt() + 1;
            return next > length ? QStringLiteral("1") : QString("{p%1+p%1}").arg(next);
        };
    };
    EXPECT_EQ(math->evaluate("{p0}", chain(60)).value, std::pow(2, 60));
    EXPECT_TRUE(math->evaluate("{p0}", chain(100000)).problem.contains("too deeply"));
}

TEST(XmlService, BinaryData) {
    XmlUtils xml;
    QByteArray all;
    for (int i = 0; i < 256; ++i) {
        all.append(static_cast<char>(i));
    }
    for (const QByteArray& data : {QByteArray(), QByteArray("\0", 1), all}) {
        QDomDocument document;
        QDomElement element = document.createElement("Data");
        document.appendChild(element);
        XmlUtils::storeBinaryData(document, element, data);
        QDomDocument read;
        ASSERT_TRUE(read.setContent(document.toString(2)));
        QByteArray back("old");
        xml.loadBinaryData(read.documentElement(), back);
        EXPECT_EQ(back, data);
    }
    QDomDocument document;
    for (const auto& row : {std::make_pair("<d>aGVs\n  bG8=\n</d>", "hello"),
                            std::make_pair("<d>aGV*bG8=</d>", ""), std::make_pair("<d/>", "")}) {
        ASSERT_TRUE(document.setContent(QString(row.first)));
        QByteArray back("old");
        xml.loadBinaryData(document.documentElement(), back);
        EXPECT_EQ(back, QByteArray(row.second)) << row.first;
    }
}

namespace {

/// An object with a property of each kind that matters to storing.
class Sample : public QObject {
    Q_OBJECT
    Q_PROPERTY(double Ratio MEMBER ratio)
    Q_PROPERTY(bool Visible MEMBER visible)
    Q_PROPERTY(int Count MEMBER count)
    Q_PROPERTY(QPointF Place MEMBER place)
    Q_PROPERTY(QString Note MEMBER note)
    Q_PROPERTY(int Computed READ computed)
    Q_PROPERTY(int Transient MEMBER transient STORED false)

public:
    int computed() const { return 5; }
    double ratio = 0.1 + 0.2;
    bool visible = true;
    int count = 3;
    QPointF place;
    QString note;
    int transient = 1;
};

class LoadSave : public CircuitTest {
protected:
    /// The record as a file would bring it back.
    QDomElement record(QObject* object) {
        QDomDocument written;
        QDomElement root = written.createElement("Record");
        written.appendChild(root);
        service.save(object, written, root);
        EXPECT_TRUE(document.setContent(written.toString(1)));
        return document.documentElement();
    }
    QStringList lines(const QDomElement& root) {
        QStringList result;
        for (QDomElement e = root.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            result << e.tagName() + ' ' + e.attribute("Name") + '=' + e.attribute("Value");
        }
        return result;
    }
    QDomElement parse(const char* xml) {
        EXPECT_TRUE(document.setContent(QString(xml)));
        return document.documentElement();
    }

    ObjectLoadSave service;
    QDomDocument document;
};

}  // namespace

TEST_F(LoadSave, WritesTheStoredPropertiesAndTheParameters) {
    CircuitElement* element = add(resistor);
    CircuitElement* other = add(resistor);
    CircuitNode* net = join(element, "n", other, "p");
    element->setObjectName("hidden");
    element->setProperty("_UniqueId_", 12);
    element->setModelName("2N2222");
    const QStringList parameters{"Parameter R=1k", "Parameter mode=on", "Parameter note="};
    QStringList properties{"Property Name=R1", "Property Caption=R1", "Property Rotation=0",
                           "Property Flip=0", "Property ModelName=2N2222"};
    EXPECT_EQ(lines(record(element)), properties + parameters);
    // An attribute of a file's record holds the model already, and gives it back.
    QDomElement inFile = document.createElement("CircuitElement");
    inFile.setAttribute("ModelName", "2N2222");
    service.save(element, document, inFile);
    properties.removeLast();
    EXPECT_EQ(lines(inFile), properties + parameters);
    service.load(other, document, inFile);
    EXPECT_EQ(other->modelName(), "2N2222");
    EXPECT_EQ(lines(record(net)), QStringList("Property WireClearance=20"));

    Sample sample;
    EXPECT_EQ(lines(record(&sample)),
              QStringList({"Property Ratio=0.30000000000000004", "Property Visible=true",
                           "Property Count=3", "Property Note="}));
}

TEST_F(LoadSave, ACopyBesideTheOriginalKeepsItsOwnName) {
    CircuitElement* original = add(resistor);
    original->setCaption("Load");
    CircuitElement* copy = add(resistor);
    service.load(copy, document, record(original));
    EXPECT_EQ(copy->name(), "R2");
    EXPECT_EQ(copy->caption(), "Load");
}

TEST_F(LoadSave, WhatTheObjectCanNotTakeIsPassedOver) {
    CircuitElement* element = add(resistor);
    service.load(element, document, parse(R"(<Record>
        <Property Name="Rotation" Value="quarter"/><Property Name="Flip" Value="7"/>
        <Property Name="Colour" Value="red"/><Property Name="objectName" Value="x"/>
        <Property/><Property Name="Name"/>
        <Parameter Name="R" Value="much"/><Parameter Name="n" Value="net"/><Parameter/>
        <Deeper><Property Name="Caption" Value="inner"/></Deeper>
        <Property Name="Caption" Value="kept"/></Record>)"));
    EXPECT_EQ(lines(record(element)),
              QStringList({"Property Name=R1", "Property Caption=kept", "Property Rotation=0",
                           "Property Flip=0", "Property ModelName=", "Parameter R=1k",
                           "Parameter mode=on", "Parameter note="}));
    EXPECT_EQ(element->objectName() + element->modelName(), "R1");
    service.load(nullptr, document, parse("<Record/>"));
    service.save(nullptr, document, document.documentElement());
    EXPECT_TRUE(lines(document.documentElement()).isEmpty());

    // The name is read first wherever it stands: the caption would otherwise follow it.
    service.load(element, document, parse(R"(<Record><Property Name="Caption" Value="R1"/>
        <Property Name="Name" Value="R5"/></Record>)"));
    EXPECT_EQ(element->name() + element->caption(), "R5R1");
}

#include "test_services.moc"

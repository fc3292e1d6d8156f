// What is written piece by piece reads like what a tree would have given.

#include "JsonWriter.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

TEST(JsonWriter, WritesAsADocumentDoes) {
    const QJsonArray odd = {0.0,
                            -0.0,
                            -7,
                            0.1,
                            1e6,
                            1e15,
                            9007199254740992.0,
                            1e20,
                            -1e300,
                            1e-9,
                            std::numeric_limits<double>::infinity(),
                            true,
                            false,
                            "plain",
                            "",
                            "a\"b\\c\n\t\x01/",
                            QString::fromUtf8("\u03a9 \U0001F600"),
                            QString(QChar(0xD800))};
    const QJsonObject inner = {{"list", odd}, {"none", QJsonArray()}, {"void", QJsonObject()}};
    const QJsonObject whole = {{"inner", inner}, {"odd", odd}, {"\u00e9", 1}};
    QByteArray text;
    QBuffer buffer(&text);
    buffer.open(QIODevice::WriteOnly);
    JsonWriter json(&buffer);
    json.beginObject();
    json.key("inner");
    json.tree(inner);
    json.key("odd");
    json.beginArray();
    for (const QJsonValue& value : odd) {
        if (value.isBool()) {
            json.value(value.toBool());
        } else if (value.isString()) {
            json.value(value.toString());
        } else {
            json.value(value.isDouble() ? value.toDouble()
                                        : std::numeric_limits<double>::quiet_NaN());
        }
    }
    json.endArray();
    json.key(QString::fromUtf8("\u00e9"));
    json.value(1);
    json.endObject();
    EXPECT_TRUE(json.finish());
    EXPECT_EQ(text, QJsonDocument(whole).toJson());

    // Beyond what every series of Qt writes as digits.
    text.clear();
    buffer.seek(0);
    JsonWriter list(&buffer);
    list.beginArray();
    for (const double large : {1e17, 1152921504606846976.0, 9223372036854775808.0, 1e19}) {
        list.value(large);
    }
    list.endArray();
    EXPECT_TRUE(list.finish());
    EXPECT_EQ(
        text.simplified(),
        "[ 100000000000000000, 1152921504606847000, 9223372036854776000, 10000000000000000000 ]");
}

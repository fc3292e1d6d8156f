#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

class QIODevice;

/// Writes JSON as it comes, in the very format of `QJsonDocument`, which needs a tree of it all
/// first. Keys must be given in the order of their code units, as the tree sorts them.
class JsonWriter {
public:
    explicit JsonWriter(QIODevice* target) : m_target(target) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }
    /// What is written next belongs to the key.
    void key(const char* name);
    void key(const QString& name);

    void value(const QString& text);
    void value(double number);
    void value(int number) { value(static_cast<double>(number)); }
    void value(bool truth);
    /// An object or an array.
    void tree(const QJsonValue& value);

    template <class Value>
    void member(const char* name, const Value& content) {
        key(name);
        value(content);
    }

    /// Writes the line's end that a document has. Whether the target has taken everything.
    bool finish();

private:
    void begin(char bracket);
    void end(char bracket);
    void separate();
    void indent() { m_text.append(4 * m_depth, ' '); }
    void append(const QString& text);
    void flush();

    QIODevice* m_target;
    bool m_isWhole = true;
    // What is still to be given to the target.
    QByteArray m_text;
    int m_depth = 0;
    bool m_isFirst = true;
    bool m_afterKey = false;
};

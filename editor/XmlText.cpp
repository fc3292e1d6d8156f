#include "XmlText.h"

namespace {

bool isForbidden(QChar character) {
    const ushort code = character.unicode();
    return (code < 0x20 && code != 0x09 && code != 0x0a && code != 0x0d) || code >= 0xfffe;
}

}  // namespace

QString xmlText(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        if (character.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            result += character;
            result += text.at(++i);
        } else if (!character.isSurrogate() && !isForbidden(character)) {
            result += character;
        }
    }
    return result;
}

#include "ItemData.h"

#include <QDataStream>

namespace {

template <class Pointer>
void write(QDataStream& stream, const Pointer& pointer) {
    stream.writeRawData(reinterpret_cast<const char*>(&pointer), sizeof(Pointer));
}

template <class Pointer>
void read(QDataStream& stream, Pointer& pointer) {
    stream.readRawData(reinterpret_cast<char*>(&pointer), sizeof(Pointer));
}

}  // namespace

void ItemData::save(QByteArray& array) {
    QDataStream stream(&array, QIODevice::WriteOnly);
    const char capable = acCapable ? 1 : 0;
    write(stream, outputVariable);
    stream.writeRawData(&capable, 1);
    write(stream, nodeObject);
    write(stream, elementObject);
}

void ItemData::load(QByteArray& array) {
    if (array.size() != SavedSize) {
        return;
    }
    QDataStream stream(&array, QIODevice::ReadOnly);
    char capable = 0;
    read(stream, outputVariable);
    stream.readRawData(&capable, 1);
    acCapable = capable != 0;
    read(stream, nodeObject);
    read(stream, elementObject);
}

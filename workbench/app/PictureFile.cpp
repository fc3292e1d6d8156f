#include "PictureFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace {

struct FormatInfo {
    PictureFormat format;
    const char* suffix;
    QByteArray head;
    QByteArray tail;
};

const std::array<FormatInfo, 5>& formats() {
    static const std::array<FormatInfo, 5> table = {{
        {PictureFormat::SVG, ".svg", "<?xml", "</svg>"},
        {PictureFormat::PDF, ".pdf", "%PDF-", "%%EOF"},
        {PictureFormat::PS, ".ps", "%!PS", "%%EOF"},
        {PictureFormat::PNG, ".png", "\x89PNG\r\n\x1a\n", "IEND\xae\x42\x60\x82"},
        {PictureFormat::JPG, ".jpg", "\xff\xd8\xff", "\xff\xd9"},
    }};
    return table;
}

}  // namespace

std::optional<PictureFormat> pictureFormatOf(const QString& fileName) {
    const QString suffix = QLatin1Char('.') + QFileInfo(fileName).suffix();
    for (const FormatInfo& info : formats()) {
        if (suffix.compare(QLatin1String(info.suffix), Qt::CaseInsensitive) == 0) {
            return info.format;
        }
    }
    return {};
}

QStringList pictureSuffixes() {
    QStringList suffixes;
    for (const FormatInfo& info : formats()) {
        suffixes.append(QLatin1String(info.suffix));
    }
    return suffixes;
}

bool isWholePicture(PictureFormat format, const QString& fileName) {
    const auto info =
        std::find_if(formats().begin(), formats().end(),
                     [format](const FormatInfo& entry) { return entry.format == format; });
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || file.read(info->head.size()) != info->head) {
        return false;
    }
    // The text formats may end in a line break.
    constexpr qint64 Slack = 4;
    file.seek(std::max<qint64>(0, file.size() - info->tail.size() - Slack));
    return file.readAll().contains(info->tail);
}

#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The picture formats, numbered as the editor's `captureToFile` takes them.
enum class PictureFormat { PS = 0, PDF = 1, JPG = 2, PNG = 3, SVG = 4 };

/// A picture that is to be written.
struct PictureOutput {
    PictureFormat format = PictureFormat::SVG;
    QString fileName;
};

/// By the ending of the name, in either case of letters; nothing for any other ending.
std::optional<PictureFormat> pictureFormatOf(const QString& fileName);

/// ".svg", ".pdf" and so on, as users are told of them.
QStringList pictureSuffixes();

/// True if the file begins and ends as a whole file of the format does. The paint devices don't
/// report a full disk; the end that is missing then does.
bool isWholePicture(PictureFormat format, const QString& fileName);

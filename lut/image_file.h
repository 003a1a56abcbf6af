#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <cstdint>
#include <optional>

namespace tintwell {

/// The result of reading an image file.
struct ImageFile {
    QSize size;           ///< 0 x 0 if the file is not an image of a known type
    QImage pixels;        ///< null if the size was not wanted or decoding failed
    QString error;        ///< why there is no image
    QByteArray type = {}; ///< the catalogue's name for the type of an image that was read
    int bits = 0;         ///< bits per sample that a TIFF file states; 0 for all other types
};

/// Whether an image is rotated as its metadata says.
enum class Orientation { Stored, Upright };

/// Reads an image of a type in the catalogue, recognised by its content and not by its name,
/// because some other types can refer to further files. An image of more than \a mostPixels is not
/// decoded.
ImageFile readImage(const QString& path, std::int64_t mostPixels, Orientation orientation);

/// Whether an image has more than 8 bits per channel.
bool isDeep(QImage::Format format);

/// Names the package with the toolkit's plug-in for a type, by Qt's name, if it is not installed;
/// empty for types that need none.
QString missingPackage(const QByteArray& type);

/// Whether files of a type, by Qt's name, can be compressed at a level.
bool hasCompression(const QByteArray& type);

/// Writes an image; \a type is Qt's name for its type. PNG is compressed at the level
/// \a compression, 0 (not at all) to 9 (most), or at a quick one. Returns what went wrong; empty on
/// success.
QString writeImage(const QString& path, const QByteArray& type, const QImage& image,
                   std::optional<int> compression = {});

} // namespace tintwell

#pragma once

#include <QImage>
#include <QSize>
#include <QString>

#include <cstdint>

namespace tintwell {

/// What an image file holds.
struct ImageFile {
    QSize size;    ///< 0 x 0 for what is not an image of the known types
    QImage pixels; ///< null where the size is not what was asked for, and where decoding failed
    QString error; ///< why there is no image
};

/// Which way up an image comes.
enum class Orientation { Stored, Upright };

/// Reads an image of the types in the catalogue, which its content tells and its name does not:
/// other types may name files of their own. One of more than \a mostPixels is not decoded.
ImageFile readImage(const QString& path, std::int64_t mostPixels, Orientation orientation);

} // namespace tintwell

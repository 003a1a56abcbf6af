#include "lut/image_file.h"

#include "lut/bounded_read.h"
#include "lut/catalogue.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include <optional>
#include <utility>

namespace tintwell {

namespace {

/// The type of the catalogue that a content is of; empty for any other.
QByteArray typeOf(QBuffer& content) {
    for (const QByteArray& type : QByteArray(imageExtensions).split(' ')) {
        QImageReader reader(&content, type);
        reader.setAutoDetectImageFormat(false);
        if (reader.canRead()) {
            return type;
        }
    }
    return {};
}

ImageFile noImage(const QString& error) {
    return {QSize(0, 0), QImage(), error};
}

} // namespace

ImageFile readImage(const QString& path, std::int64_t mostPixels, Orientation orientation) {
    QString error;
    std::optional<QByteArray> content = readBounded(path, error);
    if (!content) {
        return noImage(error);
    }
    QBuffer buffer(&*content);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray type = typeOf(buffer);
    if (type.isEmpty()) {
        return noImage(
            QStringLiteral("is not an image of the types %1").arg(QLatin1String(imageExtensions)));
    }
    QImageReader reader(&buffer, type);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(orientation == Orientation::Upright);
    const QSize size = reader.size();
    if (!size.isValid()) {
        return noImage(reader.errorString());
    }
    if (std::int64_t{size.width()} * size.height() > mostPixels) {
        return {size, QImage(), QString()};
    }
    QImage pixels = reader.read();
    return pixels.isNull() ? noImage(reader.errorString())
                           : ImageFile{pixels.size(), std::move(pixels), QString()};
}

} // namespace tintwell

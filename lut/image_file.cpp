#include "lut/image_file.h"

#include "lut/bounded_read.h"
#include "lut/catalogue.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>

#include <optional>
#include <utility>

namespace tintwell {

namespace {

/// The catalogue's name for the type of an image's content; empty if it is none of them.
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

/// A file that remembers a failed write, and takes the rest without writing it. Image writers do
/// not check all of their writes, and some libraries print a line of their own when one fails.
class WatchedFile : public QFile {
public:
    using QFile::QFile;

    QString failure() const { return m_failure; }

protected:
    qint64 writeData(const char* data, qint64 size) override {
        qint64 written = 0;
        while (written < size && m_failure.isEmpty()) {
            const qint64 count = QFile::writeData(data + written, size - written);
            if (count > 0) {
                written += count;
            } else {
                m_failure = errorString();
            }
        }
        return size;
    }

private:
    QString m_failure;
};

ImageFile noImage(const QString& error) {
    return {QSize(0, 0), QImage(), error};
}

bool isTiff(const QByteArray& content) {
    return content.startsWith(QByteArray("II*\0", 4)) || content.startsWith(QByteArray("MM\0*", 4));
}

QString unknownType(const QByteArray& content) {
    const QString missing = isTiff(content) ? missingPackage("tiff") : QString();
    return !missing.isEmpty() ? missing
                              : QStringLiteral("is not an image of a known type (%1)")
                                    .arg(QLatin1String(imageExtensions));
}

} // namespace

QString missingPackage(const QByteArray& type) {
    return (type == "tif" || type == "tiff") &&
                   !QImageWriter::supportedImageFormats().contains(type)
               ? QStringLiteral("TIFF images need the package qt5-image-formats-plugins")
               : QString();
}

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
        return noImage(unknownType(*content));
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
                           : ImageFile{pixels.size(), std::move(pixels), QString(), type};
}

bool isDeep(QImage::Format format) {
    return QImage::toPixelFormat(format).redSize() > 8;
}

QString writeImage(const QString& path, const QByteArray& type, const QImage& image) {
    WatchedFile file(path);
    // A buffer would hide the reason if the disk is full: part of it is written, without an error.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return file.errorString();
    }
    QImageWriter writer(&file, type);
    if (type == "jpg" || type == "jpeg") {
        writer.setQuality(95); // Qt's default shows bands in gradients
    }
    const bool written = writer.write(image);
    return !file.failure().isEmpty() ? file.failure() : !written ? writer.errorString() : QString();
}

} // namespace tintwell

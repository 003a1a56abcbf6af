#include "lut/image_file.h"

#include "lut/bounded_read.h"
#include "lut/catalogue.h"
#include "lut/pixel_check.h"
#include "lut/tiff_samples.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>

#include <cstring>
#include <limits>
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

/// The size that an image's header states; not valid if the header cannot be read. That of a BMP
/// file with its top row first has a negative height.
QSize sizeOf(const QImageReader& reader) {
    const QSize size = reader.size();
    const bool isTopDown = size.width() >= 0 && size.height() < 0;
    return isTopDown && size.height() >= -std::numeric_limits<int>::max()
               ? QSize(size.width(), -size.height())
               : size;
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

/// The level of zlib that takes half the time of the toolkit's default, 6, or less, for pictures
/// that become at most a tenth larger. The lowest bits of 16 are noise, which no level compresses.
constexpr int usualPngLevel(bool isDeep) {
    return isDeep ? 2 : 5;
}

/// The toolkit's quality for a level of zlib: it takes (100 - quality) * 9 / 91, rounded down.
constexpr int pngQuality(int level) {
    return 100 - (level * 91 + 8) / 9;
}

ImageFile noImage(const QString& error) {
    return {QSize(0, 0), QImage(), error};
}

/// "P1" to "P7" and white space: the netpbm types, which the toolkit reads with 8 bits at most.
bool isNetpbm(const QByteArray& content) {
    return content.size() > 2 && content[0] == 'P' && content[1] >= '1' && content[1] <= '7' &&
           std::strchr(" \t\n\r", content[2]) != nullptr;
}

QString unknownType(const QByteArray& content) {
    QString missing = isTiff(content) ? missingPackage("tiff") : QString();
    if (!missing.isEmpty()) {
        return missing;
    }
    const char* const found =
        isNetpbm(content) ? "is a PPM image or the like, expected one" : "is not an image";
    return QStringLiteral("%1 of a known type (%2)")
        .arg(QLatin1String(found), QLatin1String(imageExtensions));
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
    const TiffSamples samples = tiffSamples(*content);
    if (const QString problem = problemOf(samples); !problem.isEmpty()) {
        return noImage(problem);
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
    const QSize size = sizeOf(reader);
    if (!size.isValid()) {
        const bool isTold = reader.error() != QImageReader::UnknownError;
        return noImage(isTold ? reader.errorString() : QStringLiteral("its header cannot be read"));
    }
    if (std::int64_t{size.width()} * size.height() > mostPixels) {
        return {size, QImage(), QString()};
    }
    if (const QString problem = problemOfPixels(*content, type, size); !problem.isEmpty()) {
        return noImage(problem);
    }
    QImage pixels = reader.read();
    return pixels.isNull()
               ? noImage(reader.errorString())
               : ImageFile{pixels.size(), std::move(pixels), QString(), type, samples.bits};
}

bool isDeep(QImage::Format format) {
    return QImage::toPixelFormat(format).redSize() > 8;
}

bool hasCompression(const QByteArray& type) {
    return type == "png";
}

QString writeImage(const QString& path, const QByteArray& type, const QImage& image,
                   std::optional<int> compression) {
    WatchedFile file(path);
    // A buffer would hide the reason if the disk is full: part of it is written, without an error.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return file.errorString();
    }
    QImageWriter writer(&file, type);
    if (type == "jpg" || type == "jpeg") {
        writer.setQuality(95); // Qt's default shows bands in gradients
    } else if (hasCompression(type)) {
        writer.setQuality(pngQuality(compression.value_or(usualPngLevel(isDeep(image.format())))));
    }
    const bool written = writer.write(image);
    return !file.failure().isEmpty() ? file.failure() : !written ? writer.errorString() : QString();
}

} // namespace tintwell

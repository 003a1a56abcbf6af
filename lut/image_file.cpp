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

/// A file that remembers a failed write. Image writers do not check all of theirs, and a later one
/// may succeed.
class WatchedFile : public QFile {
public:
    using QFile::QFile;

    QString failure() const { return m_failure; }

protected:
    qint64 writeData(const char* data, qint64 size) override {
        qint64 written = 0;
        while (written < size) {
            const qint64 count = QFile::writeData(data + written, size - written);
            if (count <= 0) {
                m_failure = errorString();
                return -1;
            }
            written += count;
        }
        return written;
    }

private:
    QString m_failure;
};

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
        return noImage(QStringLiteral("is not an image of a known type (%1)")
                           .arg(QLatin1String(imageExtensions)));
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
    if (!file.open(QIODevice::WriteOnly)) {
        return file.errorString();
    }
    QImageWriter writer(&file, type);
    if (type == "jpg" || type == "jpeg") {
        writer.setQuality(95); // Qt's default shows bands in gradients
    }
    const bool written = writer.write(image);
    const bool flushed = file.flush();
    return !file.failure().isEmpty() ? file.failure()
           : !flushed                ? file.errorString()
           : !written                ? writer.errorString()
                                     : QString();
}

} // namespace tintwell

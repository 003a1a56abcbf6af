#include "cli/images.h"

#include "calc/look_up_image.h"
#include "cli/image_thread.h"
#include "cli/output.h"
#include "cli/report.h"
#include "lut/image_file.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>

#include <cstdint>

namespace {

/// A header of a few bytes can claim any size; this many pixels take 4 GiB at 16 bits a channel.
constexpr std::int64_t MaxPixels = std::int64_t{1} << 29;

QImage refuse(const QString& path, const QString& why) {
    cli::reportFile(path, why);
    return {};
}

/// A file that remembers a failed write. Image writers do not check all of theirs, and the next one
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

/// What went wrong; empty when nothing did.
QString write(const QString& path, const QByteArray& type, const QImage& image) {
    WatchedFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return file.errorString();
    }
    QImageWriter writer(&file, type);
    if (type == "jpg" || type == "jpeg") {
        writer.setQuality(95); // what the toolkit takes by itself shows bands in gradients
    }
    const bool written = writer.write(image);
    const bool flushed = file.flush();
    return !file.failure().isEmpty() ? file.failure()
           : !flushed                ? file.errorString()
           : !written                ? writer.errorString()
                                     : QString();
}

void noteLosses(const QString& path, const QImage& image) {
    if (!QFileInfo(path).isFile()) {
        return;
    }
    const QImage::Format saved = QImageReader(path).imageFormat();
    if (saved == QImage::Format_Invalid) {
        return; // the type does not tell
    }
    if (tintwell::isDeep(image.format()) && !tintwell::isDeep(saved)) {
        cli::noteFile(path, QStringLiteral("holds 8 of 16 bits a channel"));
    }
    if (image.hasAlphaChannel() && !QImage(1, 1, saved).hasAlphaChannel()) {
        cli::noteFile(path, QStringLiteral("holds no alpha"));
    }
}

} // namespace

std::optional<int> cli::begin(CommandLine& line, const QStringList& arguments, int operands,
                              ImageJob& job, Read_LUTFile& lut) {
    line.addOption("from", fromHelp, "FORMAT");
    line.addOption("in-order",
                   "Orders of the table: rgb or bgr, red-fastest or blue-fastest, or one of each "
                   "with a comma; else as the format has them.",
                   "ORDER");
    line.addOption("force", "Replace an existing file.");
    if (const auto status = line.parse(arguments, operands, operands)) {
        return status;
    }
    const auto orders = ordersOption(line, "in-order");
    if (!orders || !fromIsKnown(line)) {
        return Usage;
    }
    job.target = {line.operands().last(), line.isSet("force")};
    job.type = QFileInfo(job.target.path).suffix().toLower().toLatin1();
    const QList<QByteArray> types = QImageWriter::supportedImageFormats();
    if (!types.contains(job.type)) {
        return line.wrong(QStringLiteral("%1: found the extension \"%2\", expected one of %3")
                              .arg(job.target.path, QString::fromLatin1(job.type),
                                   QString::fromLatin1(types.join(' '))));
    }
    const QString path = line.operands().first();
    const auto format = formatOfInput(path, line.value("from"));
    if (!format || !readLut(path, *format, *orders, lut)) {
        return Failed;
    }
    job.lutFormat = *format;
    return std::nullopt;
}

int cli::doImageWork(const QString& path, const std::function<bool()>& work) {
    bool succeeded = false;
    if (!onImageThread([&] { succeeded = work(); })) {
        reportFile(path, noImageThread());
    }
    return succeeded ? Done : Failed;
}

QImage cli::loadImage(const QString& path) {
    const tintwell::ImageFile image =
        tintwell::readImage(path, MaxPixels, tintwell::Orientation::Upright);
    if (!image.error.isEmpty()) {
        return refuse(path, image.error);
    }
    if (image.pixels.isNull()) {
        return refuse(path, QStringLiteral("found %1 x %2 pixels, expected at most %3 of them")
                                .arg(image.size.width())
                                .arg(image.size.height())
                                .arg(MaxPixels));
    }
    return image.pixels;
}

bool cli::saveImage(const ImageJob& job, const QImage& image) {
    const auto writeTo = [&](const QString& path) { return write(path, job.type, image); };
    if (!saveFile(job.target, writeTo)) {
        return false;
    }
    noteLosses(job.target.path, image);
    return true;
}

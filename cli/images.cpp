#include "cli/images.h"

#include "calc/look_up_image.h"
#include "cli/image_thread.h"
#include "cli/report.h"
#include "cli/words.h"
#include "lut/image_file.h"

#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>

#include <cstdint>

namespace {

/// The limit on pixels, because a header of a few bytes can claim any size. This many take 4 GiB at
/// 16 bits per channel.
constexpr std::int64_t MaxPixels = std::int64_t{1} << 29;

QImage refuse(const QString& path, const QString& why) {
    cli::reportFile(path, why);
    return {};
}

/// Why no image of any type can be written to the target.
QString unsuitable(const cli::ImageJob& job) {
    if (QFileInfo(job.target.path).isDir()) {
        return cli::isFolder();
    }
    return QStringLiteral("found the extension \"%1\", expected one of %2")
        .arg(QString::fromLatin1(job.type),
             QString::fromLatin1(QImageWriter::supportedImageFormats().join(' ')));
}

bool holdsColours(QImage::Format format) {
    return format != QImage::Format_Mono && format != QImage::Format_MonoLSB &&
           format != QImage::Format_Grayscale8 && format != QImage::Format_Grayscale16;
}

/// Notes what the file just written at \a place does not hold.
void noteLosses(const QString& place, const QString& path, const QImage& image, cli::Notes& notes) {
    const QImage::Format saved = QImageReader(place).imageFormat();
    if (saved == QImage::Format_Invalid) {
        return; // the type cannot be told
    }
    if (!holdsColours(saved) && !image.isGrayscale()) {
        notes.add(path, QStringLiteral("stores no colours"));
    }
    if (tintwell::isDeep(image.format()) && !tintwell::isDeep(saved)) {
        notes.add(path, QStringLiteral("stores only 8 of the 16 bits per channel"));
    }
    if (image.hasAlphaChannel() && !QImage(1, 1, saved).hasAlphaChannel()) {
        notes.add(path, QStringLiteral("stores no alpha channel"));
    }
}

} // namespace

std::optional<int> cli::beginImage(const CommandLine& line, const QString& path, ImageJob& job) {
    job.target = {path, line.isSet("force")};
    const bool isNamed = !isStandardOutput(job.target.path);
    job.type = isNamed ? QFileInfo(job.target.path).suffix().toLower().toLatin1() : QByteArray();
    if (const QString missing = tintwell::missingPackage(job.type); !missing.isEmpty()) {
        reportFile(job.target.path, missing);
        return Failed;
    }
    if (isNamed && !QImageWriter::supportedImageFormats().contains(job.type)) {
        return line.wrong(job.target.path + QStringLiteral(": ") + unsuitable(job));
    }
    return std::nullopt;
}

std::optional<int> cli::beginImageJob(CommandLine& line, const QStringList& arguments, int operands,
                                      ImageJob& job) {
    if (const auto status = line.parse(arguments, operands, operands)) {
        return status;
    }
    const std::optional<Input> input = inputOptions(line);
    if (!input) {
        return Usage;
    }
    if (const auto status = beginImage(line, line.operands().last(), job)) {
        return status;
    }
    job.notes = Notes(line.isSet("strict"));
    return loadOneTable(*input, line.operands().first(), job.table, job.notes)
               ? std::nullopt
               : std::optional<int>(Failed);
}

int cli::doImageWork(const QString& path, const std::function<bool()>& work) {
    bool succeeded = false;
    if (!onImageThread([&] { succeeded = work(); })) {
        reportFile(path, noImageThread());
    }
    return succeeded ? Done : Failed;
}

QImage cli::loadImage(const QString& path, QByteArray& type) {
    Source source;
    if (const QString problem = source.open(path); !problem.isEmpty()) {
        return refuse(path, problem);
    }
    const tintwell::ImageFile image =
        tintwell::readImage(source.place(), MaxPixels, tintwell::Orientation::Upright);
    if (!image.error.isEmpty()) {
        return refuse(path, image.error);
    }
    if (image.pixels.isNull()) {
        return refuse(path, QStringLiteral("found %1 x %2 pixels, expected at most %3 in all")
                                .arg(image.size.width())
                                .arg(image.size.height())
                                .arg(MaxPixels));
    }
    if (type.isEmpty()) {
        type = image.type;
    }
    return image.pixels;
}

bool cli::saveImage(ImageJob& job, const QImage& image) {
    return saveFile(job.target, [&](const QString& place) {
        QString error = tintwell::writeImage(place, job.type, image);
        if (error.isEmpty()) {
            noteLosses(place, job.target.path, image, job.notes);
            error = job.notes.allowWriting() ? QString() : job.notes.reason();
        }
        return error;
    });
}

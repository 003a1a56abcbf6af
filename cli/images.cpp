#include "cli/images.h"

#include "calc/look_up_image.h"
#include "cli/image_thread.h"
#include "cli/report.h"
#include "cli/words.h"
#include "lut/image_file.h"
#include "lut/words.h"

#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>

#include <cstdint>

namespace {

/// The limit on pixels, because a header of a few bytes can claim any size. This many take 4 GiB at
/// 16 bits per channel.
constexpr std::int64_t MaxPixels = std::int64_t{1} << 29;

QImage refuse(const QString& path, const QString& why, cli::Notes& notes) {
    notes.fail(path, why);
    return {};
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

QByteArray cli::imageTypeOf(const QString& path) {
    return QFileInfo(path).suffix().toLower().toLatin1();
}

QString cli::imageTypeProblem(const QByteArray& type, const QString& path) {
    if (QString missing = tintwell::missingPackage(type); !missing.isEmpty()) {
        return missing;
    }
    const QList<QByteArray> types = QImageWriter::supportedImageFormats();
    if (types.contains(type)) {
        return {};
    }
    return QFileInfo(path).isDir()
               ? isFolder()
               : QStringLiteral("found the extension \"%1\", expected one of %2")
                     .arg(QString::fromLatin1(type), QString::fromLatin1(types.join(' ')));
}

std::optional<int> cli::checkImageType(const CommandLine& line, const QByteArray& type,
                                       const QString& path) {
    const QString problem = imageTypeProblem(type, path);
    if (problem.isEmpty()) {
        return std::nullopt;
    }
    if (tintwell::missingPackage(type).isEmpty()) {
        return line.wrong(tintwell::inFile(path, problem));
    }
    reportFile(path, problem);
    return Failed;
}

std::optional<int> cli::beginImage(const CommandLine& line, const QString& path, ImageJob& job) {
    const bool isNamed = !isStandardOutput(path);
    job.image = {{path, line.isSet("force")}, isNamed ? imageTypeOf(path) : "png", std::nullopt};
    return checkImageType(line, job.image.type, path);
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

QImage cli::loadImage(const QString& path, QByteArray& type, Notes& notes) {
    Source source;
    if (const QString problem = source.open(path); !problem.isEmpty()) {
        return refuse(path, problem, notes);
    }
    const tintwell::ImageFile image =
        tintwell::readImage(source.place(), MaxPixels, tintwell::Orientation::Upright);
    if (!image.error.isEmpty()) {
        return refuse(path, image.error, notes);
    }
    if (image.pixels.isNull()) {
        return refuse(path,
                      QStringLiteral("found %1 x %2 pixels, expected at most %3 in all")
                          .arg(image.size.width())
                          .arg(image.size.height())
                          .arg(MaxPixels),
                      notes);
    }
    if (image.bits > 8 && !tintwell::isDeep(image.pixels.format())) {
        notes.add(path,
                  QStringLiteral("only 8 of the %1 bits per channel are read").arg(image.bits));
    }
    if (type.isEmpty()) {
        type = image.type;
    }
    return image.pixels;
}

bool cli::saveImage(const ImageTarget& to, const QImage& image, Notes& notes) {
    const QString& path = to.target.path;
    if (to.compression && !tintwell::hasCompression(to.type)) {
        notes.add(path, QStringLiteral("--compression has no effect on %1, only on png")
                            .arg(QString::fromLatin1(to.type)));
    }
    const auto write = [&](const QString& place) {
        QString error = tintwell::writeImage(place, to.type, image, to.compression);
        if (error.isEmpty()) {
            noteLosses(place, path, image, notes);
            error = notes.allowWriting() ? QString() : notes.reason();
        }
        return error;
    };
    return saveFile(to.target, write, notes);
}

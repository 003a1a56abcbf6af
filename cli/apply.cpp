#include "calc/look_up_image.h"
#include "cli/command.h"
#include "cli/images.h"
#include "cli/range.h"

#include <utility>

namespace {

bool apply(const cli::ImageJob& job, const QString& path, Read_LUTFile& lut) {
    QImage image = cli::loadImage(path);
    return !image.isNull() && cli::saveImage(job, tintwell::lookUpImage(lut, std::move(image)));
}

} // namespace

int cli::runApply(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    ImageJob job;
    Read_LUTFile lut(nullptr);
    if (const auto status = begin(line, arguments, 3, job, lut)) {
        return *status;
    }
    noteRange(line.operands().first(), job.lutFormat, lut);
    const QString in = line.operands().at(1);
    return doImageWork(in, [&] { return apply(job, in, lut); });
}

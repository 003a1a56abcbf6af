// apply LUT IN-IMAGE OUT-IMAGE: applies a table to an image.

#include "calc/look_up_image.h"
#include "cli/command.h"
#include "cli/images.h"

#include <utility>

namespace {

bool apply(cli::ImageJob& job, const QString& path) {
    QImage image = cli::loadImage(path, job.type);
    return !image.isNull() &&
           saveImage(job, tintwell::lookUpImage(job.table.lut, std::move(image)));
}

} // namespace

int cli::runApply(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    ImageJob job;
    if (const auto status = beginImageJob(line, arguments, 3, job)) {
        return *status;
    }
    const QString in = line.operands().at(1);
    return doImageWork(in, [&] { return apply(job, in); });
}

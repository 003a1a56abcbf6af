#include "calc/look_up_image.h"
#include "cli/command.h"
#include "cli/images.h"
#include "cli/range.h"

#include <utility>

int cli::runApply(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    ImageJob job;
    Read_LUTFile lut(nullptr);
    if (const auto status = begin(line, arguments, 3, job, lut)) {
        return *status;
    }
    noteRange(line.operands().first(), job.lutFormat, lut);
    QImage image = loadImage(line.operands().at(1));
    if (image.isNull()) {
        return Failed;
    }
    return saveImage(job, tintwell::lookUpImage(lut, std::move(image))) ? Done : Failed;
}

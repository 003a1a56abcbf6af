#include "cli/command.h"
#include "cli/images.h"
#include "cli/lut_picture.h"
#include "lut/catalogue.h"

#include <QFileInfo>

namespace {

/// "0 to 1", or one such range a channel where they differ.
QString domainText(const float* min, const float* max) {
    QStringList ranges;
    for (int c = 0; c < 3; ++c) {
        ranges << QStringLiteral("%1 to %2").arg(min[c]).arg(max[c]);
    }
    ranges.removeDuplicates();
    return ranges.join(QStringLiteral(", "));
}

/// "cube, 3D, 33 points per axis, input 0 to 1"
QString describe(const Read_LUTFile& lut, int format) {
    const bool is3D = lut.size3D > 0;
    const QString size = is3D ? QStringLiteral("3D, %1 points per axis").arg(lut.size3D)
                              : QStringLiteral("1D, %1 entries").arg(lut.size1D);
    const QString domain = is3D ? domainText(lut.domainMin3D, lut.domainMax3D)
                                : domainText(lut.domainMin1D, lut.domainMax1D);
    return QStringLiteral("%1, %2, input %3")
        .arg(QString::fromUtf8(tintwell::formatOf(format)->name), size, domain);
}

} // namespace

int cli::runPicture(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    ImageJob job;
    Read_LUTFile lut(nullptr);
    if (const auto status = begin(line, arguments, 2, job, lut)) {
        return *status;
    }
    const QString title = QFileInfo(line.operands().first()).fileName();
    return saveImage(job, drawLut(lut, title, describe(lut, job.lutFormat))) ? Done : Failed;
}

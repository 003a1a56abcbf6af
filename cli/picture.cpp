#include "cli/command.h"
#include "cli/images.h"
#include "cli/lut_picture.h"
#include "cli/range.h"
#include "cli/shape.h"

#include <QFileInfo>

namespace {

/// "cube, 3D, 33 points per axis, domain 0 to 1"
QString describe(const Read_LUTFile& lut, int formatCode) {
    const tintwell::Format& format = *tintwell::formatOf(formatCode);
    const bool is3D = lut.size3D > 0;
    const auto kind = is3D ? tintwell::TableKind::ThreeD : tintwell::TableKind::OneD;
    const cli::StatedRange range = cli::rangeOf(lut, kind);

    QStringList facts = {QLatin1String(format.name), QLatin1String(tintwell::kindName(kind)),
                         is3D ? QStringLiteral("%1 points per axis").arg(lut.size3D)
                              : cli::entriesText(lut.size1D)};
    if (const char* const name = nameOf(range, format)) {
        facts << QLatin1String(name) + QLatin1Char(' ') + text(range);
    }
    return facts.join(QStringLiteral(", "));
}

} // namespace

int cli::runPicture(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    ImageJob job;
    Read_LUTFile lut(nullptr);
    if (const auto status = begin(line, arguments, 2, job, lut)) {
        return *status;
    }
    const QString path = line.operands().first();
    const QString subtitle = describe(lut, job.lutFormat);
    return doImageWork(job.target.path, [&] {
        return saveImage(job, drawLut(lut, QFileInfo(path).fileName(), subtitle));
    });
}

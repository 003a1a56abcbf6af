// identity OUT: a table that changes nothing.

#include "calc/lutcalc.h"
#include "cli/output.h"
#include "cli/report.h"
#include "cli/shape.h"

namespace {

bool makeIdentity(tintwell::TableKind kind, int size, Read_LUTFile& lut) {
    if (!cli::allocate(kind, size, lut)) {
        return false;
    }
    if (kind == tintwell::TableKind::ThreeD) {
        LutCalc().Lut3D_OnebyOne(lut);
    } else {
        LutCalc().Lut1D_OnebyOne(lut);
    }
    return true;
}

} // namespace

int cli::runIdentity(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    addOutputOptions(line);
    if (const auto status = line.parse(arguments, 1, 1)) {
        return *status;
    }
    const std::optional<Output> output = outputOptions(line);
    if (!output) {
        return Usage;
    }
    const QString path = line.operands().first();
    const std::optional<int> code = targetFormat(line, *output, path);
    if (!code) {
        return Usage;
    }
    const tintwell::Format& format = *tintwell::formatOf(*code);
    Read_LUTFile lut(nullptr);
    if (!makeIdentity(format.kind, sizeIn(format, output->size, usualSize(format.kind)), lut)) {
        reportFile(path, lut.lastError);
        return Failed;
    }
    return writeTable(*output, *code, path, path, lut) ? Done : Failed;
}

// identity OUT: writes an identity table.

#include "calc/make_table.h"
#include "cli/output.h"
#include "cli/report.h"
#include "cli/shape.h"

int cli::runIdentity(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 1, 1)) {
        return *status;
    }
    const std::optional<Output> output = outputOptions(line);
    if (!output) {
        return Usage;
    }
    const QString path = line.operands().first();
    const tintwell::Format* const format = targetFormat(line, *output, path);
    if (format == nullptr) {
        return Usage;
    }
    Read_LUTFile lut(nullptr);
    const int size = sizeIn(*format, output->size, usualSize(format->kind));
    if (!tintwell::makeIdentity(lut, format->kind, size)) {
        reportFile(path, lut.lastError);
        return Failed;
    }
    Notes notes(false);
    return writeTable(*output, *format, path, path, lut, notes) ? Done : Failed;
}

// merge FIRST SECOND OUT: one table with the effect of two, one after the other.

#include "calc/compare.h"
#include "calc/make_table.h"
#include "cli/domain.h"
#include "cli/input.h"
#include "cli/output.h"
#include "cli/report.h"
#include "cli/shape.h"
#include "cli/words.h"

#include <algorithm>

namespace {

using tintwell::Format;
using tintwell::TableKind;

/// The larger of the two tables of the result's kind, or the default size if neither is of that
/// kind.
int largerSize(TableKind kind, const Read_LUTFile& first, const Read_LUTFile& second) {
    const int larger = kind == TableKind::ThreeD ? std::max(first.size3D, second.size3D)
                                                 : std::max(first.size1D, second.size1D);
    return larger > 0 ? larger : cli::usualSize(kind);
}

void noteKinds(TableKind kind, int size, const QString& path, const Read_LUTFile& first,
               const Read_LUTFile& second, cli::Notes& notes) {
    const bool anyLattice = first.hasTable3D() || second.hasTable3D();
    if (kind == TableKind::OneD && anyLattice) {
        notes.add(path, QStringLiteral("only the grey axis of the merged table is kept, in %1")
                            .arg(cli::sizeText(kind, size)));
    } else if (kind == TableKind::ThreeD && !anyLattice) {
        notes.add(
            path,
            QStringLiteral("the 1D tables become a lattice of %1").arg(cli::sizeText(kind, size)));
    }
}

} // namespace

int cli::runMerge(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 3, 3)) {
        return *status;
    }
    const std::optional<Input> input = inputOptions(line);
    const std::optional<Output> output = input ? outputOptions(line) : std::nullopt;
    if (!output) {
        return Usage;
    }
    const QString path = line.operands().at(2);
    const Format* const format = targetFormat(line, *output, path);
    if (format == nullptr) {
        return Usage;
    }
    Table first;
    Table second;
    Notes notes(line.isSet("strict"));
    if (!loadOneTable(*input, line.operands().at(0), first, notes) ||
        !loadOneTable(*input, line.operands().at(1), second, notes)) {
        return Failed;
    }
    const int size = sizeIn(*format, output->size, largerSize(format->kind, first.lut, second.lut));
    Read_LUTFile merged(nullptr);
    if (!tintwell::compose(first.lut, second.lut, merged, format->kind, size)) {
        reportFile(path, merged.lastError);
        return Failed;
    }
    for (const Table* const table : {&first, &second}) {
        noteLostTitle(*table, path, notes);
    }
    noteKinds(format->kind, size, path, first.lut, second.lut, notes);
    noteError(path, tintwell::compositionError(first.lut, second.lut, merged, format->kind), notes);
    return writeTable(*output, *format, path, path, merged, notes) ? Done : Failed;
}

// merge FIRST SECOND... OUT: one table with the effect of several, one after the other.

#include "calc/compare.h"
#include "calc/make_table.h"
#include "calc/measure.h"
#include "cli/domain.h"
#include "cli/input.h"
#include "cli/output.h"
#include "cli/report.h"
#include "cli/shape.h"
#include "cli/words.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <vector>

namespace {

using tintwell::Format;
using tintwell::TableKind;
using tintwell::Tables;

/// The largest of the tables of the result's kind, or the default size if none is of that kind.
int largestOf(TableKind kind, Tables tables) {
    int largest = 0;
    for (const Read_LUTFile* const table : tables) {
        largest = std::max(largest, tintwell::sizeOf(*table, kind));
    }
    return largest > 0 ? largest : cli::usualSize(kind);
}

void noteKinds(TableKind kind, int size, const QString& path, Tables tables, cli::Notes& notes) {
    const bool anyLattice = std::any_of(tables.begin(), tables.end(),
                                        [](const auto* table) { return table->hasTable3D(); });
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
    if (const auto status = line.parse(arguments, 3, std::numeric_limits<int>::max())) {
        return *status;
    }
    const std::optional<Input> input = inputOptions(line);
    const std::optional<Output> output = input ? outputOptions(line) : std::nullopt;
    if (!output) {
        return Usage;
    }
    QStringList inputs = line.operands();
    const QString path = inputs.takeLast();
    const Format* const format = targetFormat(line, *output, path);
    if (format == nullptr) {
        return Usage;
    }
    std::deque<Table> read;
    std::vector<const Read_LUTFile*> tables;
    Notes notes(line.isSet("strict"));
    for (const QString& in : inputs) {
        if (!loadOneTable(*input, in, read.emplace_back(), notes)) {
            return Failed;
        }
        tables.push_back(&read.back().lut);
    }
    const int size = sizeIn(*format, output->size, largestOf(format->kind, tables));
    Read_LUTFile merged(nullptr);
    if (!tintwell::compose(tables, merged, format->kind, size)) {
        reportFile(path, merged.lastError);
        return Failed;
    }
    noteLostDomain(read.front(), format->kind, path, notes);
    for (const Table& table : read) {
        noteLostTitle(table, path, notes);
    }
    noteKinds(format->kind, size, path, tables, notes);
    noteError(path, tintwell::compositionError(tables, merged, format->kind), notes);
    return writeTable(*output, *format, path, path, merged, notes) ? Done : Failed;
}

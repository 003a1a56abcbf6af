// merge FIRST SECOND OUT: one table that does what two do, one after the other.

#include "calc/lattice_axis.h"
#include "calc/lutcalc.h"
#include "cli/output.h"
#include "cli/range.h"
#include "cli/report.h"
#include "cli/shape.h"
#include "lut/lattice.h"

#include <algorithm>

namespace {

using tintwell::Format;
using tintwell::TableKind;
using tintwell::unitPosition;

void lookUp(LutCalc& calc, const float* in, float* out, Read_LUTFile& lut) {
    if (lut.size3D > 0) {
        calc.Lut3D_Tetrahedral(in, out, lut);
    } else {
        calc.Lut1D_liner(in, out, lut);
    }
}

void lookUpBoth(LutCalc& calc, const float* in, float* out, Read_LUTFile& first,
                Read_LUTFile& second) {
    float between[3];
    lookUp(calc, in, between, first);
    lookUp(calc, between, out, second);
}

void mergeLattice(Read_LUTFile& first, Read_LUTFile& second, Read_LUTFile& merged) {
    LutCalc calc;
    if (first.size3D > 0 && second.size3D > 0) {
        calc.Lut3D_Merge(first, second, merged);
        return;
    }
    const int n = merged.size3D;
    tintwell::visitLattice(n, [&](int i, int j, int k) {
        const float point[] = {unitPosition(i, n), unitPosition(j, n), unitPosition(k, n)};
        lookUpBoth(calc, point, merged.data3D[i][j][k], first, second);
        return true;
    });
}

void mergeCurves(Read_LUTFile& first, Read_LUTFile& second, Read_LUTFile& merged) {
    LutCalc calc;
    for (int i = 0; i < merged.size1D; ++i) {
        const float t = unitPosition(i, merged.size1D);
        const float grey[] = {t, t, t};
        lookUpBoth(calc, grey, merged.data1D[i], first, second);
    }
}

/// The larger of the two in the kind of the result, or the usual size where neither is of it.
int largerSize(TableKind kind, const Read_LUTFile& first, const Read_LUTFile& second) {
    const int larger = kind == TableKind::ThreeD ? std::max(first.size3D, second.size3D)
                                                 : std::max(first.size1D, second.size1D);
    return larger > 0 ? larger : cli::usualSize(kind);
}

/// A lattice stands for a file that has both kinds.
bool openOne(const QString& path, const QString& formatName, Read_LUTFile& lut) {
    const std::optional<int> code = cli::formatOfInput(path, formatName);
    if (!code || !cli::readLut(path, *code, cli::Orders(), lut)) {
        return false;
    }
    cli::noteRange(path, *code, lut);
    if (lut.size3D > 0 && lut.size1D > 0) {
        cli::noteBothKinds(path, TableKind::ThreeD);
        lut.setSize1D(0);
    }
    return true;
}

void noteKinds(TableKind kind, int size, const QString& path, const Read_LUTFile& first,
               const Read_LUTFile& second) {
    const bool anyLattice = first.size3D > 0 || second.size3D > 0;
    if (kind == TableKind::OneD && anyLattice) {
        cli::noteFile(
            path, QStringLiteral("of the merged table only the grey axis is kept, in %1 entries")
                      .arg(size));
    } else if (kind == TableKind::ThreeD && !anyLattice) {
        cli::noteFile(
            path, QStringLiteral("the 1D tables become a lattice of %1 points per axis").arg(size));
    }
}

} // namespace

int cli::runMerge(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    line.addOption("from",
                   "Format of both inputs, by short name or code; else their extensions and "
                   "contents tell.",
                   "FORMAT");
    addOutputOptions(line);
    if (const auto status = line.parse(arguments, 3, 3)) {
        return *status;
    }
    const std::optional<Output> output = outputOptions(line);
    if (!output || !fromIsKnown(line)) {
        return Usage;
    }
    const QString path = line.operands().at(2);
    const std::optional<int> code = targetFormat(line, *output, path);
    if (!code) {
        return Usage;
    }
    Read_LUTFile first(nullptr);
    Read_LUTFile second(nullptr);
    const QString from = line.value("from");
    if (!openOne(line.operands().at(0), from, first) ||
        !openOne(line.operands().at(1), from, second)) {
        return Failed;
    }
    const Format& format = *tintwell::formatOf(*code);
    const int size = sizeIn(format, output->size, largerSize(format.kind, first, second));
    Read_LUTFile merged(nullptr);
    if (!allocate(format.kind, size, merged)) {
        reportFile(path, merged.lastError);
        return Failed;
    }
    if (format.kind == TableKind::ThreeD) {
        mergeLattice(first, second, merged);
    } else {
        mergeCurves(first, second, merged);
    }
    noteKinds(format.kind, size, path, first, second);
    return writeTable(*output, *code, path, path, merged) ? Done : Failed;
}

// merge FIRST SECOND OUT: one table that does what two do, one after the other.

#include "calc/lutcalc.h"
#include "cli/output.h"
#include "cli/report.h"
#include "cli/shape.h"

#include <algorithm>

namespace {

/// Lattices alone can be merged: curves become one.
bool ensureLattice(Read_LUTFile& lut, int size, Read_LUTFile& made, Read_LUTFile*& lattice) {
    lattice = lut.size3D > 0 ? &lut : &made;
    return lut.size3D > 0 || cli::makeLattice(lut, size, made);
}

bool mergeInto(Read_LUTFile& first, Read_LUTFile& second, int size, Read_LUTFile& merged) {
    Read_LUTFile madeOfFirst(nullptr);
    Read_LUTFile madeOfSecond(nullptr);
    Read_LUTFile* firstLattice = nullptr;
    Read_LUTFile* secondLattice = nullptr;
    if (!ensureLattice(first, size, madeOfFirst, firstLattice) ||
        !ensureLattice(second, size, madeOfSecond, secondLattice) ||
        !cli::allocate(tintwell::TableKind::ThreeD, size, merged)) {
        return false;
    }
    LutCalc().Lut3D_Merge(*firstLattice, *secondLattice, merged);
    return true;
}

/// As asked, or the larger lattice of the two; curves alone are worth the usual one.
int latticeSize(std::optional<int> asked, const Read_LUTFile& first, const Read_LUTFile& second) {
    const int larger = std::max(first.size3D, second.size3D);
    const int found = larger > 0 ? larger : cli::usualSize(tintwell::TableKind::ThreeD);
    return std::min(asked.value_or(found), Read_LUTFile::MaxSize3D);
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
    QString problem;
    const std::optional<int> code = formatOfOutput(path, output->formatName, -1, problem);
    if (!code) {
        return line.wrong(problem);
    }
    if (!sizeFits(line, *output, *code)) {
        return Usage;
    }
    Read_LUTFile first(nullptr);
    Read_LUTFile second(nullptr);
    const QString from = line.value("from");
    if (!openLut(line.operands().at(0), from, first) ||
        !openLut(line.operands().at(1), from, second)) {
        return Failed;
    }
    Read_LUTFile merged(nullptr);
    if (!mergeInto(first, second, latticeSize(output->size, first, second), merged)) {
        reportFile(path, QStringLiteral("the tables are too large for the memory"));
        return Failed;
    }
    return writeTable(*output, *code, path, path, merged) ? Done : Failed;
}

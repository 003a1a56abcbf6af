#include "formats/sized_lattice.h"

#include "formats/tables.h"
#include "formats/text/words.h"
#include "lut/text_file.h"

namespace tintwell {

namespace {

/// Reads up to and with the size line. One without a number leaves the size alone. False for a file
/// without a size line.
bool readHeader(LineSource& lines, std::string_view keyword, Read_LUTFile& lut) {
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (!startsWith(line, keyword)) {
            continue;
        }
        int size = 0;
        if (scan(without(line, keyword), size) > 0) {
            lut.setSize3D(size);
        }
        return true;
    }
    return false;
}

} // namespace

bool readSizedLattice(const SizedLattice& format, const QString& path, bool probe,
                      Read_LUTFile& lut) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return lut.fail(lines.error());
    }
    lut.applyDefaultOrder(format.dataOrder, format.tableOrder);
    const bool hasBody = readHeader(lines, format.keyword, lut);
    if (probe || !hasBody || lut.size3D < 1) {
        lut.resetDomainMax3D();
        return lut.hasSize() || failUnsized(lut, format.sizeLine);
    }
    // Neither an empty line nor a comment begins with a number.
    return readLattice(lut, lines, Triple<float>(), takeNumbers);
}

bool writeSizedLattice(const SizedLattice& format, const QString& path, const Read_LUTFile& lut,
                       Write_LUTFile& writer) {
    TextFile out = TextFile::forLattice(path, lut, writer.lastError);
    if (!out.isOpen()) {
        return false;
    }
    out << format.preamble << format.keyword << ' ' << lut.size3D << '\n';
    writer.forceRealNumbers();
    writer.applyDefaultOrder(format.dataOrder, format.tableOrder);
    emitLattice(out, writer, lut, writer.outputScale, " ");
    return true;
}

} // namespace tintwell

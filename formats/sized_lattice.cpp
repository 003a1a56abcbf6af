#include "formats/sized_lattice.h"

#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"

namespace tintwell {

namespace {

/// Reads up to and including the size line. A size line without a number leaves the size unchanged.
/// False if there is no size line.
bool readHeader(LineSource& lines, std::string_view keyword, Read_LUTFile& lut) {
    OddLines before;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (!startsWith(line, keyword)) {
            before.addUnlessComment(line, lines);
            continue;
        }
        before.tell(lut, QStringLiteral("which comes before the size and is ignored"));
        int size = 0;
        if (scan(removeAll(line, keyword), size) > 0) {
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
    lut.applyDefaultOrders(format.code);
    const bool hasBody = readHeader(lines, format.keyword, lut);
    if (probe || !hasBody || lut.size3D < 1) {
        lut.resetDomainMax3D();
        return lut.hasSize() || failUnsized(lut, lines, format.sizeLine);
    }
    // Empty lines and comments need no check: they do not begin with a number.
    return readLattice(lut, lines, Triple<float>(), scanNumbers);
}

bool writeSizedLattice(const SizedLattice& format, const QString& path, const Read_LUTFile& lut,
                       Write_LUTFile& writer) {
    TextFile out = createFor3D(path, lut, writer.lastError);
    if (!out.isOpen()) {
        return false;
    }
    out << format.preamble << format.keyword << ' ' << lut.size3D << '\n';
    writer.forceRealNumbers();
    writer.applyDefaultOrders(format.code);
    emitLattice(out, writer, lut, writer.outputScale, " ");
    return true;
}

} // namespace tintwell

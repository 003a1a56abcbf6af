// The cube format, 3D, 1D or both:
//
//     TITLE "Warm evening"
//     LUT_3D_SIZE 2
//     DOMAIN_MIN 0.0 0.0 0.0
//     DOMAIN_MAX 1.0 1.0 1.0
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//
// Keywords may be on any line. Samples are k fastest; the entries of a 1D table follow those of the
// 3D table. A "Mesh 8 10" line declares integer samples, here of ten bits.

#include "formats/domain.h"
#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <algorithm>
#include <cmath>
#include <string_view>

using tintwell::allocateLattice;
using tintwell::Completeness;
using tintwell::contains;
using tintwell::FillResult;
using tintwell::latticeSizeOf;
using tintwell::LineSource;
using tintwell::removeAll;
using tintwell::scan;
using tintwell::Triple;

namespace {

/// What the first pass finds besides the fields of the container.
struct CubeHeader {
    int outBits = 0;
    bool hasMeshWord = false; ///< some line contains "MESH" and must be skipped

    float meshScale() const { return std::ldexp(1.0F, outBits); }
};

enum class LineKind { Keyword, BadSize, Data };

bool isComment(std::string_view line) {
    return tintwell::startsWith(line, "#") || tintwell::startsWith(line, "x");
}

LineKind kindOfSize(int size) {
    return size < 1 ? LineKind::BadSize : LineKind::Keyword;
}

LineKind parseTriple(std::string_view line, std::string_view keyword, float (&channels)[3]) {
    scan(removeAll(line, keyword), channels[0], channels[1], channels[2]);
    return LineKind::Keyword;
}

LineKind parseInputRange(std::string_view line, Read_LUTFile& lut) {
    tintwell::scanDomain(removeAll(line, "LUT_1D_INPUT_RANGE "), lut.domainMin1D, lut.domainMax1D);
    return LineKind::Keyword;
}

LineKind parseMesh(std::string_view line, Read_LUTFile& lut, CubeHeader& header) {
    int inBits = 0;
    scan(line.substr(std::min<std::size_t>(line.size(), 5)), inBits, header.outBits);
    lut.meshHeader = true;
    return LineKind::Keyword;
}

/// Classifies a line that is neither empty nor a comment, and processes its keyword.
LineKind parseLine(std::string_view line, Read_LUTFile& lut, CubeHeader& header) {
    header.hasMeshWord = header.hasMeshWord || contains(line, "MESH");
    if (contains(line, "LUT_3D_SIZE")) {
        lut.setSize3D(tintwell::toInt(removeAll(line, "LUT_3D_SIZE ")));
        return kindOfSize(lut.size3D);
    }
    if (contains(line, "TITLE")) {
        return LineKind::Keyword;
    }
    if (contains(line, "DOMAIN_MIN")) {
        return parseTriple(line, "DOMAIN_MIN ", lut.domainMin3D);
    }
    if (contains(line, "DOMAIN_MAX")) {
        return parseTriple(line, "DOMAIN_MAX ", lut.domainMax3D);
    }
    if (contains(line, "LUT_1D_SIZE")) {
        lut.setSize1D(tintwell::toInt(removeAll(line, "LUT_1D_SIZE ")));
        return kindOfSize(lut.size1D);
    }
    if (contains(line, "LUT_1D_INPUT_RANGE")) {
        return parseInputRange(line, lut);
    }
    if (tintwell::startsWith(line, "Mesh")) {
        return parseMesh(line, lut, header);
    }
    return LineKind::Data;
}

/// Processes every keyword, wherever it is. False for a bad size.
bool readHeader(LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    while (lines.skipToLetters()) {
        const std::string_view line = lines.next();
        if (!isComment(line) && parseLine(line, lut, header) == LineKind::BadSize) {
            return tintwell::failAtLine(lut, lines, QStringLiteral("a size of 1 or more"));
        }
    }
    return true;
}

/// The size of the lattice that the data lines fill, for a file that states no size.
int inferredSize(LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    int count = 0;
    lines.rewind();
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (!line.empty() && !isComment(line) && parseLine(line, lut, header) == LineKind::Data) {
            ++count;
        }
    }
    return latticeSizeOf(count);
}

/// An integer sample, scaled to real numbers.
bool parseCodes(std::string_view line, Triple<int>& codes, float scale, Triple<float>& sample) {
    if (!codes.scan(line)) {
        return false;
    }
    sample = {static_cast<float>(codes.r) / scale, static_cast<float>(codes.g) / scale,
              static_cast<float>(codes.b) / scale};
    return true;
}

/// Lines that never hold a sample, whatever they begin with.
bool isPassedOver(std::string_view line, const CubeHeader& header) {
    return line.empty() || isComment(line) || (header.hasMeshWord && contains(line, "MESH"));
}

} // namespace

bool Read_LUTFile::Read_Cube(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Cube);
    meshHeader = false;

    CubeHeader header;
    if (!readHeader(lines, *this, header)) {
        return false;
    }
    if (size3D == 0 && size1D == 0) {
        setSize3D(inferredSize(lines, *this, header));
    }
    if (probe) {
        return true;
    }
    if ((size3D > 0 && !allocateLattice(*this, lines, Completeness::Complete)) ||
        (size1D > 0 && !tintwell::allocateCurve(*this, lines, Completeness::Partial))) {
        resetDomainMax3D();
        return false;
    }

    lines.rewind();
    Triple<float> sample;
    Triple<int> codes;
    const auto parseSample = [&](std::string_view line, Triple<float>& values) {
        return !isPassedOver(line, header) &&
               (meshHeader ? parseCodes(line, codes, header.meshScale(), values)
                           : values.scan(line));
    };
    const FillResult lattice = fillLattice(*this, lines, sample, parseSample);
    if (lattice != FillResult::Complete) {
        resetDomainMax3D();
        if (lattice == FillResult::LastMissing) {
            resetDomainMax1D();
        }
        return lattice == FillResult::LastMissing;
    }

    const auto parseEntry = [&](std::string_view line, Triple<float>& values) {
        return !isPassedOver(line, header) && values.scan(line);
    };
    const FillResult entries = fillCurve(*this, lines, sample, parseEntry);
    resetDomainMax1D();
    if (entries == FillResult::EndedEarly) {
        return false;
    }
    resetDomainMax3D();
    return true;
}

bool Write_LUTFile::Write_Cube(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor3D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Cube);
    out << "TITLE \n"
        << "LUT_3D_SIZE " << lut.size3D << '\n';
    tintwell::emitLattice(out, *this, lut, outputScale, " ");
    return true;
}

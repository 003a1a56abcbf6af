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
// Keywords may stand on any line. Samples come k fastest; entries of a 1D table follow those of the
// 3D table. A "Mesh 8 10" line declares integer samples, here of ten bits.

#include "formats/tables.h"
#include "formats/text/words.h"
#include "lut/read_lutfile.h"
#include "lut/text_file.h"
#include "lut/write_lutfile.h"

#include <algorithm>
#include <cmath>
#include <string_view>

using tintwell::allocateLattice;
using tintwell::Body;
using tintwell::cubeRoot;
using tintwell::holds;
using tintwell::LineSource;
using tintwell::scan;
using tintwell::Triple;
using tintwell::Walk;
using tintwell::without;

namespace {

/// What the first pass learns beyond the fields of the container.
struct CubeHeader {
    int outBits = 0;
    bool hasMeshWord = false; ///< some line must be passed over for it

    float meshScale() const { return std::ldexp(1.0F, outBits); }
};

enum class LineKind { Keyword, BadSize, Data };

bool isComment(std::string_view line) {
    return tintwell::startsWith(line, "#") || tintwell::startsWith(line, "x");
}

LineKind kindOfSize(int size) {
    return size < 1 ? LineKind::BadSize : LineKind::Keyword;
}

LineKind takeTriple(std::string_view line, std::string_view keyword, float (&channels)[3]) {
    scan(without(line, keyword), channels[0], channels[1], channels[2]);
    return LineKind::Keyword;
}

LineKind takeInputRange(std::string_view line, Read_LUTFile& lut) {
    tintwell::takeRange(without(line, "LUT_1D_INPUT_RANGE "), lut.domainMin1D, lut.domainMax1D);
    return LineKind::Keyword;
}

LineKind takeMesh(std::string_view line, Read_LUTFile& lut, CubeHeader& header) {
    int inBits = 0;
    scan(line.substr(std::min<std::size_t>(line.size(), 5)), inBits, header.outBits);
    lut.meshHeader = true;
    return LineKind::Keyword;
}

/// Classifies a line that is neither empty nor a comment, and acts on its keyword.
LineKind takeLine(std::string_view line, Read_LUTFile& lut, CubeHeader& header) {
    header.hasMeshWord = header.hasMeshWord || holds(line, "MESH");
    if (holds(line, "LUT_3D_SIZE")) {
        lut.setSize3D(tintwell::toInt(without(line, "LUT_3D_SIZE ")));
        return kindOfSize(lut.size3D);
    }
    if (holds(line, "TITLE")) {
        return LineKind::Keyword;
    }
    if (holds(line, "DOMAIN_MIN")) {
        return takeTriple(line, "DOMAIN_MIN ", lut.domainMin3D);
    }
    if (holds(line, "DOMAIN_MAX")) {
        return takeTriple(line, "DOMAIN_MAX ", lut.domainMax3D);
    }
    if (holds(line, "LUT_1D_SIZE")) {
        lut.setSize1D(tintwell::toInt(without(line, "LUT_1D_SIZE ")));
        return kindOfSize(lut.size1D);
    }
    if (holds(line, "LUT_1D_INPUT_RANGE")) {
        return takeInputRange(line, lut);
    }
    if (tintwell::startsWith(line, "Mesh")) {
        return takeMesh(line, lut, header);
    }
    return LineKind::Data;
}

/// Acts on every keyword, wherever it stands. False for a bad size.
bool readHeader(LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    while (lines.skipToLetters()) {
        const std::string_view line = lines.next();
        if (!isComment(line) && takeLine(line, lut, header) == LineKind::BadSize) {
            return tintwell::failAtLine(lut, lines, QStringLiteral("a size of 1 or more"));
        }
    }
    return true;
}

/// The size of the lattice that the data lines of a file without any size fill.
int inferredSize(LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    int count = 0;
    lines.rewind();
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (!line.empty() && !isComment(line) && takeLine(line, lut, header) == LineKind::Data) {
            ++count;
        }
    }
    return cubeRoot(count);
}

/// An integer sample, brought to real numbers.
bool takeCodes(std::string_view line, Triple<int>& codes, float scale, Triple<float>& sample) {
    if (!codes.take(line)) {
        return false;
    }
    sample = {static_cast<float>(codes.r) / scale, static_cast<float>(codes.g) / scale,
              static_cast<float>(codes.b) / scale};
    return true;
}

/// Lines that hold no sample whatever they begin with.
bool isPassedOver(std::string_view line, const CubeHeader& header) {
    return line.empty() || isComment(line) || (header.hasMeshWord && holds(line, "MESH"));
}

} // namespace

bool Read_LUTFile::Read_Cube(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrder(true, false);
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
    if ((size3D > 0 && !allocateLattice(*this, lines, Body::Complete)) ||
        (size1D > 0 && !tintwell::allocateCurve(*this, lines, Body::MayBeShort))) {
        resetDomainMax3D();
        return false;
    }

    lines.rewind();
    Triple<float> sample;
    Triple<int> codes;
    const auto takeSample = [&](std::string_view line, Triple<float>& values) {
        return !isPassedOver(line, header) &&
               (meshHeader ? takeCodes(line, codes, header.meshScale(), values)
                           : values.take(line));
    };
    const Walk lattice = fillLattice(*this, lines, sample, takeSample);
    if (lattice != Walk::Complete) {
        resetDomainMax3D();
        if (lattice == Walk::LacksLast) {
            resetDomainMax1D();
        }
        return lattice == Walk::LacksLast;
    }

    const auto takeEntry = [&](std::string_view line, Triple<float>& values) {
        return !isPassedOver(line, header) && values.take(line);
    };
    const Walk entries = fillCurve(*this, lines, sample, takeEntry);
    resetDomainMax1D();
    if (entries == Walk::Short) {
        return false;
    }
    resetDomainMax3D();
    return true;
}

bool Write_LUTFile::Write_Cube(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::TextFile::forLattice(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrder(true, false);
    out << "TITLE \n"
        << "LUT_3D_SIZE " << lut.size3D << '\n';
    tintwell::emitLattice(out, *this, lut, outputScale, " ");
    return true;
}

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
using tintwell::holds;
using tintwell::LineSource;
using tintwell::scan;
using tintwell::store1D;
using tintwell::store3D;
using tintwell::Triple;
using tintwell::Walk;
using tintwell::walkEntries;
using tintwell::walkLattice;
using tintwell::without;

namespace {

/// What the first pass learns beyond the fields of the container.
struct CubeHeader {
    float meshScale = 1;
    int dataLines = 0;
    bool hasMeshWord = false; ///< some line must be passed over for it
};

bool isComment(std::string_view line) {
    return line.front() == '#' || line.front() == 'x';
}

/// False for a size below 1, or none.
bool takeSize(std::string_view line, std::string_view keyword, int& size) {
    size = tintwell::toInt(without(line, keyword));
    return size >= 1;
}

void takeInputRange(std::string_view text, Read_LUTFile& lut) {
    scan(text, lut.domainMin1D[0], lut.domainMax1D[0]);
    std::fill_n(lut.domainMin1D, 3, lut.domainMin1D[0]);
    std::fill_n(lut.domainMax1D, 3, lut.domainMax1D[0]);
}

void takeMesh(std::string_view line, Read_LUTFile& lut, int& outBits, CubeHeader& header) {
    int inBits = 0;
    scan(line.substr(std::min<std::size_t>(line.size(), 5)), inBits, outBits);
    lut.meshHeader = true;
    header.meshScale = std::ldexp(1.0F, outBits);
}

/// Classifies every line. False for a bad size.
bool readHeader(LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    int outBits = 0;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (line.empty() || isComment(line)) {
            continue;
        }
        if (!tintwell::hasLetters(line)) { // nor any keyword
            ++header.dataLines;
            continue;
        }
        header.hasMeshWord = header.hasMeshWord || holds(line, "MESH");
        if (holds(line, "LUT_3D_SIZE")) {
            if (!takeSize(line, "LUT_3D_SIZE ", lut.size3D)) {
                return false;
            }
        } else if (holds(line, "TITLE")) {
            continue;
        } else if (holds(line, "DOMAIN_MIN")) {
            float* const min = lut.domainMin3D;
            scan(without(line, "DOMAIN_MIN "), min[0], min[1], min[2]);
        } else if (holds(line, "DOMAIN_MAX")) {
            float* const max = lut.domainMax3D;
            scan(without(line, "DOMAIN_MAX "), max[0], max[1], max[2]);
        } else if (holds(line, "LUT_1D_SIZE")) {
            if (!takeSize(line, "LUT_1D_SIZE ", lut.size1D)) {
                return false;
            }
        } else if (holds(line, "LUT_1D_INPUT_RANGE")) {
            takeInputRange(without(line, "LUT_1D_INPUT_RANGE "), lut);
        } else if (tintwell::startsWith(line, "Mesh")) {
            takeMesh(line, lut, outBits, header);
        } else {
            ++header.dataLines;
        }
    }
    return true;
}

/// The lattice that so many lines fill.
int inferredSize(int dataLines) {
    return static_cast<int>(std::pow(dataLines, 1.0 / 3.0) + 0.5);
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
        return false;
    }
    applyDefaultOrder(true, false);
    meshHeader = false;

    CubeHeader header;
    if (!readHeader(lines, *this, header)) {
        return false;
    }
    if (size3D == 0 && size1D == 0 && header.dataLines > 0) {
        size3D = inferredSize(header.dataLines);
    }
    if (probe) {
        return true;
    }
    if ((size3D > 0 && !allocateLattice(*this, lines, Body::Complete)) ||
        (size1D > 0 && !allocate1D())) {
        resetDomainMax3D();
        return false;
    }

    lines.rewind();
    Triple<float> sample;
    Triple<int> codes;
    const Walk lattice =
        walkLattice(lines, size3D, [&](std::string_view line, int i, int j, int k) {
            if (isPassedOver(line, header) ||
                !(meshHeader ? takeCodes(line, codes, header.meshScale, sample)
                             : sample.take(line))) {
                return false;
            }
            store3D(*this, i, j, k, sample);
            return true;
        });
    if (lattice != Walk::Complete) {
        resetDomainMax3D();
        return lattice == Walk::LacksLast;
    }

    const Walk entries = walkEntries(lines, size1D, [&](std::string_view line, int n) {
        if (isPassedOver(line, header) || !sample.take(line)) {
            return false;
        }
        store1D(*this, n, sample);
        return true;
    });
    resetDomainMax1D();
    if (entries != Walk::Complete) {
        return entries == Walk::LacksLast;
    }
    resetDomainMax3D();
    return true;
}

bool Write_LUTFile::Write_Cube(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out(path);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrder(true, false);
    out << "TITLE \n"
        << "LUT_3D_SIZE " << lut.size3D << '\n';
    tintwell::emitLattice(out, *this, lut, outputScale, " ");
    return true;
}

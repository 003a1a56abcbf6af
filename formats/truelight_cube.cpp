// The Truelight cube, a 3D table with an optional input shaper:
//
//     # Truelight Cube v2.0
//     # iDims 3
//     # oDims 3
//     # width 2 2 2
//     # lutLength 4
//     # InputLUT
//     0.000000 0.000000 0.000000
//     ...
//     # Cube
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//     # End
//
// The shaper, the container's 1D table, maps to lattice coordinates from 0 to the width. Samples
// come k fastest.

#include "formats/tables.h"
#include "formats/text/words.h"
#include "lut/read_lutfile.h"

#include <string>
#include <string_view>

using tintwell::allocateCurve;
using tintwell::allocateLattice;
using tintwell::Body;
using tintwell::LineSource;
using tintwell::scan;
using tintwell::takeNumbers;
using tintwell::Triple;
using tintwell::Walk;
using tintwell::without;

namespace {

std::string valuesOf(std::string_view line, std::string_view keyword) {
    return without(without(line, "#"), keyword);
}

/// False unless the three widths are one.
bool takeWidth(std::string_view line, Read_LUTFile& lut) {
    int i = 0;
    int j = 0;
    int k = 0;
    if (scan(valuesOf(line, "width"), i, j, k) < 3 || i != j || j != k) {
        return false;
    }
    lut.setSize3D(i);
    return true;
}

void takeLength(std::string_view line, Read_LUTFile& lut) {
    int length = 0;
    if (scan(valuesOf(line, "lutLength"), length) == 1) {
        lut.setSize1D(length);
    }
}

Walk readShaper(LineSource& lines, Read_LUTFile& lut, Triple<float>& sample) {
    if (!allocateCurve(lut, lines, Body::Complete)) {
        return Walk::Short;
    }
    // The width itself maps to 1, although the last lattice point is one less.
    tintwell::setDomain(lut.domainMax1D, static_cast<float>(lut.size3D));
    const Walk end = tintwell::fillCurve(lut, lines, sample, takeNumbers);
    if (end != Walk::Complete) {
        lut.resetDomainMax1D();
    }
    return end;
}

Walk readCube(LineSource& lines, Read_LUTFile& lut, Triple<float>& sample) {
    tintwell::setDomain(lut.domainMax3D, 1);
    if (!allocateLattice(lut, lines, Body::Complete)) {
        return Walk::Short;
    }
    return tintwell::fillLattice(lut, lines, sample, takeNumbers);
}

/// Tables whose section the file lacks are of zeros.
bool allocateUnread(const LineSource& lines, Read_LUTFile& lut) {
    return (lut.size3D <= 0 || allocateLattice(lut, lines, Body::MayBeShort)) &&
           (lut.size1D <= 0 || allocateCurve(lut, lines, Body::MayBeShort));
}

} // namespace

bool Read_LUTFile::Read_Cub(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrder(true, false);

    Triple<float> sample; // one for both sections
    Walk section = Walk::Complete;
    while (section == Walk::Complete && !lines.atEnd()) {
        const std::string_view line = lines.next();
        if (!tintwell::startsWith(line, "#")) {
            continue;
        }
        tintwell::WordReader words(line);
        words.next(); // "#", and nothing else: a keyword stands apart from it
        const std::string_view keyword = words.next();
        if (keyword == "End") {
            break;
        }
        if (keyword == "iDims" || keyword == "oDims") {
            if (words.next() != "3") {
                failAtLine(*this, lines, QStringLiteral("three dimensions"));
                break;
            }
        } else if (keyword == "width") {
            if (!takeWidth(line, *this)) {
                failAtLine(*this, lines, QStringLiteral("three equal widths"));
                break;
            }
        } else if (keyword == "lutLength") {
            takeLength(line, *this);
        } else if (probe || size3D <= 0) {
            continue; // no section is read
        } else if (keyword == "InputLUT" && size1D > 0) {
            section = readShaper(lines, *this, sample);
        } else if (keyword == "Cube") {
            section = readCube(lines, *this, sample);
        }
    }
    if (section == Walk::Complete) {
        resetDomainMax3D();
        resetDomainMax1D();
    }
    if (section == Walk::Short || (!probe && !allocateUnread(lines, *this))) {
        return false;
    }
    if (hasSize() || !lastError.isEmpty()) {
        return hasSize();
    }
    return tintwell::failUnsized(*this, "a width or a lutLength line");
}

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
// The shaper, stored as the container's 1D table, maps to lattice coordinates from 0 to the width.
// Samples are k fastest.

#include "formats/domain.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

using tintwell::allocateCurve;
using tintwell::allocateLattice;
using tintwell::Completeness;
using tintwell::FillResult;
using tintwell::LineSource;
using tintwell::removeAll;
using tintwell::scan;
using tintwell::scanNumbers;
using tintwell::Triple;

namespace {

std::string valuesOf(std::string_view line, std::string_view keyword) {
    return removeAll(removeAll(line, "#"), keyword);
}

/// False unless the three widths are equal.
bool parseWidth(std::string_view line, Read_LUTFile& lut) {
    int i = 0;
    int j = 0;
    int k = 0;
    if (scan(valuesOf(line, "width"), i, j, k) < 3 || i != j || j != k) {
        return false;
    }
    lut.setSize3D(i);
    return true;
}

void parseShaperLength(std::string_view line, Read_LUTFile& lut) {
    int length = 0;
    if (scan(valuesOf(line, "lutLength"), length) == 1) {
        lut.setSize1D(length);
    }
}

/// Whether the shaper maps its inputs evenly onto the lattice.
bool isIdentityShaper(const Read_LUTFile& lut) {
    constexpr float tolerance = 1e-4F;
    const auto width = static_cast<float>(lut.size3D);
    for (int n = 0; n < lut.size1D; ++n) {
        const float even =
            lut.size1D > 1 ? static_cast<float>(n) / static_cast<float>(lut.size1D - 1) : 0.0F;
        const float expected = even * (width - 1) / width;
        const float* const cell = lut.data1D[n];
        if (!std::all_of(cell, cell + 3, [expected](float value) {
                return std::fabs(value - expected) <= tolerance;
            })) {
            return false;
        }
    }
    return true;
}

FillResult readShaper(LineSource& lines, Read_LUTFile& lut, Triple<float>& sample) {
    if (!allocateCurve(lut, lines, Completeness::Complete)) {
        return FillResult::EndedEarly;
    }
    // The width itself maps to 1, although the last lattice point is one less.
    tintwell::setDomain(lut.domainMax1D, static_cast<float>(lut.size3D));
    const FillResult end = tintwell::fillCurve(lut, lines, sample, scanNumbers);
    if (end != FillResult::Complete) {
        lut.resetDomainMax1D();
    } else if (!isIdentityShaper(lut)) {
        lut.remarks += QStringLiteral("the shaper is not the identity, and is not applied to the "
                                      "lattice");
    }
    return end;
}

FillResult readCube(LineSource& lines, Read_LUTFile& lut, Triple<float>& sample) {
    tintwell::setDomain(lut.domainMax3D, 1);
    if (!allocateLattice(lut, lines, Completeness::Complete)) {
        return FillResult::EndedEarly;
    }
    return tintwell::fillLattice(lut, lines, sample, scanNumbers);
}

/// Tables without a section in the file are all zeros.
bool allocateUnread(const LineSource& lines, Read_LUTFile& lut) {
    if (lut.size3D > 0 && lut.data3D == nullptr) {
        lut.remarkUnfilled(QStringLiteral("no samples for the lattice"));
    }
    if (lut.size1D > 0 && lut.data1D == nullptr) {
        lut.remarkUnfilled(QStringLiteral("no samples for the shaper"));
    }
    return (lut.size3D <= 0 || allocateLattice(lut, lines, Completeness::Partial)) &&
           (lut.size1D <= 0 || allocateCurve(lut, lines, Completeness::Partial));
}

enum class Keyword { None, Dimensions, Width, Length, Shaper, Cube, End };

/// The keyword of a line, separated from the "#" by white space.
Keyword keywordOf(std::string_view line) {
    static constexpr std::array<std::pair<std::string_view, Keyword>, 7> keywords = {
        {{"iDims", Keyword::Dimensions},
         {"oDims", Keyword::Dimensions},
         {"width", Keyword::Width},
         {"lutLength", Keyword::Length},
         {"InputLUT", Keyword::Shaper},
         {"Cube", Keyword::Cube},
         {"End", Keyword::End}}};
    if (!tintwell::startsWith(line, "#")) {
        return Keyword::None;
    }
    tintwell::WordReader words(line);
    words.next();
    const std::string_view word = words.next();
    const auto* const found = std::find_if(keywords.begin(), keywords.end(),
                                           [&](const auto& known) { return known.first == word; });
    return found != keywords.end() ? found->second : Keyword::None;
}

/// Whether the third word is 3, as in "# iDims 3".
bool isThreeDimensional(std::string_view line) {
    tintwell::WordReader words(line);
    words.next();
    words.next();
    return words.next() == "3";
}

/// Processes a line between the sections. False if it ends the reading.
bool readHeaderLine(Keyword keyword, std::string_view line, const LineSource& lines,
                    Read_LUTFile& lut) {
    switch (keyword) {
    case Keyword::Dimensions:
        return isThreeDimensional(line) ||
               failAtLine(lut, lines, QStringLiteral("three dimensions"));
    case Keyword::Width:
        return parseWidth(line, lut) ||
               failAtLine(lut, lines, QStringLiteral("three equal widths"));
    case Keyword::Length:
        parseShaperLength(line, lut);
        return true;
    case Keyword::End:
        return false;
    default:
        return true;
    }
}

/// Reads the section that a keyword begins. Before the width is known there is none, and a shaper
/// needs its length as well.
FillResult readSection(Keyword keyword, LineSource& lines, Read_LUTFile& lut,
                       Triple<float>& sample) {
    if (keyword == Keyword::Shaper && lut.size3D > 0 && lut.size1D > 0) {
        return readShaper(lines, lut, sample);
    }
    if (keyword == Keyword::Cube && lut.size3D > 0) {
        if (lut.data3D != nullptr) {
            remarkOnLine(lut, lines, QStringLiteral("which replaces the section before"));
        }
        return readCube(lines, lut, sample);
    }
    if (keyword == Keyword::Shaper || keyword == Keyword::Cube) {
        remarkOnLine(lut, lines,
                     QStringLiteral("expected its size before it: the section is skipped"));
    }
    return FillResult::Complete;
}

/// Whether the samples of a section that is skipped may follow.
bool isSectionSkipped(Keyword keyword, const Read_LUTFile& lut) {
    return (keyword == Keyword::Shaper && !lut.hasTable1D()) ||
           (keyword == Keyword::Cube && !lut.hasTable3D());
}

} // namespace

bool Read_LUTFile::Read_Cub(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::TruelightCube);

    Triple<float> sample; // kept from section to section
    FillResult section = FillResult::Complete;
    tintwell::OddLines outside;
    bool isSkipping = false;
    while (section == FillResult::Complete && !lines.atEnd()) {
        const std::string_view line = lines.next();
        const Keyword keyword = keywordOf(line);
        if (!readHeaderLine(keyword, line, lines, *this)) {
            break;
        }
        if (!probe) {
            if (!isSkipping) {
                outside.addUnlessComment(line, lines);
            }
            section = readSection(keyword, lines, *this, sample);
            isSkipping = keyword == Keyword::None ? isSkipping : isSectionSkipped(keyword, *this);
        }
    }
    while (!probe && section == FillResult::Complete && !lines.atEnd()) {
        outside.addUnlessComment(lines.next(), lines);
    }
    outside.tell(*this, QStringLiteral("which is not in a section and is ignored"));
    if (section == FillResult::Complete) {
        resetDomainMax3D();
        resetDomainMax1D();
    }
    if (section == FillResult::EndedEarly || (!probe && !allocateUnread(lines, *this))) {
        return false;
    }
    if (hasSize()) {
        return tintwell::acceptWithRemark(*this);
    }
    return !lastError.isEmpty()
               ? false
               : tintwell::failUnsized(*this, lines, "a width or a lutLength line");
}

#pragma once

#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <array>
#include <cstddef>

namespace tintwell {

enum class TableKind { OneD, ThreeD };

/// How a format stands to integers in place of real numbers.
enum class Codes {
    None,     ///< it has none: writers ignore a scale
    Unscaled, ///< its files do not tell the scale, so readers cannot undo it
    Scaled,   ///< readers find the scale
    Largest,  ///< readers take the largest number for full scale, integer or not
    Only      ///< it has nothing else
};

/// What a range that a reader finds in a file and keeps as the domain is the range of.
enum class Range {
    Input,
    Samples,
    Scale ///< the numbers of the file, of which the last counts as 1
};

/// What the system knows of one file format.
struct Format {
    const char* name;       ///< what the command line calls it
    const char* extensions; ///< of its files, blanks between them; new files take the first
    const char* label;      ///< UTF-8, as shown to the user
    TableKind kind;
    bool (Read_LUTFile::*read)(QString path, bool probe);
    bool (Write_LUTFile::*write)(QString path, Read_LUTFile& lut); ///< null: no writer
    Codes codes;
    const char* remark; ///< what may surprise in it; empty: nothing
    int size = 0;       ///< the only size it has; 0: any
    Range range = Range::Input;
};

/// An image may be of either image format; its measures tell.
inline constexpr const char* imageExtensions = "png bmp tif tiff jpg jpeg";
inline constexpr const char* imageRemark = "columns are red, rows green and tiles blue, in 8 bits";
inline constexpr const char* rangeRemark =
    "the From range is that of the samples, not of the input";

/// Every format; its code is its position.
inline constexpr std::array<Format, 17> catalogue = {{
    {"cube", "cube", ".cube", TableKind::ThreeD, &Read_LUTFile::Read_Cube,
     &Write_LUTFile::Write_Cube, Codes::Unscaled, ""},
    {"texture", imageExtensions, "texture-base 64X64 512X512...", TableKind::ThreeD,
     &Read_LUTFile::Read_Texture, nullptr, Codes::Only, imageRemark, 0, Range::Scale},
    {"unwrapped", imageExtensions, "identity Unwrapped Cube 1024X16", TableKind::ThreeD,
     &Read_LUTFile::Read_IUC, nullptr, Codes::Only, imageRemark, 0, Range::Scale},
    {"3dl", "3dl", ".3dl", TableKind::ThreeD, &Read_LUTFile::Read_3dl, nullptr, Codes::Scaled,
     "without a Mesh line the largest sample tells the bits, two at least: real numbers come out "
     "as a third",
     0, Range::Scale},
    {"mga", "mga m3d", ".mga .m3d pandora", TableKind::ThreeD, &Read_LUTFile::Read_Mga,
     &Write_LUTFile::Write_Mga, Codes::Scaled, "", 0, Range::Scale},
    {"look", "look", ".look", TableKind::ThreeD, &Read_LUTFile::Read_Look, nullptr, Codes::None,
     "a channel with samples above 1 is divided by the largest of them", 0, Range::Scale},
    {"discreet", "lut", ".lut 1D Discreet", TableKind::OneD, &Read_LUTFile::Read_1dLut_Discreet,
     &Write_LUTFile::Write_1dLut_Discreet, Codes::Largest,
     "the largest value of the file counts as 1", 0, Range::Scale},
    {"lut", "lut", ".lut 1D", TableKind::OneD, &Read_LUTFile::Read_1dLut,
     &Write_LUTFile::Write_1dLut, Codes::Unscaled, "the first 256 entries are the table", 256},
    {"davlut", "davlut", ".davLut 3DLut", TableKind::ThreeD, &Read_LUTFile::Read_DavLut,
     &Write_LUTFile::Write_DavLut, Codes::None, ""},
    {"csp", "csp", ".csp", TableKind::ThreeD, &Read_LUTFile::Read_Csp, nullptr, Codes::None,
     "the shapers are not applied: the ends of their outputs are taken for the domain"},
    {"cub", "cub", ".cub Truelight Cube", TableKind::ThreeD, &Read_LUTFile::Read_Cub, nullptr,
     Codes::None, "the shaper, a 1D table here, counts the width itself as 1", 0, Range::Scale},
    {"itx", "itx", ".itx", TableKind::ThreeD, &Read_LUTFile::Read_Itx, &Write_LUTFile::Write_Itx,
     Codes::None, ""},
    {"spi1d", "spi1d", ".spi1d", TableKind::OneD, &Read_LUTFile::Read_Spi1D,
     &Write_LUTFile::Write_Spi1D, Codes::Scaled, rangeRemark, 0, Range::Samples},
    {"spi3d", "spi3d", ".spi3d", TableKind::ThreeD, &Read_LUTFile::Read_Spi3D,
     &Write_LUTFile::Write_Spi3D, Codes::None, "points that no line names are black"},
    {"csv", "csv", ".csv log", TableKind::OneD, &Read_LUTFile::Read_Csv, &Write_LUTFile::Write_Csv,
     Codes::Only,
     "one curve for all channels; the last code tells the scale, the next power of two less one", 0,
     Range::Scale},
    {"nvx1d", "nvx1d", ".nvx1d norvane专用格式1D", TableKind::OneD, &Read_LUTFile::Read_NVX1D,
     &Write_LUTFile::Write_NVX1D, Codes::None, rangeRemark, 0, Range::Samples},
    {"nvx3d", "nvx3d", ".nvx3d norvane专用格式3D", TableKind::ThreeD, &Read_LUTFile::Read_NVX3D,
     &Write_LUTFile::Write_NVX3D, Codes::None, rangeRemark, 0, Range::Samples},
}};

inline constexpr int formatCount = static_cast<int>(catalogue.size());

constexpr const char* kindName(TableKind kind) {
    return kind == TableKind::ThreeD ? "3D" : "1D";
}

/// The format of a code; null outside the catalogue.
constexpr const Format* formatOf(int code) {
    const bool known = code >= 0 && static_cast<std::size_t>(code) < catalogue.size();
    return known ? &catalogue[static_cast<std::size_t>(code)] : nullptr;
}

/// One bit a code, set for the 3D formats.
constexpr unsigned kindBits() {
    unsigned bits = 0;
    for (std::size_t code = 0; code < catalogue.size(); ++code) {
        bits |= catalogue[code].kind == TableKind::ThreeD ? 1U << code : 0U;
    }
    return bits;
}

static_assert(kindBits() == 77631U, "a format changed its kind or its place");

} // namespace tintwell

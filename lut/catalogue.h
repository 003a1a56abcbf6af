#pragma once

#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <array>
#include <cstddef>

namespace tintwell {

enum class TableKind { OneD, ThreeD };

/// What the system knows of one file format.
struct Format {
    const char* name;       ///< what the command line calls it
    const char* extensions; ///< of its files, blanks between them; new files take the first
    const char* label;      ///< UTF-8, as shown to the user
    TableKind kind;
    bool (Read_LUTFile::*read)(QString path, bool probe);
    bool (Write_LUTFile::*write)(QString path, Read_LUTFile& lut); ///< null: no writer
};

/// An image may be of either image format; its measures tell.
inline constexpr const char* imageExtensions = "png bmp tif tiff jpg jpeg";

/// Every format; its code is its position.
inline constexpr std::array<Format, 17> catalogue = {{
    {"cube", "cube", ".cube", TableKind::ThreeD, &Read_LUTFile::Read_Cube,
     &Write_LUTFile::Write_Cube},
    {"texture", imageExtensions, "texture-base 64X64 512X512...", TableKind::ThreeD,
     &Read_LUTFile::Read_Texture, nullptr},
    {"unwrapped", imageExtensions, "identity Unwrapped Cube 1024X16", TableKind::ThreeD,
     &Read_LUTFile::Read_IUC, nullptr},
    {"3dl", "3dl", ".3dl", TableKind::ThreeD, &Read_LUTFile::Read_3dl, nullptr},
    {"mga", "mga m3d", ".mga .m3d pandora", TableKind::ThreeD, &Read_LUTFile::Read_Mga,
     &Write_LUTFile::Write_Mga},
    {"look", "look", ".look", TableKind::ThreeD, &Read_LUTFile::Read_Look, nullptr},
    {"discreet", "lut", ".lut 1D Discreet", TableKind::OneD, &Read_LUTFile::Read_1dLut_Discreet,
     &Write_LUTFile::Write_1dLut_Discreet},
    {"lut", "lut", ".lut 1D", TableKind::OneD, &Read_LUTFile::Read_1dLut,
     &Write_LUTFile::Write_1dLut},
    {"davlut", "davlut", ".davLut 3DLut", TableKind::ThreeD, &Read_LUTFile::Read_DavLut,
     &Write_LUTFile::Write_DavLut},
    {"csp", "csp", ".csp", TableKind::ThreeD, &Read_LUTFile::Read_Csp, nullptr},
    {"cub", "cub", ".cub Truelight Cube", TableKind::ThreeD, &Read_LUTFile::Read_Cub, nullptr},
    {"itx", "itx", ".itx", TableKind::ThreeD, &Read_LUTFile::Read_Itx, &Write_LUTFile::Write_Itx},
    {"spi1d", "spi1d", ".spi1d", TableKind::OneD, &Read_LUTFile::Read_Spi1D,
     &Write_LUTFile::Write_Spi1D},
    {"spi3d", "spi3d", ".spi3d", TableKind::ThreeD, &Read_LUTFile::Read_Spi3D,
     &Write_LUTFile::Write_Spi3D},
    {"csv", "csv", ".csv log", TableKind::OneD, &Read_LUTFile::Read_Csv, &Write_LUTFile::Write_Csv},
    {"nvx1d", "nvx1d", ".nvx1d norvane专用格式1D", TableKind::OneD, &Read_LUTFile::Read_NVX1D,
     &Write_LUTFile::Write_NVX1D},
    {"nvx3d", "nvx3d", ".nvx3d norvane专用格式3D", TableKind::ThreeD, &Read_LUTFile::Read_NVX3D,
     &Write_LUTFile::Write_NVX3D},
}};

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

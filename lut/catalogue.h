#pragma once

#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <array>
#include <cstddef>

namespace tintwell {

enum class TableKind { OneD, ThreeD };

/// What the system knows of one file format.
struct Format {
    const char* label; ///< UTF-8, as shown to the user
    TableKind kind;
    bool (Read_LUTFile::*read)(QString path, bool probe);
    bool (Write_LUTFile::*write)(QString path, Read_LUTFile& lut); ///< null: no writer
};

/// Every format; its code is its position.
inline constexpr std::array<Format, 17> catalogue = {{
    {".cube", TableKind::ThreeD, &Read_LUTFile::Read_Cube, &Write_LUTFile::Write_Cube},
    {"texture-base 64X64 512X512...", TableKind::ThreeD, nullptr, nullptr},
    {"identity Unwrapped Cube 1024X16", TableKind::ThreeD, nullptr, nullptr},
    {".3dl", TableKind::ThreeD, nullptr, nullptr},
    {".mga .m3d pandora", TableKind::ThreeD, nullptr, nullptr},
    {".look", TableKind::ThreeD, nullptr, nullptr},
    {".lut 1D Discreet", TableKind::OneD, nullptr, nullptr},
    {".lut 1D", TableKind::OneD, nullptr, nullptr},
    {".davLut 3DLut", TableKind::ThreeD, nullptr, nullptr},
    {".csp", TableKind::ThreeD, nullptr, nullptr},
    {".cub Truelight Cube", TableKind::ThreeD, nullptr, nullptr},
    {".itx", TableKind::ThreeD, nullptr, nullptr},
    {".spi1d", TableKind::OneD, nullptr, nullptr},
    {".spi3d", TableKind::ThreeD, nullptr, nullptr},
    {".csv log", TableKind::OneD, nullptr, nullptr},
    {".nvx1d norvane专用格式1D", TableKind::OneD, nullptr, nullptr},
    {".nvx3d norvane专用格式3D", TableKind::ThreeD, nullptr, nullptr},
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

#pragma once

#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <QString>

#include <string_view>

namespace tintwell {

/// A format that is one size line and then the samples of a lattice as real numbers.
struct SizedLattice {
    std::string_view preamble; ///< what the writer puts before the size line
    std::string_view keyword;  ///< how the size line begins
    const char* sizeLine;      ///< what messages call it
    bool dataOrder;            ///< the format's own orders
    bool tableOrder;
};

/// Reads such a file. The first line that begins with the keyword ends the header, whatever stands
/// before it.
bool readSizedLattice(const SizedLattice& format, const QString& path, bool probe,
                      Read_LUTFile& lut);

/// Writes such a file. These formats know no integers: a scale of 2 or more becomes 1, and stays
/// so in the writer.
bool writeSizedLattice(const SizedLattice& format, const QString& path, const Read_LUTFile& lut,
                       Write_LUTFile& writer);

} // namespace tintwell

#pragma once

#include "lut/read_lutfile.h"
#include "lut/table_kind.h"

#include <algorithm>

namespace tintwell {

/// The domain that a file states or its numbers imply, per channel. The table read from it is
/// normalised.
struct StatedDomain {
    using Channels = Read_LUTFile::DomainEnd;

    Channels min = {0, 0, 0};
    Channels max = {1, 1, 1};

    bool startsAtZero() const { return min == Channels{0, 0, 0}; }
    bool isUnit() const { return startsAtZero() && max == Channels{1, 1, 1}; }
    Channels width() const { return {max[0] - min[0], max[1] - min[1], max[2] - min[2]}; }
    /// False if any channel has none.
    bool hasWidth() const {
        const Channels widths = width();
        return std::all_of(widths.begin(), widths.end(),
                           [](float channel) { return channel != 0; });
    }
};

/// The domain of the table of a kind.
inline StatedDomain statedDomain(const Read_LUTFile& lut, TableKind kind) {
    const bool is3D = kind == TableKind::ThreeD;
    const float* const min = is3D ? lut.domainMin3D : lut.domainMin1D;
    return {{min[0], min[1], min[2]}, is3D ? lut.statedMax3D() : lut.statedMax1D()};
}

} // namespace tintwell

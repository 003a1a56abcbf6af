#pragma once

#include "lut/read_lutfile.h"
#include "lut/table_kind.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tintwell {

/// One number per channel: R, G, B.
using Channels = std::array<float, 3>;

/// Statistics of a table's samples.
struct Statistics {
    Channels min;                    ///< infinity for a channel without a finite number
    Channels max;                    ///< minus infinity for such a channel
    float maxDeviation = 0;          ///< from the identity, of any channel
    std::int64_t nonFiniteCount = 0; ///< NaN and infinities, which are left out of the rest

    /// Whether every finite sample is within 0.00001 of the identity.
    bool isClose() const { return maxDeviation <= 1e-5F; }
    bool isIdentity() const { return isClose() && nonFiniteCount == 0; }
};

/// For the table of a kind, which must exist and be in R, G, B order.
Statistics statisticsOf(const Read_LUTFile& lut, TableKind kind);

/// The kind of the table that colours are put through: the lattice if there is one.
inline TableKind usedKind(const Read_LUTFile& lut) {
    return lut.hasTable3D() ? TableKind::ThreeD : TableKind::OneD;
}

/// Points per axis or entries; 0 if there is no table of the kind.
inline int sizeOf(const Read_LUTFile& lut, TableKind kind) {
    if (kind == TableKind::ThreeD) {
        return lut.hasTable3D() ? lut.size3D : 0;
    }
    return lut.hasTable1D() ? lut.size1D : 0;
}

/// The largest number of the 1D table, infinity included; 0 if all are below.
float largestSample1D(const Read_LUTFile& lut);

/// Whether the three curves of the 1D table are equal.
bool hasEqualCurves(const Read_LUTFile& lut);

/// An interval of real numbers.
struct Range {
    double from = 0;
    double to = 1;

    double width() const { return to - from; }
    double at(double fraction) const { return from + fraction * width(); }
    double fractionOf(double value) const { return (value - from) / width(); }
};

/// The least and the largest number of the table of a kind, which must exist. NaN is left out.
Range sampleRange(const Read_LUTFile& lut, TableKind kind);

/// The response of a table to grey, in equal steps over its input domain.
struct GreyAxis {
    Range inputs;
    std::vector<Channels> outputs;

    double input(std::size_t step) const {
        return inputs.at(static_cast<double>(step) / static_cast<double>(outputs.size() - 1));
    }
};

/// For the table of a kind, which must exist, in two steps or more. The inputs span the widest of
/// the three channels' domains, or 0..1 if the domain has no finite width.
GreyAxis greyAxis(const Read_LUTFile& lut, TableKind kind, int steps);

} // namespace tintwell

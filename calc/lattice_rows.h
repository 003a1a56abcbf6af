#pragma once

#include "calc/lattice_axis.h"
#include "calc/tetrahedron.h"
#include "lut/read_lutfile.h"

#include <array>

namespace tintwell {

/// Axis \a axis of the 3D table.
inline LatticeAxis latticeAxis(const Read_LUTFile& lut, int axis) {
    return {lut.domainMin3D[axis], lut.domainMax3D[axis], lut.size3D};
}

using LatticeAxes = std::array<LatticeAxis, 3>;

inline LatticeAxes latticeAxes(const Read_LUTFile& lut) {
    return {latticeAxis(lut, 0), latticeAxis(lut, 1), latticeAxis(lut, 2)};
}

/// The lattice rows along axis 2 around a point, indexed by the first two bits of the corner.
struct Rows {
    const float* const* row[4];
};

template <typename Fraction>
Rows rowsAround(const Read_LUTFile& lut, const AxisPosition<Fraction>& p0,
                const AxisPosition<Fraction>& p1) {
    return {{lut.data3D[p0.lower][p1.lower], lut.data3D[p0.lower][p1.upper],
             lut.data3D[p0.upper][p1.lower], lut.data3D[p0.upper][p1.upper]}};
}

template <typename Fraction>
const float* sampleAt(const Rows& rows, Corner corner, const AxisPosition<Fraction>& p2) {
    return rows.row[corner >> 1U][(corner & 1U) != 0 ? p2.upper : p2.lower];
}

/// Weights the corners around the point at \a p2 along the rows; \a order holds the fractions
/// across them.
inline void interpolate(const Rows& rows, const RowOrder<float>& order,
                        const AxisPosition<float>& p2, float* out) {
    const Tetrahedron<float> t = enclosingTetrahedron(order, p2.fraction, 1.0F);
    const float* const first = sampleAt(rows, 0b000, p2);
    const float* const second = sampleAt(rows, t.second, p2);
    const float* const third = sampleAt(rows, t.third, p2);
    const float* const last = sampleAt(rows, 0b111, p2);
    for (int c = 0; c < 3; ++c) {
        out[c] = first[c] * t.weight[0] + second[c] * t.weight[1] + third[c] * t.weight[2] +
                 last[c] * t.weight[3];
    }
}

/// Looks up \a in on the three axes of \a lut; \a out may be the same array.
inline void evaluate(const Read_LUTFile& lut, const LatticeAxes& axes, const float* in,
                     float* out) {
    const AxisPosition<float> p0 = axes[0].at(in[0]);
    const AxisPosition<float> p1 = axes[1].at(in[1]);
    const AxisPosition<float> p2 = axes[2].at(in[2]);
    interpolate(rowsAround(lut, p0, p1), rowOrder(p0.fraction, p1.fraction), p2, out);
}

} // namespace tintwell

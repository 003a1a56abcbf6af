#pragma once

namespace tintwell {

/// A corner of a lattice cube as three bits: 0b100 is at the upper index on axis 0 alone.
using Corner = unsigned;

/// The tetrahedron of a lattice cube that contains a point. Its first corner is 0b000, its last
/// 0b111.
template <typename Fraction>
struct Tetrahedron {
    Corner second;
    Corner third;
    Fraction weight[4]; ///< of the corners in order; they add up to the whole
};

/// The order of the fractions along axes 0 and 1, which all points of a row share.
template <typename Fraction>
struct RowOrder {
    bool axis0First;
    Fraction high;
    Fraction low;
};

template <typename Fraction>
constexpr RowOrder<Fraction> rowOrder(Fraction f0, Fraction f1) {
    const bool axis0First = f0 > f1;
    return {axis0First, axis0First ? f0 : f1, axis0First ? f1 : f0};
}

/// The tetrahedron around the point at the fraction \a f2 of \a whole along axis 2. Its corners
/// follow the axes in descending order of their fractions. Among equal fractions axis 1 comes
/// before axis 0, and axis 2 comes first if axis 0 leads, else last.
template <typename Fraction>
constexpr Tetrahedron<Fraction> enclosingTetrahedron(const RowOrder<Fraction>& row, Fraction f2,
                                                     Fraction whole) {
    const bool axis2BeforeHigh = row.axis0First ? f2 >= row.high : f2 > row.high;
    const bool axis2BeforeLow = row.axis0First ? f2 >= row.low : f2 > row.low;
    const Corner leading = row.axis0First ? 0b100 : 0b010;
    const Fraction high = axis2BeforeHigh ? f2 : row.high;
    const Fraction middle = axis2BeforeHigh ? row.high : (axis2BeforeLow ? f2 : row.low);
    const Fraction low = axis2BeforeLow ? row.low : f2;
    return {axis2BeforeHigh ? 0b001 : leading,
            axis2BeforeLow ? leading | 0b001 : 0b110,
            {whole - high, high - middle, middle - low, low}};
}

} // namespace tintwell

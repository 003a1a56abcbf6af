#pragma once

namespace tintwell {

/// A corner of a lattice cube as three bits, "c100" as 0b100: set where axis 0, 1, 2 takes its
/// upper index.
using Corner = unsigned;

/// The tetrahedron of a lattice cube that holds a point. Its first corner is c000, its last c111.
template <typename Fraction>
struct Tetrahedron {
    Corner second;
    Corner third;
    Fraction weight[4]; ///< of c000, second, third, c111; their sum is the whole
};

/// The tetrahedron around the point at the fractions (fx, fy, fz) of \a whole along axes 0, 1, 2.
/// The way through the cube follows the axes in falling order of their fractions.
template <typename Fraction>
constexpr Tetrahedron<Fraction> enclosingTetrahedron(Fraction fx, Fraction fy, Fraction fz,
                                                     Fraction whole) {
    const auto along = [whole](Corner second, Corner third, Fraction high, Fraction middle,
                               Fraction low) -> Tetrahedron<Fraction> {
        return {second, third, {whole - high, high - middle, middle - low, low}};
    };
    if (fx > fy) {
        if (fy > fz) {
            return along(0b100, 0b110, fx, fy, fz);
        }
        if (fx > fz) {
            return along(0b100, 0b101, fx, fz, fy);
        }
        return along(0b001, 0b101, fz, fx, fy);
    }
    if (fz > fy) {
        return along(0b001, 0b011, fz, fy, fx);
    }
    if (fz > fx) {
        return along(0b010, 0b011, fy, fz, fx);
    }
    return along(0b010, 0b110, fy, fx, fz);
}

} // namespace tintwell

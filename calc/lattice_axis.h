#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace tintwell {

/// The position of a coordinate on an axis: between two neighbouring lattice points, which are the
/// same point if the coordinate falls on one.
template <typename Fraction>
struct AxisPosition {
    int lower;
    int upper;
    Fraction fraction; ///< of the way from lower to upper
};

/// Maps an input domain onto the points 0 to size - 1 of a lattice or curve.
class LatticeAxis {
public:
    LatticeAxis(float min, float max, int size)
        : m_min(min), m_last(static_cast<float>(size - 1)), m_factor((1 / (max - min)) * m_last) {}

    /// Coordinates outside the domain are at its edge. NaN and the one value of a zero-width domain
    /// are at point 0.
    AxisPosition<float> at(float value) const {
        float x = (value - m_min) * m_factor;
        if (m_last < x) {
            x = m_last;
        }
        if (0 > x || std::isnan(x)) {
            x = 0;
        }
        const auto lower = static_cast<int>(std::floor(x));
        const auto upper = static_cast<int>(std::ceil(x));
        return {lower, upper, x - static_cast<float>(lower)};
    }

private:
    float m_min;
    float m_last;
    float m_factor;
};

/// The position of point \a i of \a n in 0..1; 0 for a single point.
inline float unitPosition(int i, int n) {
    return n > 1 ? static_cast<float>(i) / static_cast<float>(n - 1) : 0.0F;
}

/// The positions of the \a n points of a lattice in 0..1.
inline std::vector<float> unitPositions(int n) {
    std::vector<float> positions;
    positions.reserve(static_cast<std::size_t>(std::max(n, 0)));
    for (int i = 0; i < n; ++i) {
        positions.push_back(unitPosition(i, n));
    }
    return positions;
}

/// The positions of \a coordinates on an axis.
inline std::vector<AxisPosition<float>> gridPositions(const LatticeAxis& axis,
                                                      const std::vector<float>& coordinates) {
    std::vector<AxisPosition<float>> positions;
    positions.reserve(coordinates.size());
    for (const float coordinate : coordinates) {
        positions.push_back(axis.at(coordinate));
    }
    return positions;
}

} // namespace tintwell

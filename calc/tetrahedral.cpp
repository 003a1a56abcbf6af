#include "calc/lutcalc.h"
#include "calc/tetrahedron.h"
#include "lut/read_lutfile.h"

#include <cmath>
#include <cstddef>
#include <vector>

using tintwell::Corner;
using tintwell::Tetrahedron;

namespace {

/// A coordinate between two lattice planes.
struct Position {
    int lower;
    int upper;
    float fraction;
};

/// Maps one input axis of a table onto its lattice.
class Axis {
public:
    Axis(const Read_LUTFile& lut, int axis)
        : m_min(lut.domainMin3D[axis]), m_last(static_cast<float>(lut.size3D - 1)),
          m_factor((1 / (lut.domainMax3D[axis] - m_min)) * m_last) {}

    Position at(float value) const {
        float x = (value - m_min) * m_factor;
        if (m_last < x) {
            x = m_last;
        }
        if (0 > x || std::isnan(x)) { // in a zero-width domain there is no place but the lower edge
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

/// The samples around a point: four rows along axis 2, and two places in each.
struct Cube {
    const float* const* rows[4]; ///< by the first two bits of the corner
    int place[2];                ///< by the last

    const float* sample(Corner corner) const { return rows[corner >> 1U][place[corner & 1U]]; }
};

void setRows(Cube& cube, const Read_LUTFile& lut, const Position& p0, const Position& p1) {
    cube.rows[0b00] = lut.data3D[p0.lower][p1.lower];
    cube.rows[0b01] = lut.data3D[p0.lower][p1.upper];
    cube.rows[0b10] = lut.data3D[p0.upper][p1.lower];
    cube.rows[0b11] = lut.data3D[p0.upper][p1.upper];
}

void setPlaces(Cube& cube, const Position& p2) {
    cube.place[0] = p2.lower;
    cube.place[1] = p2.upper;
}

void interpolate(const Cube& cube, float fx, float fy, float fz, float* out) {
    const Tetrahedron<float> t = tintwell::enclosingTetrahedron(fx, fy, fz, 1.0F);
    const float* const a = cube.sample(0b000);
    const float* const b = cube.sample(t.second);
    const float* const c = cube.sample(t.third);
    const float* const d = cube.sample(0b111);
    for (int n = 0; n < 3; ++n) {
        out[n] = a[n] * t.weight[0] + b[n] * t.weight[1] + c[n] * t.weight[2] + d[n] * t.weight[3];
    }
}

/// Where the points 0/(n-1) to (n-1)/(n-1) of a new lattice fall on an axis. A single point is at
/// 0.
std::vector<Position> gridPositions(const Read_LUTFile& lut, int axis, int n) {
    const Axis onto(lut, axis);
    const auto last = static_cast<float>(n > 1 ? n - 1 : 1);
    std::vector<Position> positions;
    positions.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        positions.push_back(onto.at(static_cast<float>(i) / last));
    }
    return positions;
}

} // namespace

LutCalc::LutCalc(QObject* parent) : QObject(parent) {}

void LutCalc::Lut3D_Tetrahedral(const float* in, float* out, Read_LUTFile& lut) {
    const Position p0 = Axis(lut, 0).at(in[0]);
    const Position p1 = Axis(lut, 1).at(in[1]);
    const Position p2 = Axis(lut, 2).at(in[2]);
    Cube cube;
    setRows(cube, lut, p0, p1);
    setPlaces(cube, p2);
    interpolate(cube, p0.fraction, p1.fraction, p2.fraction, out);
}

void LutCalc::Lut3D_Out(Read_LUTFile& src, Read_LUTFile& dst) {
    const int n = dst.size3D;
    if (src.size3D < 1 || n < 1) {
        return;
    }
    const std::vector<Position> axis0 = gridPositions(src, 0, n);
    const std::vector<Position> axis1 = gridPositions(src, 1, n);
    const std::vector<Position> axis2 = gridPositions(src, 2, n);
    Cube cube;
    float**** plane = dst.data3D;
    for (const Position& p0 : axis0) {
        float*** row = *plane++;
        for (const Position& p1 : axis1) {
            setRows(cube, src, p0, p1);
            float** cell = *row++;
            for (const Position& p2 : axis2) {
                setPlaces(cube, p2);
                interpolate(cube, p0.fraction, p1.fraction, p2.fraction, *cell++);
            }
        }
    }
}

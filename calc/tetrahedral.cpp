#include "calc/lattice_axis.h"
#include "calc/lattice_rows.h"
#include "calc/look_up.h"
#include "calc/lutcalc.h"
#include "calc/tetrahedron.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"
#include "lut/truncate.h"

#include <algorithm>
#include <vector>

using tintwell::AxisPosition;
using tintwell::Corner;
using tintwell::enclosingTetrahedron;
using tintwell::evaluate;
using tintwell::gridPositions;
using tintwell::interpolate;
using tintwell::latticeAxes;
using tintwell::LatticeAxes;
using tintwell::latticeAxis;
using tintwell::RowOrder;
using tintwell::rowOrder;
using tintwell::Rows;
using tintwell::rowsAround;
using tintwell::sampleAt;
using tintwell::Tetrahedron;
using tintwell::unitPosition;
using tintwell::unitPositions;

namespace {

/// Evaluates \a src at the lattice points of \a dst and stores the results in its cells;
/// \a finish(cell) may process each of them further.
template <typename Finish>
void evaluateLattice(const Read_LUTFile& src, Read_LUTFile& dst, Finish&& finish) {
    if (!src.hasTable3D() || !dst.hasTable3D()) {
        return;
    }
    const std::vector<float> points = unitPositions(dst.size3D);
    const auto grid0 = gridPositions(latticeAxis(src, 0), points);
    const auto grid1 = gridPositions(latticeAxis(src, 1), points);
    const auto grid2 = gridPositions(latticeAxis(src, 2), points);
    float*** const* plane = dst.data3D;
    for (const AxisPosition<float>& p0 : grid0) {
        float** const* row = *plane++;
        for (const AxisPosition<float>& p1 : grid1) {
            const Rows rows = rowsAround(src, p0, p1);
            const RowOrder<float> order = rowOrder(p0.fraction, p1.fraction);
            float* const* cell = *row++;
            for (const AxisPosition<float>& p2 : grid2) {
                interpolate(rows, order, p2, *cell);
                finish(*cell++);
            }
        }
    }
}

} // namespace

LutCalc::LutCalc(QObject* parent) : QObject(parent) {}

void tintwell::lookUp3D(const Read_LUTFile& lut, const float* in, float* out) {
    if (!lut.hasTable3D()) {
        return;
    }
    evaluate(lut, latticeAxes(lut), in, out);
}

void LutCalc::Lut3D_Tetrahedral(const float* in, float* out, const Read_LUTFile& lut) {
    tintwell::lookUp3D(lut, in, out);
}

void LutCalc::Lut3D_Tetrahedral_Int(const unsigned long* in, unsigned long* out,
                                    const Read_LUTFile& lut) {
    // 64 bits wide also where unsigned long is not, as negative samples make the sum wrap.
    constexpr std::uint64_t fullScale = 255;
    const int last = lut.size3D - 1;
    if (!lut.hasTable3D() || last < 1 || static_cast<std::uint64_t>(last) > fullScale) {
        return;
    }
    const std::uint64_t step = fullScale / static_cast<std::uint64_t>(last);
    const auto between = [step, last](std::uint64_t code) -> AxisPosition<std::uint64_t> {
        const auto index = [last](std::uint64_t at) {
            return static_cast<int>(std::min(at, static_cast<std::uint64_t>(last)));
        };
        const std::uint64_t rest = code % step;
        // One code above a point does not reach for the next point, though its weight is not zero.
        return {index(code / step), index(code / step + (rest >= 2 ? 1 : 0)), rest};
    };
    const AxisPosition<std::uint64_t> p2 = between(in[2]);
    const AxisPosition<std::uint64_t> p1 = between(in[1]);
    const AxisPosition<std::uint64_t> p0 = between(in[0]);
    const Rows rows = rowsAround(lut, p0, p1);
    const Tetrahedron<std::uint64_t> t =
        enclosingTetrahedron(rowOrder(p0.fraction, p1.fraction), p2.fraction, step);
    const Corner corners[] = {0b000, t.second, t.third, 0b111};
    for (int c = 0; c < 3; ++c) {
        std::uint64_t sum = 0;
        for (int n = 0; n < 4; ++n) {
            const float sample = sampleAt(rows, corners[n], p2)[c];
            sum += static_cast<std::uint64_t>(tintwell::scaledInteger(sample, fullScale)) *
                   t.weight[n];
        }
        out[c] = static_cast<unsigned long>(sum / step);
    }
}

void LutCalc::Lut3D_Out(const Read_LUTFile& src, Read_LUTFile& dst) {
    evaluateLattice(src, dst, [](const float* /*colour*/) {});
}

void LutCalc::Lut3D_Merge(const Read_LUTFile& first, const Read_LUTFile& second,
                          Read_LUTFile& result) {
    if (!second.hasTable3D()) {
        return;
    }
    const LatticeAxes axes = latticeAxes(second);
    evaluateLattice(first, result, [&](float* colour) { evaluate(second, axes, colour, colour); });
}

void LutCalc::Lut3D_OnebyOne(Read_LUTFile& lut) {
    if (!lut.hasTable3D()) {
        return;
    }
    const std::vector<float> positions = unitPositions(lut.size3D);
    const float* const grid = positions.data();
    tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        const float sample[] = {grid[i], grid[j], grid[k]};
        std::copy_n(sample, 3, lut.data3D[i][j][k]);
        return true;
    });
}

void LutCalc::Lut3D_to_Lut1D(const Read_LUTFile& src, Read_LUTFile& dst) {
    if (!src.hasTable3D() || !dst.hasTable1D()) {
        return;
    }
    const LatticeAxes axes = latticeAxes(src);
    for (int i = 0; i < dst.size1D; ++i) {
        const float t = unitPosition(i, dst.size1D);
        const float grey[] = {t, t, t};
        evaluate(src, axes, grey, dst.data1D[i]);
    }
}

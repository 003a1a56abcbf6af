#include "calc/lattice_axis.h"
#include "calc/look_up.h"
#include "calc/lutcalc.h"
#include "lut/read_lutfile.h"

#include <algorithm>
#include <cstddef>
#include <vector>

using tintwell::AxisPosition;
using tintwell::LatticeAxis;
using tintwell::unitPosition;

namespace {

LatticeAxis curveAxis(const Read_LUTFile& lut, int channel) {
    return {lut.domainMin1D[channel], lut.domainMax1D[channel], lut.size1D};
}

float interpolated(const Read_LUTFile& lut, int channel, const AxisPosition<float>& position) {
    const float low = lut.data1D[position.lower][channel];
    const float high = lut.data1D[position.upper][channel];
    return (high - low) * position.fraction + low;
}

} // namespace

void LutCalc::Lut1D_OnebyOne(Read_LUTFile& lut) {
    if (!lut.hasTable1D()) {
        return;
    }
    for (int i = 0; i < lut.size1D; ++i) {
        std::fill_n(lut.data1D[i], 3, unitPosition(i, lut.size1D));
    }
}

void tintwell::lookUp1D(const Read_LUTFile& lut, const float* in, float* out) {
    for (int c = 0; lut.hasTable1D() && c < 3; ++c) {
        out[c] = interpolated(lut, c, curveAxis(lut, c).at(in[c]));
    }
}

void LutCalc::Lut1D_liner(const float* in, float* out, const Read_LUTFile& lut) {
    tintwell::lookUp1D(lut, in, out);
}

void LutCalc::Lut1D_Out(const Read_LUTFile& src, Read_LUTFile& dst) {
    if (!src.hasTable1D() || !dst.hasTable1D()) {
        return;
    }
    for (int c = 0; c < 3; ++c) {
        const LatticeAxis axis = curveAxis(src, c);
        for (int i = 0; i < dst.size1D; ++i) {
            dst.data1D[i][c] = interpolated(src, c, axis.at(unitPosition(i, dst.size1D)));
        }
    }
}

void LutCalc::Lut1D_to_Lut3D(const float* const* table, int length, Read_LUTFile& lut) {
    if (!lut.hasTable3D() || length < 1) {
        return;
    }
    const int n = lut.size3D;
    std::vector<const float*> rows; // by lattice index
    rows.reserve(static_cast<std::size_t>(n));
    const auto last = static_cast<float>(length - 1);
    for (const float position : tintwell::unitPositions(n)) {
        const float row = position * last; // may round up past a very long table's last entry
        rows.push_back(table[row < last ? static_cast<int>(row) : length - 1]);
    }
    float*** const* plane = lut.data3D;
    for (const float* const row0 : rows) {
        float** const* row = *plane++;
        for (const float* const row1 : rows) {
            float* const* cell = *row++;
            for (const float* const row2 : rows) {
                const float sample[] = {row0[0], row1[1], row2[2]};
                std::copy_n(sample, 3, *cell++);
            }
        }
    }
}

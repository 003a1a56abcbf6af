#include "calc/lutcalc.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"
#include "lut/truncate.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

double fullScale(int bits) {
    return std::ldexp(1.0, bits) - 1;
}

/// The integer full scale used for packing.
float packingScale(int bits) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::min(std::trunc(fullScale(bits)), largest));
}

unsigned short packed(float sample, float scale) {
    return static_cast<unsigned short>(tintwell::truncated(sample * scale) & 0xFFFF);
}

float unpacked(unsigned short word, double scale) {
    return static_cast<float>(word / scale);
}

/// Visits every channel of every point, k fastest, in the order of the words.
template <typename Visit>
void visitSamples3D(const Read_LUTFile& lut, Visit&& visit) {
    tintwell::visitLattice(lut.hasTable3D() ? lut.size3D : 0, [&](int i, int j, int k) {
        std::for_each_n(lut.data3D[i][j][k], 3, visit);
        return true;
    });
}

/// Visits every entry of the curves as three floats.
template <typename Visit>
void visitEntries(const Read_LUTFile& lut, Visit&& visit) {
    std::for_each_n(lut.data1D, lut.hasTable1D() ? lut.size1D : 0, visit);
}

} // namespace

void LutCalc::Lut3D_to_Uart(unsigned short* words, int bits, const Read_LUTFile& lut) {
    const float scale = packingScale(bits);
    visitSamples3D(lut, [&](float sample) { *words++ = packed(sample, scale); });
}

void LutCalc::Uart_to_Lut3D(const unsigned short* words, int bits, Read_LUTFile& lut) {
    const double scale = fullScale(bits);
    visitSamples3D(lut, [&](float& sample) { sample = unpacked(*words++, scale); });
}

void LutCalc::Lut1D_to_Uart(unsigned short* words, int bits, const Read_LUTFile& lut) {
    const float scale = packingScale(bits);
    visitEntries(lut, [&](const float* entry) {
        std::for_each_n(entry, 3, [&](float sample) { *words++ = packed(sample, scale); });
    });
}

void LutCalc::Uart_to_Lut1D(const unsigned short* words, int bits, Read_LUTFile& lut) {
    const double scale = fullScale(bits);
    visitEntries(lut, [&](float* entry) {
        std::generate_n(entry, 3, [&] { return unpacked(*words++, scale); });
    });
}

void LutCalc::Gamma_to_Uart(unsigned short* words, int bits, const Read_LUTFile& lut) {
    const float scale = packingScale(bits);
    visitEntries(lut, [&](const float* entry) { *words++ = packed(entry[0], scale); });
}

void LutCalc::Uart_to_Gamma(const unsigned short* words, int bits, Read_LUTFile& lut) {
    const double scale = fullScale(bits);
    visitEntries(lut, [&](float* entry) { std::fill_n(entry, 3, unpacked(*words++, scale)); });
}

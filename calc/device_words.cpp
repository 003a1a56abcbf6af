#include "calc/lutcalc.h"
#include "lut/emit.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

double fullScale(int bits) {
    return std::ldexp(1.0, bits) - 1;
}

/// The integer full scale as packing uses it.
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

} // namespace

void LutCalc::Lut3D_to_Uart(unsigned short* words, int bits, Read_LUTFile& lut) {
    const float scale = packingScale(bits);
    tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        for (int c = 0; c < 3; ++c) {
            *words++ = packed(lut.data3D[i][j][k][c], scale);
        }
        return true;
    });
}

void LutCalc::Uart_to_Lut3D(const unsigned short* words, int bits, Read_LUTFile& lut) {
    const double scale = fullScale(bits);
    tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        for (int c = 0; c < 3; ++c) {
            lut.data3D[i][j][k][c] = unpacked(*words++, scale);
        }
        return true;
    });
}

void LutCalc::Lut1D_to_Uart(unsigned short* words, int bits, Read_LUTFile& lut) {
    const float scale = packingScale(bits);
    for (int i = 0; i < lut.size1D; ++i) {
        for (int c = 0; c < 3; ++c) {
            *words++ = packed(lut.data1D[i][c], scale);
        }
    }
}

void LutCalc::Uart_to_Lut1D(const unsigned short* words, int bits, Read_LUTFile& lut) {
    const double scale = fullScale(bits);
    for (int i = 0; i < lut.size1D; ++i) {
        for (int c = 0; c < 3; ++c) {
            lut.data1D[i][c] = unpacked(*words++, scale);
        }
    }
}

void LutCalc::Gamma_to_Uart(unsigned short* words, int bits, Read_LUTFile& lut) {
    const float scale = packingScale(bits);
    for (int i = 0; i < lut.size1D; ++i) {
        words[i] = packed(lut.data1D[i][0], scale);
    }
}

void LutCalc::Uart_to_Gamma(const unsigned short* words, int bits, Read_LUTFile& lut) {
    const double scale = fullScale(bits);
    for (int i = 0; i < lut.size1D; ++i) {
        std::fill_n(lut.data1D[i], 3, unpacked(words[i], scale));
    }
}

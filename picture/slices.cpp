#include "picture/slices.h"

#include "calc/look_up.h"
#include "calc/measure.h"
#include "lut/read_lutfile.h"

#include <algorithm>

namespace tintwell {

namespace {

int toCode(float value) {
    return static_cast<int>((value > 0 ? std::min(value, 1.0F) : 0.0F) * 255 + 0.5F);
}

} // namespace

QRgb toRgb(const float* sample) {
    return qRgb(toCode(sample[0]), toCode(sample[1]), toCode(sample[2]));
}

QImage slice(const Read_LUTFile& lut, int blue) {
    QImage image(lut.size3D, lut.size3D, QImage::Format_RGB32);
    for (int green = 0; green < lut.size3D; ++green) {
        for (int red = 0; red < lut.size3D; ++red) {
            image.setPixel(red, green, toRgb(lut.data3D[red][green][blue]));
        }
    }
    return image;
}

QImage evaluatedSlice(const Read_LUTFile& lut, double blue, int steps) {
    const auto input = [&](int channel, double fraction) {
        const Range domain = {lut.domainMin3D[channel], lut.domainMax3D[channel]};
        return static_cast<float>(domain.at(fraction));
    };
    QImage image(steps, steps, QImage::Format_RGB32);
    for (int y = 0; y < steps; ++y) {
        for (int x = 0; x < steps; ++x) {
            const double last = steps - 1;
            const float in[] = {input(0, x / last), input(1, y / last), input(2, blue)};
            float out[3];
            lookUp3D(lut, in, out);
            image.setPixel(x, y, toRgb(out));
        }
    }
    return image;
}

int slicePosition(int n, int count, int size) {
    return count > 1 ? n * (size - 1) / (count - 1) : 0;
}

Tiling bestTiling(const QSize& area, int wanted, int step, int gap, int labelHeight) {
    const auto tilingOf = [&](int side) {
        return Tiling{(area.width() + gap) / (side + gap),
                      (area.height() + gap) / (side + labelHeight + gap), side, gap, labelHeight};
    };
    for (int side = area.height() / step * step; side > step; side -= step) {
        const Tiling tiling = tilingOf(side);
        if (tiling.count() >= wanted) {
            return tiling;
        }
    }
    return tilingOf(step);
}

} // namespace tintwell

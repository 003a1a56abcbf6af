#include "calc/look_up_image.h"

#include "calc/lattice_rows.h"
#include "calc/look_up.h"
#include "lut/image_file.h"
#include "lut/read_lutfile.h"

#include <QPixelFormat>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

using tintwell::AxisPosition;
using tintwell::LatticeAxis;

namespace {

// A word is one channel of a pixel. A pixel is four words: R, G, B, and alpha or padding.

template <typename Word>
constexpr auto largestCode = static_cast<float>(std::numeric_limits<Word>::max());

/// The value of each code of a channel, in order.
template <typename Word, typename Map>
auto mapCodes(Map&& map) {
    constexpr int count = std::numeric_limits<Word>::max() + 1;
    std::vector<decltype(map(0.0F))> mapped;
    mapped.reserve(count);
    for (int code = 0; code < count; ++code) {
        mapped.push_back(map(static_cast<float>(code) / largestCode<Word>));
    }
    return mapped;
}

template <typename Word>
Word toCode(float value) {
    const float inside = value > 0 ? std::min(value, 1.0F) : 0.0F; // NaN is black
    return static_cast<Word>(inside * largestCode<Word> + 0.5F);
}

/// Calls \a visit(pixel) for each pixel until it returns false. True if every pixel was visited.
template <typename Word, typename Visit>
bool visitPixels(QImage& image, Visit&& visit) {
    constexpr std::ptrdiff_t channels = 4;
    for (int y = 0; y < image.height(); ++y) {
        auto* pixel = reinterpret_cast<Word*>(image.scanLine(y));
        const Word* const end = pixel + channels * image.width();
        for (; pixel != end; pixel += channels) {
            if (!visit(pixel)) {
                return false;
            }
        }
    }
    return true;
}

template <typename Word>
void lookUpLattice(const Read_LUTFile& lut, QImage& image) {
    // The positions of the codes on the axes are computed once, not for each pixel.
    const auto positions = [&lut](int channel) {
        const LatticeAxis axis = tintwell::latticeAxis(lut, channel);
        return mapCodes<Word>([&axis](float value) { return axis.at(value); });
    };
    const auto reds = positions(0);
    const auto greens = positions(1);
    const auto blues = positions(2);
    visitPixels<Word>(image, [&](Word* pixel) {
        const AxisPosition<float>& red = reds[pixel[0]];
        const AxisPosition<float>& green = greens[pixel[1]];
        float colour[3];
        tintwell::interpolate(tintwell::rowsAround(lut, red, green),
                              tintwell::rowOrder(red.fraction, green.fraction), blues[pixel[2]],
                              colour);
        std::transform(colour, colour + 3, pixel, toCode<Word>);
        return true;
    });
}

template <typename Word>
void lookUpCurves(const Read_LUTFile& lut, QImage& image) {
    const auto codes = mapCodes<Word>([&](float value) {
        const float grey[] = {value, value, value};
        float out[3];
        tintwell::lookUp1D(lut, grey, out);
        return std::array<Word, 3>{toCode<Word>(out[0]), toCode<Word>(out[1]),
                                   toCode<Word>(out[2])};
    });
    visitPixels<Word>(image, [&codes](Word* pixel) {
        for (std::size_t c = 0; c < 3; ++c) {
            pixel[c] = codes[pixel[c]][c];
        }
        return true;
    });
}

template <typename Word>
bool isNeutral(QImage& image) {
    return visitPixels<Word>(
        image, [](const Word* pixel) { return pixel[0] == pixel[1] && pixel[1] == pixel[2]; });
}

bool isGrey(QImage::Format format) {
    return format == QImage::Format_Grayscale8 || format == QImage::Format_Grayscale16;
}

template <typename Word>
QImage lookUpWords(const Read_LUTFile& lut, QImage image, QImage::Format format) {
    const QImage::Format original = image.format();
    QImage result = std::move(image).convertToFormat(format);
    if (lut.hasTable3D()) {
        lookUpLattice<Word>(lut, result);
    } else if (lut.hasTable1D()) {
        lookUpCurves<Word>(lut, result);
    }
    const bool staysGrey = isGrey(original) && isNeutral<Word>(result);
    return staysGrey ? std::move(result).convertToFormat(original) : result;
}

} // namespace

QImage tintwell::lookUpImage(const Read_LUTFile& lut, QImage image) {
    const bool alpha = image.hasAlphaChannel();
    if (isDeep(image.format())) {
        return lookUpWords<std::uint16_t>(lut, std::move(image),
                                          alpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64);
    }
    return lookUpWords<std::uint8_t>(lut, std::move(image),
                                     alpha ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
}

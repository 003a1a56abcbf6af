#pragma once

#include "lut/catalogue.h"

#include <array>

namespace samples {

/// What the tests know about a format, stated independently of the catalogue. Channels are in R, G,
/// B order everywhere.
struct FormatSample {
    tintwell::FormatCode code;
    const char* file;         ///< in tests/data
    bool readerIsBlueFastest; ///< the reader's own order
};

/// A sample file of every format.
inline constexpr auto formatSamples = std::to_array<FormatSample>({
    {tintwell::FormatCode::Cube, "sample.cube", false},
    {tintwell::FormatCode::Texture, "texture.png", false},
    {tintwell::FormatCode::UnwrappedCube, "unwrapped.png", false},
    {tintwell::FormatCode::ThreeDl, "sample.3dl", true},
    {tintwell::FormatCode::Mga, "sample.mga", true},
    {tintwell::FormatCode::Look, "sample.look", false},
    {tintwell::FormatCode::Discreet1D, "sample_discreet.lut", true},
    {tintwell::FormatCode::Plain1D, "sample_plain.lut", true},
    {tintwell::FormatCode::DavLut, "sample.davlut", true},
    {tintwell::FormatCode::Csp, "sample.csp", false},
    {tintwell::FormatCode::TruelightCube, "sample.cub", false},
    {tintwell::FormatCode::Itx, "sample.itx", false},
    {tintwell::FormatCode::Spi1D, "sample.spi1d", false},
    {tintwell::FormatCode::Spi3D, "sample.spi3d", true},
    {tintwell::FormatCode::Csv, "sample.csv", true},
    {tintwell::FormatCode::Nvx1D, "sample.nvx1d", true},
    {tintwell::FormatCode::Nvx3D, "sample.nvx3d", true},
});

static_assert(formatSamples.size() == tintwell::catalogue.size(), "a format has no sample");

constexpr const FormatSample& sampleOf(int code) {
    return formatSamples[static_cast<std::size_t>(code)];
}

} // namespace samples

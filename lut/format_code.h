#pragma once

namespace tintwell {

/// The codes of the file formats, as used in `LUTFILE_ST::formatCode`.
enum class FormatCode : int {
    Cube,
    Texture,
    UnwrappedCube,
    ThreeDl,
    Mga,
    Look,
    Discreet1D,
    Plain1D,
    DavLut,
    Csp,
    TruelightCube,
    Itx,
    Spi1D,
    Spi3D,
    Csv,
    Nvx1D,
    Nvx3D
};

} // namespace tintwell

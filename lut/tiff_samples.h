#pragma once

#include <QByteArray>
#include <QString>

namespace tintwell {

/// How a TIFF file stores its samples. Its decoders in the toolkit do not look at the kind, and
/// take all 16-bit samples as whole numbers.
struct TiffSamples {
    enum Kind {
        Unsigned = 1,
        Signed = 2,
        Float = 3,
        Untold = 4,
        ComplexInteger = 5,
        ComplexFloat = 6
    };

    int bits = 0; ///< per sample, in its first channel (decoders want all alike); 0 if the file is
                  ///< not TIFF or does not tell
    int kind = Unsigned;
};

/// Whether a file is TIFF, of up to 4 GiB (not BigTIFF).
bool isTiff(const QByteArray& content);

/// Reads the first image's directory. Anything broken leaves what the decoder will find itself.
TiffSamples tiffSamples(const QByteArray& content);

/// Why such samples cannot be read; empty if they can.
QString problemOf(const TiffSamples& samples);

} // namespace tintwell

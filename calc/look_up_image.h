#pragma once

#include <QImage>

class Read_LUTFile;

namespace tintwell {

/// Applies the 3D table of \a lut or, if it has none, its curves to every pixel of \a image. The
/// table must be in R, G, B order.
///
/// A code is divided by full scale (255 or 65535) to give 0..1; the result is clamped to 0..1 and
/// rounded. Images of more than 8 bits per channel come out with 16, all others with 8. Alpha is
/// unchanged. A grey image stays grey unless one of its pixels gains a hue.
QImage lookUpImage(const Read_LUTFile& lut, QImage image);

} // namespace tintwell

#pragma once

#include <QImage>

class Read_LUTFile;

namespace tintwell {

/// Takes every pixel of \a image through the 3D table of \a lut or, where it has none, through its
/// curves. The table must lie in R, G, B order.
///
/// A code becomes a colour of 0..1 by division by the full scale, 255 or 65535; the result is cut
/// to 0..1 and rounded. Images of more than 8 bits a channel come out with 16, all others with 8.
/// Alpha stays as it is. A grey image stays grey when no pixel of it takes on a hue.
QImage lookUpImage(Read_LUTFile& lut, QImage image);

/// Whether an image has more than 8 bits a channel.
bool isDeep(QImage::Format format);

} // namespace tintwell

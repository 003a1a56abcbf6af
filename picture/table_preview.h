#pragma once

#include "picture/style.h"

#include <QImage>
#include <QSize>

class Read_LUTFile;

namespace tintwell {

/// Draws what a table does in a small area of \a size device-independent pixels: a few slices of
/// the lattice (equal blue, red to the right, green down), its response to grey and, if the table
/// has a 1D part, the curves of that. The ground is transparent and there are no words. The table
/// must be in R, G, B order.
QImage drawPreview(const Read_LUTFile& lut, const QSize& size, qreal devicePixelRatio,
                   const Style& style);

} // namespace tintwell

#pragma once

#include "lut/image_file.h"

#include <QImage>
#include <QString>

class Read_LUTFile;

namespace tintwell {

/// Reads an image that may hold a 3D table as square tiles: one of more pixels than the largest
/// lattice has points is not decoded.
ImageFile readTiles(const QString& path);

/// Sets the container's `lastError` to what the image is and what it should be. Returns false, for
/// a reader to return.
bool failWithImage(Read_LUTFile& lut, const ImageFile& image, const char* expected);

/// Gives a container the 3D table of `size3D` whose sample (i, j, k) is the pixel at row j and
/// column k of tile i. Tiles are `size3D` pixels a side and run left to right, \a tilesPerRow of
/// them, then top to bottom; the image must hold them all. False when no table can be allocated.
bool storeTiles(Read_LUTFile& lut, const QImage& image, int tilesPerRow);

} // namespace tintwell

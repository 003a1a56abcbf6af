#pragma once

#include "lut/image_file.h"

#include <QSize>
#include <QString>

class Read_LUTFile;

namespace tintwell {

/// Reads an image that may hold a 3D table as square tiles. An image with more pixels than the
/// largest lattice has points is not decoded.
ImageFile readTiles(const QString& path);

/// Tiles per row and per column of a texture image; 0 if an image of this size is not one.
int tilesPerSide(const QSize& texture);

/// Sets the container's `lastError` to the image's size and the \a expected one. Returns false,
/// which the reader returns in turn.
bool failWithImage(Read_LUTFile& lut, const ImageFile& image, const char* expected);

/// Allocates and fills the 3D table of `size3D`: sample (i, j, k) is the pixel at row j and column
/// k of tile i. Tiles are `size3D` pixels a side and run left to right, \a tilesPerRow of them,
/// then top to bottom; the image must contain them all. False if no table can be allocated.
bool storeTiles(Read_LUTFile& lut, const ImageFile& image, int tilesPerRow);

} // namespace tintwell

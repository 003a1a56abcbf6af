// The texture image: a lattice of N points per axis as a square of T x T tiles, N = T x T, read
// left to right and top to bottom. Here T is 4, for an image of 64 pixels a side:
//
//     +-------+-------+-------+-------+
//     | i = 0 |     1 |     2 |     3 |
//     +-------+-------+-------+-------+
//     |     4 |     5 |     6 |     7 |
//     +-------+-------+-------+-------+
//     ...
//
// Within a tile j counts rows and k columns, N of each.

#include "formats/image_tiles.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"

bool Read_LUTFile::Read_Texture(QString path, bool probe) {
    const tintwell::ImageFile image = tintwell::readTiles(path);
    const int tiles = tintwell::tilesPerSide(image.size);
    if (tiles == 0) {
        return failWithImage(*this, image, "64 x 64, 512 x 512 or 4096 x 4096");
    }
    applyDefaultOrders(tintwell::FormatCode::Texture);
    setSize3D(tiles * tiles);
    return probe || tintwell::storeTiles(*this, image, tiles);
}

// The unwrapped cube image: a lattice of N points per axis as a strip of N tiles, read
// left to right:
//
//     +-------+-------+-------+
//     | i = 0 |     1 |     2 |
//     +-------+-------+-------+
//
// Within a tile j counts rows and k columns, N of each: the image is N x N pixels wide and N high.

#include "formats/image_tiles.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"

bool Read_LUTFile::Read_IUC(QString path, bool probe) {
    const tintwell::ImageFile image = tintwell::readTiles(path);
    const qint64 height = image.size.height();
    if (image.size.width() != height * height) {
        // Images of no known layout end up here; a texture only if it is read as this format.
        const bool isTexture = tintwell::tilesPerSide(image.size) > 0;
        return failWithImage(*this, image,
                             isTexture ? "a width of the height squared"
                                       : "a width of the height squared, or a square of 64, 512 or "
                                         "4096; HaldCLUTs are another layout");
    }
    setSize3D(image.size.height());
    applyDefaultOrders(tintwell::FormatCode::UnwrappedCube);
    if (size3D == 0) { // not an image at all, and yet no failure
        remarks += image.error;
        return true;
    }
    return probe || tintwell::storeTiles(*this, image, size3D);
}

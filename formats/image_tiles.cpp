#include "formats/image_tiles.h"
#include "formats/domain.h"

#include "formats/fill_table.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tintwell {

namespace {

bool isOpaque(const QImage& image) {
    if (!image.hasAlphaChannel()) {
        return true;
    }
    const QImage alpha = image.convertToFormat(QImage::Format_Alpha8);
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar* const row = alpha.constScanLine(y);
        if (!std::all_of(row, row + alpha.width(), [](uchar a) { return a == 255; })) {
            return false;
        }
    }
    return true;
}

/// Tells what the pixels lose as samples.
void remarkOnPixels(Read_LUTFile& lut, const ImageFile& image) {
    if (isDeep(image.pixels.format())) {
        lut.remarks += QStringLiteral("only 8 of the bits of each channel are read");
    }
    if (!isOpaque(image.pixels)) {
        lut.remarks += QStringLiteral("the image is transparent in places: alpha is ignored");
    }
    if (image.type == "jpg" || image.type == "jpeg") {
        lut.remarks += QStringLiteral("the compression of JPEG has changed the samples");
    }
}

} // namespace

ImageFile readTiles(const QString& path) {
    constexpr std::int64_t largest = Read_LUTFile::MaxSize3D;
    return readImage(path, largest * largest * largest, Orientation::Stored);
}

int tilesPerSide(const QSize& texture) {
    if (texture.width() != texture.height()) {
        return 0;
    }
    switch (texture.width()) {
    case 64:
        return 4;
    case 512:
        return 8;
    case 4096:
        return 16;
    default:
        return 0;
    }
}

bool failWithImage(Read_LUTFile& lut, const ImageFile& image, const char* expected) {
    if (!image.error.isEmpty()) {
        return lut.fail(image.error);
    }
    return lut.fail(QStringLiteral("found an image of %1 x %2 pixels, expected %3")
                        .arg(image.size.width())
                        .arg(image.size.height())
                        .arg(QLatin1String(expected)));
}

bool storeTiles(Read_LUTFile& lut, const ImageFile& image, int tilesPerRow) {
    const QImage pixels = image.pixels.convertToFormat(QImage::Format_RGB888);
    if (pixels.isNull()) {
        return lut.fail(QStringLiteral("not enough memory for the image"));
    }
    if (!lut.allocate3D()) {
        return false;
    }
    setDomain(lut.domainMax3D, 255);
    const int n = lut.size3D;
    std::vector<const uchar*> tiles; // the first pixel of each
    tiles.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        const int column = i % tilesPerRow * n;
        tiles.push_back(pixels.constScanLine(i / tilesPerRow * n) + std::ptrdiff_t{3} * column);
    }
    const std::ptrdiff_t rowLength = pixels.bytesPerLine();
    // In the order of the cells in memory, because they take ten times the space of the pixels.
    visitLattice(n, [&](int a, int j, int c) {
        const int i = lut.tableOrder ? a : c;
        const int k = lut.tableOrder ? c : a;
        const uchar* const rgb =
            tiles[static_cast<std::size_t>(i)] + j * rowLength + std::ptrdiff_t{3} * k;
        lut.White3D(i, j, k, rgb[0], rgb[1], rgb[2], lut.domainMin3D, lut.domainMax3D);
        return true;
    });
    lut.resetDomainMax3D();
    remarkOnPixels(lut, image);
    return true;
}

} // namespace tintwell

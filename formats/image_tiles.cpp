#include "formats/image_tiles.h"

#include "formats/tables.h"
#include "lut/read_lutfile.h"

#include <QFileInfo>
#include <QImageReader>

#include <cstdint>

namespace tintwell {

namespace {

/// Whether an image has more pixels than the largest lattice has points.
bool exceedsTables(const QSize& size) {
    constexpr std::int64_t largest = Read_LUTFile::MaxSize3D;
    return std::int64_t{size.width()} * size.height() > largest * largest * largest;
}

} // namespace

TileImage loadTileImage(const QString& path) {
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) { // pipes may never end
        return {QSize(0, 0), QImage(), QStringLiteral("is no regular file")};
    }
    QImageReader reader(path);
    const QSize claimed = reader.size();
    if (claimed.isValid() && exceedsTables(claimed)) {
        return {claimed, QImage(), QString()};
    }
    const QImage image = reader.read();
    return {image.size(), image, image.isNull() ? reader.errorString() : QString()};
}

bool failWithImage(Read_LUTFile& lut, const TileImage& image, const char* expected) {
    if (!image.error.isEmpty()) {
        return lut.fail(image.error);
    }
    return lut.fail(QStringLiteral("found an image of %1 x %2 pixels, expected %3")
                        .arg(image.size.width())
                        .arg(image.size.height())
                        .arg(QLatin1String(expected)));
}

bool storeTiles(Read_LUTFile& lut, const QImage& image, int tilesPerRow) {
    const QImage pixels = image.convertToFormat(QImage::Format_RGB888);
    if (pixels.isNull()) {
        return lut.fail(QStringLiteral("the image is too large for the memory"));
    }
    if (!lut.allocate3D()) {
        return false;
    }
    setDomain(lut.domainMax3D, 255);
    const int n = lut.size3D;
    for (int i = 0; i < n; ++i) {
        const int left = 3 * (i % tilesPerRow * n); // in bytes
        const int top = i / tilesPerRow * n;
        for (int j = 0; j < n; ++j) {
            const uchar* rgb = pixels.constScanLine(top + j) + left;
            for (int k = 0; k < n; ++k, rgb += 3) {
                lut.White3D(i, j, k, rgb[0], rgb[1], rgb[2], lut.domainMin3D, lut.domainMax3D);
            }
        }
    }
    lut.resetDomainMax3D();
    return true;
}

} // namespace tintwell

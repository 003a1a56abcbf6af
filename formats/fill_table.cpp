#include "formats/fill_table.h"

#include <cstdint>

namespace tintwell {

namespace {

bool failTooShort(Read_LUTFile& lut, std::int64_t samples, int size) {
    return lut.fail(QStringLiteral("the file is too short for the %1 samples of its size %2")
                        .arg(samples)
                        .arg(size));
}

} // namespace

bool allocateLattice(Read_LUTFile& lut, const LineSource& lines, Completeness completeness) {
    if (lut.data3D != nullptr) {
        return true;
    }
    const std::int64_t n = lut.size3D;
    const bool couldBeRead = n >= 1 && n <= Read_LUTFile::MaxSize3D;
    if (couldBeRead && !lines.canHold(n * n * n) &&
        (completeness == Completeness::Complete || n > MaxEmptySize3D)) {
        return failTooShort(lut, n * n * n, lut.size3D);
    }
    return lut.allocate3D();
}

bool allocateCurve(Read_LUTFile& lut, const LineSource& lines, Completeness completeness) {
    if (lut.data1D != nullptr) {
        return true;
    }
    const std::int64_t n = lut.size1D;
    const bool couldBeRead = n >= 1 && n <= Read_LUTFile::MaxSize1D;
    if (couldBeRead && !lines.canHold(n) &&
        (completeness == Completeness::Complete || n > MaxEmptySize1D)) {
        return failTooShort(lut, n, lut.size1D);
    }
    return lut.allocate1D();
}

} // namespace tintwell

#include "formats/tables.h"

#include <cstdint>

namespace tintwell {

bool allocateLattice(Read_LUTFile& lut, const LineSource& lines, Body body) {
    constexpr std::int64_t mayStandEmpty = 1'000'000;
    const std::int64_t n = lut.size3D;
    if (n < 1 || n > Read_LUTFile::MaxSize3D) {
        return false;
    }
    const std::int64_t points = n * n * n;
    const bool justified =
        lines.canHold(points) || (body == Body::MayBeShort && points <= mayStandEmpty);
    return justified && lut.allocate3D();
}

} // namespace tintwell

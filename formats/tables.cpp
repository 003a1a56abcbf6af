#include "formats/tables.h"

#include <cstdint>

namespace tintwell {

bool allocateLattice(Read_LUTFile& lut, const LineSource& lines, Body body) {
    const std::int64_t n = lut.size3D;
    if (n < 1 || n > Read_LUTFile::MaxSize3D) {
        return false;
    }
    const bool justified =
        lines.canHold(n * n * n) || (body == Body::MayBeShort && n <= MaxEmptySize3D);
    return justified && lut.allocate3D();
}

} // namespace tintwell

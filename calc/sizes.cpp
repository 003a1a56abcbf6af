#include "calc/sizes.h"

#include "calc/compare.h"
#include "calc/make_table.h"
#include "lut/read_lutfile.h"

#include <set>

namespace tintwell {

std::optional<float> errorAtSize(const Read_LUTFile& from, int size) {
    if (from.hasTable3D() && from.size3D == size) {
        return 0.0F;
    }
    Read_LUTFile made(nullptr);
    return reshape(from, made, TableKind::ThreeD, size)
               ? std::optional(resamplingError(from, made, TableKind::ThreeD))
               : std::nullopt;
}

std::optional<int> sizeBelow(const Read_LUTFile& from, float limit) {
    std::set<int> sizes(usualSizes.begin(), usualSizes.end());
    if (from.hasTable3D()) {
        sizes.insert(from.size3D);
    }
    for (const int size : sizes) {
        const std::optional<float> error = errorAtSize(from, size);
        if (error && *error < limit) {
            return size;
        }
    }
    return std::nullopt;
}

} // namespace tintwell

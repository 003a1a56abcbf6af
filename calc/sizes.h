#pragma once

#include <array>
#include <optional>

class Read_LUTFile;

namespace tintwell {

/// Points per axis that lattices usually have.
inline constexpr std::array usualSizes = {17, 25, 33, 49, 65};

/// The error, as resamplingError() finds it, of a lattice of \a size points per axis that has the
/// effect of \a from. 0 if \a from has such a lattice: it stays as it is. None if memory runs out.
std::optional<float> errorAtSize(const Read_LUTFile& from, int size);

/// The smallest of the usual sizes and of the table's own whose error is below \a limit. None if
/// there is none.
std::optional<int> sizeBelow(const Read_LUTFile& from, float limit);

} // namespace tintwell

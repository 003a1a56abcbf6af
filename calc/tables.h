#pragma once

#include <span>

class Read_LUTFile;

namespace tintwell {

/// Tables in the order in which they are applied; one at least.
using Tables = std::span<const Read_LUTFile* const>;

} // namespace tintwell

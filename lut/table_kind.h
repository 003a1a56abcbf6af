#pragma once

namespace tintwell {

/// The two kinds of table: three curves, or a lattice.
enum class TableKind { OneD, ThreeD };

/// "1D" or "3D".
constexpr const char* kindName(TableKind kind) {
    return kind == TableKind::ThreeD ? "3D" : "1D";
}

} // namespace tintwell

#pragma once

namespace tintwell {

/// Visits the points of an n x n x n lattice as (i, j, k), k fastest, until \a visit returns false.
/// True when every point was visited.
template <typename Visit>
bool visitLattice(int n, Visit&& visit) {
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            for (int k = 0; k < n; ++k) {
                if (!visit(i, j, k)) {
                    return false;
                }
            }
        }
    }
    return true;
}

} // namespace tintwell

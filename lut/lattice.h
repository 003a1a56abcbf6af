#pragma once

namespace tintwell {

/// Visits the points of an n x n x n lattice as (i, j, k), k fastest, until \a visit returns false.
/// True if every point was visited.
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

/// Prefetches the cells (i, j, 0) to (i, j, n - 1) before they are filled. In kji order they are a
/// plane apart, and waiting for them one by one would take longer than reading their samples.
template <typename Lattice>
void prefetchRow(Lattice data, int n, bool tableOrder, int i, int j) {
    for (int k = 0; !tableOrder && k < n; ++k) {
        __builtin_prefetch(data[k][j][i]);
    }
}

} // namespace tintwell

#pragma once

#include "formats/text/line_source.h"
#include "lut/lattice.h"

#include <cstdint>
#include <string_view>

namespace tintwell {

/// How a walk over a table's places ended.
enum class Walk {
    Complete,  ///< every place was filled
    LacksLast, ///< the file ended when the very last place was due: good enough
    Short      ///< the file ended before
};

/// Fills the points of a lattice in file order, k fastest. \a take(line, i, j, k) stores the line's
/// sample and returns true, or returns false for a line that takes no place. \a found receives the
/// number of samples in a file that ended too soon.
template <typename Take>
Walk walkLattice(LineSource& lines, int size, Take&& take, std::int64_t* found = nullptr) {
    Walk end = Walk::Complete;
    visitLattice(size, [&](int i, int j, int k) {
        do {
            if (lines.atEnd()) {
                const int last = size - 1;
                end = i == last && j == last && k == last ? Walk::LacksLast : Walk::Short;
                if (found != nullptr) {
                    *found = (std::int64_t{i} * size + j) * size + k;
                }
                return false;
            }
        } while (!take(lines.next(), i, j, k));
        return true;
    });
    return end;
}

/// Fills the entries of a 1D table likewise, by \a take(line, n).
template <typename Take>
Walk walkEntries(LineSource& lines, int size, Take&& take, std::int64_t* found = nullptr) {
    for (int n = 0; n < size; ++n) {
        do {
            if (lines.atEnd()) {
                if (found != nullptr) {
                    *found = n;
                }
                return n == size - 1 ? Walk::LacksLast : Walk::Short;
            }
        } while (!take(lines.next(), n));
    }
    return Walk::Complete;
}

} // namespace tintwell

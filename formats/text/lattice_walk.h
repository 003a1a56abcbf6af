#pragma once

#include "formats/text/line_source.h"
#include "lut/lattice.h"

#include <string_view>

namespace tintwell {

/// How a walk over a table's places ended.
enum class Walk {
    Complete,  ///< every place was filled
    LacksLast, ///< the file ended when the very last place was due: good enough
    Short      ///< the file ended before
};

/// Fills the points of a lattice in file order, k fastest. \a take(line, i, j, k) stores the line's
/// sample and returns true, or returns false for a line that takes no place.
template <typename Take>
Walk walkLattice(LineSource& lines, int size, Take&& take) {
    Walk end = Walk::Complete;
    visitLattice(size, [&](int i, int j, int k) {
        do {
            if (lines.atEnd()) {
                const int last = size - 1;
                end = i == last && j == last && k == last ? Walk::LacksLast : Walk::Short;
                return false;
            }
        } while (!take(lines.next(), i, j, k));
        return true;
    });
    return end;
}

/// Fills the entries of a 1D table likewise, by \a take(line, n).
template <typename Take>
Walk walkEntries(LineSource& lines, int size, Take&& take) {
    for (int n = 0; n < size; ++n) {
        do {
            if (lines.atEnd()) {
                return n == size - 1 ? Walk::LacksLast : Walk::Short;
            }
        } while (!take(lines.next(), n));
    }
    return Walk::Complete;
}

} // namespace tintwell

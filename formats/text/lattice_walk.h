#pragma once

#include "formats/text/line_source.h"
#include "lut/lattice.h"

#include <cstdint>
#include <string_view>

namespace tintwell {

/// How the filling of a table ended.
enum class FillResult {
    Complete,    ///< every place was filled
    LastMissing, ///< only the very last sample was missing, which is accepted
    EndedEarly   ///< the file ended before that
};

/// Fills the points of a lattice in file order, k fastest. \a take(line, i, j, k) stores the line's
/// sample and returns true, or returns false for a line that is not a sample. If the file ends
/// early, \a found receives the number of its samples.
template <typename Take>
FillResult walkLattice(LineSource& lines, int size, Take&& take, std::int64_t* found = nullptr) {
    FillResult end = FillResult::Complete;
    visitLattice(size, [&](int i, int j, int k) {
        do {
            if (lines.atEnd()) {
                const int last = size - 1;
                end = i == last && j == last && k == last ? FillResult::LastMissing
                                                          : FillResult::EndedEarly;
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

/// The same for the entries of a 1D table, with \a take(line, n).
template <typename Take>
FillResult walkEntries(LineSource& lines, int size, Take&& take, std::int64_t* found = nullptr) {
    for (int n = 0; n < size; ++n) {
        do {
            if (lines.atEnd()) {
                if (found != nullptr) {
                    *found = n;
                }
                return n == size - 1 ? FillResult::LastMissing : FillResult::EndedEarly;
            }
        } while (!take(lines.next(), n));
    }
    return FillResult::Complete;
}

} // namespace tintwell

#pragma once

#include "formats/plane_copies.h"
#include "formats/text/text_file.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <QString>

#include <cstdint>
#include <string_view>
#include <utility>

// What the text formats share for writing tables.

namespace tintwell {

// Creates or empties the file for a table. If the container has only the size of the table, as
// after a probe, the file is not opened and \a error is set.
TextFile createFor3D(const QString& path, const Read_LUTFile& lut, QString& error);
TextFile createFor1D(const QString& path, const Read_LUTFile& lut, QString& error);

/// Prints the 3D table, one line per point, k fastest: first \a prefix(i, j, k), which prints to
/// the file itself, then the cell in the writer's orders.
template <typename Prefix>
void emitLattice(TextFile& out, const Write_LUTFile& writer, const Read_LUTFile& lut,
                 std::int64_t scale, std::string_view sep, Prefix&& prefix) {
    const int n = lut.size3D;
    PlaneCopies planes(lut.data3D, n);
    for (int i = 0; i < n; ++i) {
        const float* copy = writer.tableOrder ? nullptr : planes.plane(i);
        for (int j = 0; j < n; ++j) {
            for (int k = 0; k < n; ++k) {
                const float* const cell =
                    copy == nullptr ? lut.data3D[i][j][k] : std::exchange(copy, copy + 3);
                prefix(i, j, k);
                emitCell3D(out, cell, writer.dataOrder, scale, sep);
                out << '\n';
            }
        }
    }
}

/// The same without a prefix.
inline void emitLattice(TextFile& out, const Write_LUTFile& writer, const Read_LUTFile& lut,
                        std::int64_t scale, std::string_view sep) {
    emitLattice(out, writer, lut, scale, sep, [](int, int, int) {});
}

} // namespace tintwell

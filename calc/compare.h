#pragma once

#include "calc/tables.h"
#include "lut/table_kind.h"

#include <cstdint>

class Read_LUTFile;

namespace tintwell {

// How far tables are from what they stand for. Results are in the unit of the samples, 0 or more.
// Tables must be in R, G, B order, lattices in [red][green][blue].

/// The error between the points of a table that reshape() has made of \a from: the largest
/// difference of any channel between the effects of both, in the centres of the cells of a lattice
/// or on the greys halfway between the entries of curves. Differences that are not finite are left
/// out. 0 for a table of one point.
///
/// Of more than 64 cells along an axis of a lattice, 64 are looked at, the first, the last and
/// others evenly between them. Of longer curves they are 65536.
float resamplingError(const Read_LUTFile& from, const Read_LUTFile& made, TableKind kind);

/// The same for a table that compose() has made of \a tables.
float compositionError(Tables tables, const Read_LUTFile& made, TableKind kind);

/// The largest difference between the samples of the tables of a kind. Infinity if their sizes
/// differ, if there is only one, or if only one of two samples is NaN. Two NaN are equal, and so
/// are two infinities of the same sign.
float tableDifference(const Read_LUTFile& a, const Read_LUTFile& b, TableKind kind);

/// The largest difference between a finite sample of the table of a kind, which must exist, and
/// what a writer prints for it. From \a scale 2 on that is an integer, sample x scale truncated,
/// which stands for itself divided by the scale; else a number with six decimals (3D) or six
/// significant digits (1D).
float writingLoss(const Read_LUTFile& lut, TableKind kind, std::int64_t scale);

} // namespace tintwell

#pragma once

#include "calc/tables.h"
#include "lut/catalogue.h"
#include "lut/table_kind.h"

class Read_LUTFile;

namespace tintwell {

// Each makes a table of the given kind and size in a container, replacing any of that kind: cells
// hold R, G, B and lattices are [red][green][blue]. False, with the container's `lastError` set, if
// the size is outside the container's limits or memory runs out.

/// A table of zeros.
bool makeZeros(Read_LUTFile& lut, TableKind kind, int size);

/// An identity table.
bool makeIdentity(Read_LUTFile& lut, TableKind kind, int size);

/// The effect of \a from over the inputs 0..1. A lattice is reduced to curves by its grey axis;
/// curves are applied to each point of a lattice. If \a from has both kinds, the table of the same
/// kind is used.
bool reshape(const Read_LUTFile& from, Read_LUTFile& lut, TableKind kind, int size);

/// The effect of one table or more, one after the other, over the inputs 0..1, whatever their
/// kinds; a container that has both is used by its lattice. Curves hold the grey axis.
bool compose(Tables tables, Read_LUTFile& lut, TableKind kind, int size);

/// The lattice of a file that is written from \a from at \a size points per axis, if \a read is
/// swapped on reading and \a written on writing; resampled over the inputs 0..1 in between if the
/// size differs. \a from, a lattice in R, G, B order, is changed and put back.
bool relay(Read_LUTFile& from, const Swaps& read, const Swaps& written, int size,
           Read_LUTFile& lut);

/// Puts the channels of a 1D table that was read in red-fastest order back into R, G, B: in the
/// container, the lattice order affects 1D tables too.
void undoLatticeOrder(Read_LUTFile& lut);

} // namespace tintwell

#pragma once

#include "calc/measure.h"
#include "calc/tables.h"
#include "lut/table_kind.h"

#include <array>
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

/// Whether two tables have points to be compared one by one, or are both evaluated.
enum class ComparedBy { Points, Evaluation };

/// How far two tables are apart.
struct Comparison {
    struct Channel {
        float largest = 0; ///< infinity where only one of two numbers is finite, or they are
                           ///< infinities of different signs
        double mean = 0;   ///< of the finite differences; infinity if there are none
        double rms = 0;    ///< root of the mean square of those
    };

    ComparedBy by;
    TableKind kind;             ///< of the points
    int size;                   ///< points per axis, or entries
    Channels from;              ///< the first input of each axis
    Channels to;                ///< the last
    bool isIdentical = false;   ///< compared by points, and the same to the bit; all NaN are one
    std::int64_t nonFinite = 0; ///< differences that are not finite
    std::array<Channel, 3> channels = {};

    // Where the largest difference of any channel is: at the first such point.
    std::array<int, 3> index = {}; ///< in the lattice; for curves three times the entry
    Channels input = {};
    Channels first = {};  ///< what the first table has there
    Channels second = {}; ///< what the second has

    float largest() const;
};

/// Compares two tables; one that has both kinds is used by its lattice. With \a haveSameInputs,
/// which says that the points of both stand for the same inputs if they are as many, two tables of
/// one kind and size are compared point by point. All others are evaluated: at the points of the
/// finer lattice if there is one, or else of the longer curve, spread over the domains of both.
/// Outside its own domain a table has the value at the edge, as in lookUp(). A domain without a
/// finite width is 0..1.
///
/// With \a differences, that container gets a table of the differences, over the same inputs.
/// False, with its `lastError` set, if memory runs out.
bool compareTables(const Read_LUTFile& first, const Read_LUTFile& second, bool haveSameInputs,
                   Comparison& result, Read_LUTFile* differences = nullptr);

/// The largest difference between a finite sample of the table of a kind, which must exist, and
/// what a writer prints for it. From \a scale 2 on that is an integer, sample x scale truncated,
/// which stands for itself divided by the scale; else a number with six decimals (3D) or six
/// significant digits (1D).
float writingLoss(const Read_LUTFile& lut, TableKind kind, std::int64_t scale);

} // namespace tintwell

#pragma once

#include "formats/failures.h"
#include "formats/odd_lines.h"
#include "formats/text/lattice_walk.h"
#include "formats/text/line_source.h"
#include "formats/text/triple.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"

#include <cmath>
#include <cstdint>
#include <string_view>

// What the text formats share for filling tables.

namespace tintwell {

/// The points per axis of a lattice of this many samples, rounded.
inline int latticeSizeOf(std::int64_t samples) {
    return samples > 0 ? static_cast<int>(std::pow(samples, 1.0 / 3.0) + 0.5) : 0;
}

/// Whether a file must hold every sample of its table except the very last, or may end early.
enum class Completeness { Complete, Partial };

/// The largest lattice (points per axis) and the longest curve that may be left unfilled. They are
/// limited because a few bytes can ask for any size.
inline constexpr int MaxEmptySize3D = 100;
inline constexpr int MaxEmptySize1D = 1 << 18;

/// Allocates the 3D table of `size3D`, unless it is allocated already. False if the size is beyond
/// the limits or the file is too short to fill it; a file that may be partial can leave a lattice
/// of up to MaxEmptySize3D unfilled.
bool allocateLattice(Read_LUTFile& lut, const LineSource& lines, Completeness completeness);
/// The same for the 1D table of `size1D`.
bool allocateCurve(Read_LUTFile& lut, const LineSource& lines, Completeness completeness);

/// Stores a sample, normalised by the container's own domain.
template <typename Number>
void store3D(Read_LUTFile& lut, int i, int j, int k, const Triple<Number>& sample) {
    if (k == 0) {
        prefetchRow(lut.data3D, lut.size3D, lut.tableOrder, i, j);
    }
    lut.White3D(i, j, k, static_cast<float>(sample.r), static_cast<float>(sample.g),
                static_cast<float>(sample.b), lut.domainMin3D, lut.domainMax3D);
}

template <typename Number>
void store1D(Read_LUTFile& lut, int n, const Triple<Number>& sample) {
    lut.White1D(n, static_cast<float>(sample.r), static_cast<float>(sample.g),
                static_cast<float>(sample.b), lut.domainMin1D, lut.domainMax1D);
}

/// Tells how the filling of a table ended.
inline void tellFilled(Read_LUTFile& lut, const LineSource& lines, const BodyLines& body,
                       FillResult result, std::int64_t found, std::int64_t expected) {
    if (expected == 0) {
        return; // there is no such table
    }
    switch (result) {
    case FillResult::Complete:
        body.tellWithLast(lut);
        break;
    case FillResult::LastMissing:
        body.tell(lut);
        lut.remarkMissing(found, expected);
        break;
    case FillResult::EndedEarly:
        failShort(lut, lines, found, expected);
        break;
    }
}

/// Fills the 3D table of `size3D` with the samples that \a scanSample(line, sample) finds, which
/// returns a SampleLine. A whole sample line has \a numbers numbers. On return, \a sample is the
/// last one read. If the file ends early, `lastError` says so.
template <typename Number, typename ScanSample>
FillResult fillLattice(Read_LUTFile& lut, LineSource& lines, Triple<Number>& sample,
                       ScanSample&& scanSample, int numbers = 3) {
    BodyLines body(lines, numbers);
    const auto place = [&](std::string_view line, int i, int j, int k) {
        if (!body.isSample(scanSample(line, sample))) {
            return false;
        }
        store3D(lut, i, j, k, sample);
        return true;
    };
    std::int64_t found = 0;
    const FillResult result = walkLattice(lines, lut.size3D, place, &found);
    const std::int64_t n = lut.size3D;
    tellFilled(lut, lines, body, result, found, n * n * n);
    return result;
}

/// The same for the 1D table of `size1D`.
template <typename Number, typename ScanSample>
FillResult fillCurve(Read_LUTFile& lut, LineSource& lines, Triple<Number>& sample,
                     ScanSample&& scanSample, int numbers = 3) {
    BodyLines body(lines, numbers);
    const auto place = [&](std::string_view line, int n) {
        if (!body.isSample(scanSample(line, sample))) {
            return false;
        }
        store1D(lut, n, sample);
        return true;
    };
    std::int64_t found = 0;
    const FillResult result = walkEntries(lines, lut.size1D, place, &found);
    tellFilled(lut, lines, body, result, found, lut.size1D);
    return result;
}

/// Tells of what the file holds after the table.
template <typename Number, typename ScanSample>
void passRest(Read_LUTFile& lut, LineSource& lines, Triple<Number> sample,
              ScanSample&& scanSample) {
    BodyLines rest(lines, 0);
    while (!lines.atEnd()) {
        rest.addSurplus(scanSample(lines.next(), sample));
    }
    rest.tell(lut);
}

/// The last step of reading a format that holds a lattice and nothing after it: allocates the table
/// and fills it. Only the last sample may be missing.
template <typename Number, typename ScanSample>
bool readLattice(Read_LUTFile& lut, LineSource& lines, Triple<Number> sample,
                 ScanSample&& scanSample, int numbers = 3) {
    const bool filled =
        allocateLattice(lut, lines, Completeness::Complete) &&
        fillLattice(lut, lines, sample, scanSample, numbers) != FillResult::EndedEarly;
    lut.resetDomainMax3D();
    if (filled) {
        passRest(lut, lines, sample, scanSample);
    }
    return filled;
}

} // namespace tintwell

#pragma once

#include "formats/text/lattice_walk.h"
#include "formats/text/line_source.h"
#include "formats/text/scan.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <cmath>
#include <cstdint>
#include <string_view>

// What the text formats share in filling a container.

namespace tintwell {

/// The three numbers of a sample line. A line with fewer keeps those of the line before, as does
/// one with none, which is no sample.
template <typename Number>
struct Triple {
    Number r = 0;
    Number g = 0;
    Number b = 0;

    bool take(std::string_view line) { return scan(line, r, g, b) > 0; }
};

/// Stores a sample in the container's own domain.
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

/// All three channels of a domain end.
inline void setDomain(float (&end)[3], float value) {
    end[0] = end[1] = end[2] = value;
}

/// The points per axis of the lattice that so many samples fill, rounded.
inline int cubeRoot(long samples) {
    return samples > 0 ? static_cast<int>(std::pow(samples, 1.0 / 3.0) + 0.5) : 0;
}

/// Scans a range of two numbers, such as "0.0 1.0", into both ends of a domain. One number sets the
/// minimum only. False, with nothing changed, for none.
bool takeRange(std::string_view text, float (&min)[3], float (&max)[3]);

/// Whether a file must hold (almost) every sample of its lattice.
enum class Body { Complete, MayBeShort };

/// The largest lattice, in points per axis, and the longest curve that may stand empty: a few bytes
/// can ask for them.
inline constexpr int MaxEmptySize3D = 100;
inline constexpr int MaxEmptySize1D = 1 << 18;

/// Gives the container the 3D table of `size3D`, unless it holds it already: setting a size
/// releases the table before. False for a size beyond the limit, and for one that the file has not
/// bytes enough to fill: a short body may leave a lattice up to MaxEmptySize3D unfilled.
bool allocateLattice(Read_LUTFile& lut, const LineSource& lines, Body body);
/// The same for the 1D table of `size1D`.
bool allocateCurve(Read_LUTFile& lut, const LineSource& lines, Body body);

/// A sample line of three numbers: all that most formats ask.
inline constexpr auto takeNumbers = [](std::string_view line, auto& sample) {
    return sample.take(line);
};

/// Sets the container's `lastError` to what the line read last holds and what it should. Returns
/// false, for a reader to return.
bool failAtLine(Read_LUTFile& lut, const LineSource& lines, const QString& expected);

/// The same for a file without a usable size: \a expected names the line that tells it.
bool failUnsized(Read_LUTFile& lut, const char* expected);

/// The same for a file that ended after \a found of so many samples.
bool failShort(Read_LUTFile& lut, const LineSource& lines, std::int64_t found,
               std::int64_t expected);

/// Tells in `lastError` of a file that ended early and yet is accepted. Does nothing for one that
/// did not.
void noteShort(Read_LUTFile& lut, std::int64_t found, std::int64_t expected);

/// Fills the 3D table of `size3D` with the samples that \a take(line, sample) accepts. \a sample
/// ends up as the last one read. A short file is told in `lastError`.
template <typename Number, typename Take>
Walk fillLattice(Read_LUTFile& lut, LineSource& lines, Triple<Number>& sample, Take&& take) {
    const auto place = [&](std::string_view line, int i, int j, int k) {
        if (!take(line, sample)) {
            return false;
        }
        store3D(lut, i, j, k, sample);
        return true;
    };
    std::int64_t found = 0;
    const Walk end = walkLattice(lines, lut.size3D, place, &found);
    if (end == Walk::Short) {
        const std::int64_t n = lut.size3D;
        failShort(lut, lines, found, n * n * n);
    }
    return end;
}

/// Fills the 1D table of `size1D` likewise.
template <typename Number, typename Take>
Walk fillCurve(Read_LUTFile& lut, LineSource& lines, Triple<Number>& sample, Take&& take) {
    const auto place = [&](std::string_view line, int n) {
        if (!take(line, sample)) {
            return false;
        }
        store1D(lut, n, sample);
        return true;
    };
    std::int64_t found = 0;
    const Walk end = walkEntries(lines, lut.size1D, place, &found);
    if (end == Walk::Short) {
        failShort(lut, lines, found, lut.size1D);
    }
    return end;
}

/// Ends the read of a format that holds a lattice and nothing behind it: allocates the table and
/// fills it. Only the last sample may lack.
template <typename Number, typename Take>
bool readLattice(Read_LUTFile& lut, LineSource& lines, Triple<Number> sample, Take&& take) {
    const bool filled = allocateLattice(lut, lines, Body::Complete) &&
                        fillLattice(lut, lines, sample, take) != Walk::Short;
    lut.resetDomainMax3D();
    return filled;
}

} // namespace tintwell

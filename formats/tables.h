#pragma once

#include "formats/text/lattice_walk.h"
#include "formats/text/line_source.h"
#include "formats/text/scan.h"
#include "lut/read_lutfile.h"

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

/// Whether a file must hold (almost) every sample of its lattice.
enum class Body { Complete, MayBeShort };

/// Allocates the 3D table of `size3D`. False for a size beyond the limit, and for one that the file
/// has not bytes enough to fill: a short body may leave a lattice of some 100 points per axis
/// unfilled, but not a larger one.
bool allocateLattice(Read_LUTFile& lut, const LineSource& lines, Body body);

} // namespace tintwell

#pragma once

class Read_LUTFile;

namespace tintwell {

// Each evaluates a table at the colour \a in (three floats in its input domain) and stores the
// result in \a out, which may be the same array. Colours outside the domain get the value at its
// edge. If the table is missing, nothing is done.

/// The lattice, by tetrahedral interpolation.
void lookUp3D(const Read_LUTFile& lut, const float* in, float* out);

/// The curve of each channel, by linear interpolation.
void lookUp1D(const Read_LUTFile& lut, const float* in, float* out);

/// The lattice or, if there is none, the curves.
void lookUp(const Read_LUTFile& lut, const float* in, float* out);

} // namespace tintwell

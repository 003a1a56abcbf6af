#pragma once

#include "formats/text/line_source.h"
#include "lut/text_file.h"

namespace tintwell {

// The header that the two NVX formats share:
//
//     From 0.0 1.0
//     Length 17
//
// The length line ends it; lines of other kinds stand for nothing.

/// Reads up to the end of the length line. Returns the length; 0 for none. The domain keeps its
/// values where the file does not tell.
int readNvxHeader(LineSource& lines, float (&domainMin)[3], float (&domainMax)[3]);

/// The domain written is always 0 to 1.
void writeNvxHeader(TextFile& out, int length);

} // namespace tintwell

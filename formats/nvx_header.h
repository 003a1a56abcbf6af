#pragma once

#include "formats/text/line_source.h"
#include "formats/text/text_file.h"
#include "lut/read_lutfile.h"

namespace tintwell {

// The header that the two NVX formats share:
//
//     From 0.0 1.0
//     Length 17
//
// The length line ends it; other lines are ignored.

/// Reads up to and including the length line. Returns the length; 0 if there is none. Parts of the
/// domain that the file does not state keep their values.
int readNvxHeader(Read_LUTFile& lut, LineSource& lines, float (&domainMin)[3],
                  float (&domainMax)[3]);

/// Always writes the domain 0 to 1.
void writeNvxHeader(TextFile& out, int length);

} // namespace tintwell

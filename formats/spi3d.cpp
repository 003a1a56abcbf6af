// The Spi3d format, 3D:
//
//     SPILUT 1.0
//     3 3
//     2 2 2
//     0 0 0 0.000000 0.000000 0.000000
//     0 0 1 0.000000 0.000000 1.000000
//     ...
//
// Each sample names its place, so lines may come in any order and points without one stay black.

#include "formats/tables.h"
#include "formats/text/words.h"
#include "lut/read_lutfile.h"
#include "lut/text_file.h"
#include "lut/write_lutfile.h"

#include <algorithm>
#include <string_view>

using tintwell::Body;
using tintwell::LineSource;
using tintwell::scan;
using tintwell::Triple;

namespace {

void skipSignature(LineSource& lines) {
    while (!lines.atEnd() && !tintwell::startsWith(lines.next(), "SPILUT")) {
    }
}

/// Finds the next line that has all the numbers asked for. They keep their values if there is none.
template <typename... Numbers>
void findLine(LineSource& lines, Numbers&... numbers) {
    while (!lines.atEnd() && scan(lines.next(), numbers...) < static_cast<int>(sizeof...(numbers))) {
    }
}

/// False for channel counts or sizes that differ among themselves.
bool readHeader(LineSource& lines, int& size) {
    skipSignature(lines);
    int inputs = 0;
    int outputs = 0;
    findLine(lines, inputs, outputs);
    if (inputs != outputs) {
        return false;
    }
    int height = 0;
    int depth = 0;
    findLine(lines, size, height, depth);
    return size == height && size == depth;
}

} // namespace

// The plain 1D format, of 256 entries:
//
//     Index	Red	Green	Blue
//     0	0.000	0.000	0.000
//     1	0.004	0.004	0.003
//     ...
//
// Entries stand in the order of their lines, whatever their index.

#include "formats/tables.h"
#include "formats/text/words.h"
#include "lut/read_lutfile.h"
#include "lut/text_file.h"
#include "lut/write_lutfile.h"

#include <string_view>

using tintwell::LineSource;
using tintwell::scan;
using tintwell::startsWith;
using tintwell::Triple;
using tintwell::Walk;

bool Read_LUTFile::Read_1dLut(QString path, bool probe) {
    constexpr int entryCount = 256;

    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrder(true, true);
    setSize1D(entryCount);
    if (probe) {
        return true;
    }
    if (!allocate1D()) {
        return false;
    }
    double index = 0;
    Triple<double> sample;
    const auto takeEntry = [&index](std::string_view line, Triple<double>& values) {
        return !startsWith(line, "#") && !startsWith(line, "Index") &&
               scan(line, index, values.r, values.g, values.b) > 0;
    };
    return fillCurve(*this, lines, sample, takeEntry) != Walk::Short;
}

/// Writes tables of any size, although only the first 256 entries will be read again.
bool Write_LUTFile::Write_1dLut(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::TextFile::forCurve(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrder(true, true);
    out << "Index\tRed\tGreen\tBlue\n";
    for (int n = 0; n < lut.size1D; ++n) {
        out << n << '\t';
        emitCell1D(out, lut.data1D[n], dataOrder, outputScale, "\t");
        out << '\n';
    }
    return true;
}

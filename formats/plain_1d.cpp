// The plain 1D format, of 256 entries:
//
//     Index	Red	Green	Blue
//     0	0.000	0.000	0.000
//     1	0.004	0.004	0.003
//     ...
//
// Entries are in the order of their lines; the index is ignored.

#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/catalogue.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <string_view>

using tintwell::FillResult;
using tintwell::LineSource;
using tintwell::SampleLine;
using tintwell::scan;
using tintwell::startsWith;
using tintwell::Triple;

bool Read_LUTFile::Read_1dLut(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Plain1D);
    setSize1D(formatOf(tintwell::FormatCode::Plain1D).fixedSize);
    if (probe) {
        return true;
    }
    if (!allocate1D()) {
        return false;
    }
    double index = -1;
    Triple<double> sample;
    constexpr int numbers = 4;
    tintwell::OddLines outOfOrder;
    const auto parseEntry = [&](std::string_view line, Triple<double>& values) {
        if (startsWith(line, "#") || startsWith(line, "Index")) {
            return SampleLine::PassedOver;
        }
        const double before = index;
        const int found = scan(line, index, values.r, values.g, values.b);
        if (found > 0 && index <= before) {
            outOfOrder.add(lines);
        }
        return tintwell::sampleLine(found, numbers);
    };
    if (fillCurve(*this, lines, sample, parseEntry, numbers) == FillResult::EndedEarly) {
        return false;
    }
    outOfOrder.tell(*this, QStringLiteral("out of order: entries are placed by their lines"));
    passRest(*this, lines, sample, parseEntry);
    return true;
}

/// Writes tables of any size, although readers use only the first 256 entries.
bool Write_LUTFile::Write_1dLut(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor1D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Plain1D);
    out << "Index\tRed\tGreen\tBlue\n";
    for (int n = 0; n < lut.size1D; ++n) {
        out << n << '\t';
        emitCell1D(out, lut.data1D[n], dataOrder, outputScale, "\t");
        out << '\n';
    }
    return true;
}

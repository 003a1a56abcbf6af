// The Spi1d format, 1D:
//
//     Version 1
//     From 0.0 1.0
//     Length 1024
//     Components 3
//     {
//             0 0 0
//             0.000977517 0.000977517 0.000977517
//     ...
//     }
//
// A line may hold one value for all channels, two for red and green, or three.

#include "formats/domain.h"
#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <string_view>

using tintwell::FillResult;
using tintwell::LineSource;
using tintwell::removeAll;
using tintwell::scan;
using tintwell::startsWith;
using tintwell::Triple;

namespace {

/// False if there is no number.
bool parseLength(std::string_view text, Read_LUTFile& lut) {
    int length = 0;
    if (scan(text, length) == 0) {
        return false;
    }
    lut.setSize1D(length);
    return true;
}

/// False for a line that ends the header: the opening brace, or a keyword without its number.
bool parseHeaderLine(std::string_view line, Read_LUTFile& lut, int& components) {
    if (startsWith(line, "From")) {
        return tintwell::scanDomain(removeAll(line, "From"), lut.domainMin1D, lut.domainMax1D);
    }
    if (startsWith(line, "Length")) {
        return parseLength(removeAll(line, "Length"), lut);
    }
    if (startsWith(line, "Components")) {
        return scan(removeAll(line, "Components"), components) > 0;
    }
    return !startsWith(line, "{");
}

bool parseSample(std::string_view line, int components, Triple<double>& sample) {
    switch (components) {
    case 1:
        if (scan(line, sample.r) == 0) {
            return false;
        }
        sample.g = sample.b = sample.r;
        return true;
    case 2:
        return scan(line, sample.r, sample.g) > 0;
    case 3:
        return sample.scan(line);
    default:
        return false;
    }
}

} // namespace

bool Read_LUTFile::Read_Spi1D(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Spi1D);
    int components = 0;
    while (!lines.atEnd() && parseHeaderLine(lines.next(), *this, components)) {
    }
    if (probe || size1D < 1) {
        resetDomainMax1D();
        return hasSize() || tintwell::failUnsized(*this, "a Length line");
    }
    if (!tintwell::allocateCurve(*this, lines, tintwell::Completeness::Partial)) {
        resetDomainMax1D();
        return false;
    }
    if (components <= 0) { // no samples to read, which is not an error
        resetDomainMax1D();
        return true;
    }
    Triple<double> sample;
    const FillResult entries =
        fillCurve(*this, lines, sample, [components](auto line, auto& values) {
            return parseSample(line, components, values);
        });
    resetDomainMax1D();
    return entries != FillResult::EndedEarly;
}

bool Write_LUTFile::Write_Spi1D(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor1D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Spi1D);
    out << "Version 1\n"
        << "From 0.0 " << outputScale << '\n'
        << "Length " << lut.size1D << '\n'
        << "Components 3\n"
        << "{\n";
    for (int n = 0; n < lut.size1D; ++n) {
        out << "        ";
        emitCell1D(out, lut.data1D[n], dataOrder, outputScale, " ");
        out << '\n';
    }
    out << "}\n";
    return true;
}

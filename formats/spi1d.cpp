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
using tintwell::SampleLine;
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

/// False if there is no number.
bool parseRange(const LineSource& lines, Read_LUTFile& lut) {
    const int found =
        tintwell::scanDomain(removeAll(lines.current(), "From"), lut.domainMin1D, lut.domainMax1D);
    if (found == 1) {
        remarkOnLine(lut, lines, QStringLiteral("expected 2 numbers: the second is taken as 1"));
    }
    return found > 0;
}

/// False for a line that ends the header: the opening brace, or a keyword without its number.
bool parseHeaderLine(std::string_view line, const LineSource& lines, Read_LUTFile& lut,
                     int& components, tintwell::OddLines& unknown) {
    if (startsWith(line, "From")) {
        return parseRange(lines, lut);
    }
    if (startsWith(line, "Length")) {
        return parseLength(removeAll(line, "Length"), lut);
    }
    if (startsWith(line, "Components")) {
        return scan(removeAll(line, "Components"), components) > 0;
    }
    if (startsWith(line, "{")) {
        return false;
    }
    if (!startsWith(line, "Version")) {
        unknown.addUnlessComment(line, lines);
    }
    return true;
}

/// Sets the number of components; without it there are no samples to read.
void readHeader(LineSource& lines, Read_LUTFile& lut, int& components) {
    tintwell::OddLines unknown;
    while (!lines.atEnd() && parseHeaderLine(lines.next(), lines, lut, components, unknown)) {
    }
    unknown.tell(lut, QStringLiteral("which is not a keyword of the header"));
    if (components == 2) {
        lut.remarks += QStringLiteral("with two components blue is 0");
    }
}

SampleLine parseSample(std::string_view line, int components, Triple<double>& sample) {
    if (line == "}") {
        return SampleLine::PassedOver;
    }
    switch (components) {
    case 1:
        if (scan(line, sample.r) == 0) {
            return SampleLine::None;
        }
        sample.g = sample.b = sample.r;
        return SampleLine::Whole;
    case 2:
        return tintwell::sampleLine(scan(line, sample.r, sample.g), 2);
    case 3:
        return tintwell::sampleLine(sample.scan(line), 3);
    default:
        return SampleLine::None;
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
    readHeader(lines, *this, components);
    if (probe || size1D < 1) {
        resetDomainMax1D();
        return hasSize() || tintwell::failUnsized(*this, lines, "a Length line");
    }
    if (!tintwell::allocateCurve(*this, lines, tintwell::Completeness::Partial)) {
        resetDomainMax1D();
        return false;
    }
    if (components <= 0) { // no samples to read, which is not an error
        resetDomainMax1D();
        remarkUnfilled(QStringLiteral("no Components line"));
        return true;
    }
    if (components == 1) {
        tellNumbersOnce1D(3);
    }
    Triple<double> sample;
    const auto scanSample = [components](std::string_view line, Triple<double>& values) {
        return parseSample(line, components, values);
    };
    const FillResult entries = fillCurve(*this, lines, sample, scanSample, components);
    resetDomainMax1D();
    passRest(*this, lines, sample, scanSample);
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

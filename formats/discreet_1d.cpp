// The Discreet format, 1D:
//
//     # Input Samples: 1024
//     LUT: 3 1024
//          0
//          1
//     ...
//
// First all values of the first channel, then the second, then the third. The file states no bit
// depth: its largest value is full scale.

#include "formats/domain.h"
#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/trace.h"
#include "lut/write_lutfile.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

using tintwell::LineSource;
using tintwell::scan;
using tintwell::startsWith;
using tintwell::walkEntries;

namespace {

/// Empty lines and comments; comments are traced.
bool isPassedOver(std::string_view line) {
    if (line.empty()) {
        return true;
    }
    if (line.front() != '#') {
        return false;
    }
    tintwell::traceLine("#:", line);
    return true;
}

/// Reads up to the "LUT:" line. No size if that is missing or does not state three channels.
std::optional<int> readSize(LineSource& lines) {
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (isPassedOver(line) || !startsWith(line, "LUT:")) {
            continue;
        }
        int channels = 0;
        int count = 0;
        scan(tintwell::removeAll(line, "LUT:"), channels, count);
        return channels == 3 ? std::make_optional(count) : std::nullopt;
    }
    return std::nullopt;
}

/// White space does not end a number: "1 023" is 1023.
bool parseValue(std::string_view line, double& value) {
    const bool isPlain =
        std::all_of(line.begin(), line.end(), [](char c) { return c > ' ' && c <= '~'; });
    return (isPlain ? scan(line, value) : scan(tintwell::withoutBlanks(line), value)) > 0;
}

/// Fills the table, one channel at a time, with unscaled values. Returns the largest.
double readValues(LineSource& lines, Read_LUTFile& lut) {
    float* const* const table = lut.data1D;
    const int size = lut.size1D;
    double largest = 0;
    const auto place = [&](std::string_view line, int n) {
        double value = 0;
        if (isPassedOver(line) || !parseValue(line, value)) {
            return false;
        }
        table[n % size][n / size] = static_cast<float>(value);
        largest = std::max(largest, value);
        return true;
    };
    const int wanted = 3 * size;
    std::int64_t found = wanted;
    walkEntries(lines, wanted, place, &found);
    tintwell::warnShort(lut, found, wanted);
    return largest;
}

} // namespace

bool Read_LUTFile::Read_1dLut_Discreet(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Discreet1D);
    const std::optional<int> size = readSize(lines);
    if (size) {
        setSize1D(*size);
    }
    if (probe || !size || size1D < 1) {
        resetDomainMax1D();
        return hasSize() || tintwell::failUnsized(*this, "a \"LUT: 3\" line");
    }
    if (!tintwell::allocateCurve(*this, lines, tintwell::Completeness::Partial)) {
        return false;
    }
    tintwell::setDomain(domainMax1D, static_cast<float>(readValues(lines, *this)));
    for (int n = 0; n < size1D; ++n) {
        const float* const raw = data1D[n];
        White1D(n, raw[0], raw[1], raw[2], domainMin1D, domainMax1D);
    }
    resetDomainMax1D();
    return true;
}

bool Write_LUTFile::Write_1dLut_Discreet(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor1D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Discreet1D);
    out << "# Discreet LUT file\n"
        << "#      Channels: 3\n"
        << "# Input Samples: " << lut.size1D << '\n'
        << "#   Ouput Scale: " << outputScale << '\n' // spelled so in the format
        << "#\n#Exported from norvane\n#\n\n"
        << "LUT: 3 " << lut.size1D << '\n';
    for (int channel = 0; channel < 3; ++channel) {
        for (int n = 0; n < lut.size1D; ++n) {
            out << "     ";
            emitValue(out, lut.data1D[n][dataOrder ? channel : 2 - channel], outputScale, "\n");
        }
    }
    return true;
}

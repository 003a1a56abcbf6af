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
#include <cmath>
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

/// Files of half floats state their depth after the length: "LUT: 3 65536 16f".
bool statesHalfFloats(std::string_view line) {
    tintwell::WordReader words(line);
    std::string_view last;
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        last = word;
    }
    return last == "16f";
}

/// Reads up to the "LUT:" line. No size if that is missing or does not state three channels.
std::optional<int> readSize(LineSource& lines, Read_LUTFile& lut) {
    tintwell::OddLines unknown;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (isPassedOver(line)) {
            continue;
        }
        if (!startsWith(line, "LUT:")) {
            unknown.add(lines);
            continue;
        }
        unknown.tell(lut, QStringLiteral("which comes before the size and is ignored"));
        int channels = 0;
        int count = 0;
        scan(tintwell::removeAll(line, "LUT:"), channels, count);
        if (statesHalfFloats(line)) {
            remarkOnLine(lut, lines,
                         QStringLiteral("half floats, which are taken for evenly spaced numbers"));
        }
        return channels == 3 ? std::make_optional(count) : std::nullopt;
    }
    return std::nullopt;
}

bool isPlain(std::string_view line) {
    return std::all_of(line.begin(), line.end(), [](char c) { return c > ' ' && c <= '~'; });
}

/// White space does not end a number: "1 023" is 1023.
bool parseValue(std::string_view line, double& value) {
    return (isPlain(line) ? scan(line, value) : scan(tintwell::withoutBlanks(line), value)) > 0;
}

/// Collects what is odd in the lines of values.
class OddValues {
public:
    explicit OddValues(const LineSource& lines) : m_lines(lines) {}

    void add(std::string_view line, bool isValue) {
        if (!isValue) {
            m_unknown.add(m_lines);
        } else if (tintwell::contains(line, ",")) {
            m_comma.add(m_lines);
        } else if (!isPlain(line)) {
            m_spaced.add(m_lines);
        }
    }
    void addSurplus() { m_surplus.add(m_lines); }

    void tell(Read_LUTFile& lut) const {
        m_unknown.tell(lut, QStringLiteral("which is neither a sample nor a keyword"));
        m_spaced.tell(lut, QStringLiteral("which is read as one number"));
        m_comma.tell(lut, QStringLiteral("which is read up to the comma"));
        m_surplus.tell(lut, QStringLiteral("which is not read: the table is full"));
    }

private:
    const LineSource& m_lines;
    tintwell::OddLines m_unknown;
    tintwell::OddLines m_spaced;
    tintwell::OddLines m_comma;
    tintwell::OddLines m_surplus;
};

/// Whether a value is the largest code of a bit depth, or the largest real number.
bool isFullScale(double value) {
    constexpr int mostBits = 16;
    for (int bits = 1; bits <= mostBits; ++bits) {
        if (value == std::ldexp(1.0, bits) - 1.0) {
            return true;
        }
    }
    return false;
}

/// Fills the table, one channel at a time, with unscaled values. Returns the largest.
double readValues(LineSource& lines, Read_LUTFile& lut) {
    float* const* const table = lut.data1D;
    const int size = lut.size1D;
    double largest = 0;
    OddValues odd(lines);
    const auto isValue = [&](std::string_view line, double& value) {
        if (isPassedOver(line)) {
            return false;
        }
        const bool parsed = parseValue(line, value);
        odd.add(line, parsed);
        return parsed;
    };
    const auto place = [&](std::string_view line, int n) {
        double value = 0;
        if (!isValue(line, value)) {
            return false;
        }
        table[n % size][n / size] = static_cast<float>(value);
        largest = std::max(largest, value);
        return true;
    };
    const int wanted = 3 * size;
    std::int64_t found = wanted;
    walkEntries(lines, wanted, place, &found);
    for (double value = 0; !lines.atEnd();) {
        if (isValue(lines.next(), value)) {
            odd.addSurplus();
        }
    }
    odd.tell(lut);
    lut.remarkMissing(found, wanted);
    if (largest > 0 && !isFullScale(largest)) {
        lut.remarks += QStringLiteral("the largest value, %1, is read as 1").arg(largest);
    }
    return largest;
}

} // namespace

bool Read_LUTFile::Read_1dLut_Discreet(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Discreet1D);
    const std::optional<int> size = readSize(lines, *this);
    if (size) {
        setSize1D(*size);
    }
    if (probe || !size || size1D < 1) {
        resetDomainMax1D();
        return hasSize() || tintwell::failUnsized(*this, lines, "a \"LUT: 3\" line");
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

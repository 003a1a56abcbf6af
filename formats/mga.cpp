// The Pandora format, 3D, of .mga and .m3d files:
//
//     #HEADER
//     #END
//     channel 3d
//     in 8
//     out 4096
//     format lut
//     values red green blue
//     0 0 0 0
//     1 0 0 4095
//     ...
//
// "in" states the number of samples, "out" the number of codes, or 1 for real numbers. Samples are
// k fastest, each after its running number, which is ignored.

#include "formats/domain.h"
#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/trace.h"
#include "lut/write_lutfile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

using tintwell::LineSource;
using tintwell::removeAll;
using tintwell::SampleLine;
using tintwell::scan;
using tintwell::setDomain;
using tintwell::startsWith;
using tintwell::traceLine;
using tintwell::Triple;
using tintwell::withoutBlanks;

namespace {

bool isThreeD(std::string_view channelLine) {
    return withoutBlanks(removeAll(channelLine, "channel")) == "3d";
}

bool parseCount(std::string_view line, const LineSource& lines, Read_LUTFile& lut) {
    std::int64_t count = 0;
    if (scan(withoutBlanks(removeAll(line, "in")), count) == 0) {
        return false;
    }
    lut.setSize3D(tintwell::latticeSizeOf(count));
    const std::int64_t n = lut.size3D;
    if (n > 0 && n <= Read_LUTFile::MaxSize3D && n * n * n != count) {
        remarkOnLine(lut, lines,
                     QStringLiteral("which is not the cube of a size: %1 is taken").arg(n));
    }
    return true;
}

/// Whether the columns of a "values" line are those that are read, by their first letters.
bool isInOrder(std::string_view line) {
    tintwell::WordReader words(line);
    words.next();
    for (const char letter : {'r', 'g', 'b'}) {
        const std::string_view word = words.next();
        constexpr char lowerCase = 0x20;
        if (!word.empty() && (word.front() | lowerCase) != letter) {
            return false;
        }
    }
    return true;
}

bool parseCodes(std::string_view line, Read_LUTFile& lut) {
    std::int64_t codes = 0;
    if (scan(removeAll(line, "out"), codes) == 0) {
        return false;
    }
    setDomain(lut.domainMin3D, 0);
    setDomain(lut.domainMax3D, static_cast<float>(codes >= 2 ? codes - 1 : codes));
    return true;
}

/// Reads up to and including the "values" line. False if the format does not accept the header.
bool readHeader(LineSource& lines, Read_LUTFile& lut) {
    tintwell::OddLines unknown;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (line.empty()) {
            continue;
        }
        if (line.front() == '#') {
            traceLine("#:", line);
        } else if (startsWith(line, "channel")) {
            if (!isThreeD(line)) {
                return failAtLine(lut, lines, QStringLiteral("\"channel 3d\""));
            }
        } else if (startsWith(line, "format")) {
            traceLine("format:", line);
        } else if (startsWith(line, "values")) {
            if (!isInOrder(line)) {
                remarkOnLine(lut, lines,
                             QStringLiteral("but columns are taken as red, green, blue"));
            }
            break;
        } else if (startsWith(line, "in")) {
            if (!parseCount(line, lines, lut)) {
                return failAtLine(lut, lines, QStringLiteral("the number of samples"));
            }
        } else if (startsWith(line, "out")) {
            if (!parseCodes(line, lut)) {
                return failAtLine(lut, lines, QStringLiteral("the number of codes"));
            }
        } else {
            traceLine("unkown:", line); // spelled so on purpose
            unknown.add(lines);
        }
    }
    unknown.tell(lut, QStringLiteral("which is not a keyword of the header"));
    return true;
}

/// Wraps around for sizes larger than any table.
std::int64_t cubed(int size) {
    const auto n = static_cast<std::uint64_t>(size);
    return static_cast<std::int64_t>(n * n * n);
}

/// The number of codes from 0 to \a scale, which may be the largest 64-bit number.
std::string codesOf(std::int64_t scale) {
    return scale < 0 ? std::to_string(scale + 1)
                     : std::to_string(static_cast<std::uint64_t>(scale) + 1);
}

/// Scans samples, whose running numbers place nothing, and collects those that are out of order.
class NumberedSamples {
public:
    static constexpr int numbers = 4; ///< on a line

    explicit NumberedSamples(const LineSource& lines) : m_lines(lines) {}

    SampleLine scan(std::string_view line, Triple<double>& sample) {
        const int found = tintwell::scanWords(line, m_number, sample.r, sample.g, sample.b);
        if (found == 0) {
            return SampleLine::None;
        }
        if (m_expected && m_number != *m_expected) {
            m_outOfOrder.add(m_lines);
        }
        m_expected = m_number + 1;
        return tintwell::sampleLine(found, numbers);
    }

    void tell(Read_LUTFile& lut) const {
        m_outOfOrder.tell(lut, QStringLiteral("out of order: samples are placed by their lines"));
    }

private:
    const LineSource& m_lines;
    double m_number = 0;
    std::optional<double> m_expected; ///< of the first sample: any
    tintwell::OddLines m_outOfOrder;
};

} // namespace

bool Read_LUTFile::Read_Mga(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Mga);
    if (!readHeader(lines, *this)) {
        return false;
    }
    if (probe || size3D < 1) {
        resetDomainMax3D();
        return hasSize() || tintwell::failUnsized(*this, lines, "an \"in\" line");
    }
    NumberedSamples samples(lines);
    const auto scanSample = [&](std::string_view line, Triple<double>& sample) {
        return samples.scan(line, sample);
    };
    const bool filled =
        tintwell::readLattice(*this, lines, Triple<double>(), scanSample, NumberedSamples::numbers);
    samples.tell(*this);
    return filled;
}

bool Write_LUTFile::Write_Mga(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor3D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    out << "#HEADER\n"
        << "#type: 3D cube file\n"
        << "#format: 1.00\n"
        << "#created:\n"
        << "#owner: norvane\n"
        << "#END\n\n"
        << "channel\t3d\n"
        << "in " << cubed(lut.size3D) << '\n'
        << (outputScale == 1 ? "out\t1" : "out " + codesOf(outputScale)) << "\n\n";
    out << "format lut\n\n"
        << "values\tred\tgreen\tblue\n";

    applyDefaultOrders(tintwell::FormatCode::Mga);
    std::int64_t number = 0;
    tintwell::emitLattice(out, *this, lut, outputScale, "\t",
                          [&](int, int, int) { out << number++ << '\t'; });
    return true;
}

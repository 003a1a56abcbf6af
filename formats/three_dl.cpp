// The 3dl format, 3D:
//
//     3DMESH
//     Mesh 1 10
//     gamma 1.0
//     0 1023
//     0 0 0
//     0 0 1023
//     ...
//
// "Mesh 1 10" declares 2^1 + 1 points per axis and codes of ten bits. Without it, the length of the
// shaper line, which lists the input positions of the lattice, gives the size (never three: a line
// of three words is a sample), and the largest sample gives the scale. Samples are k fastest.

#include "formats/domain.h"
#include "formats/fill_table.h"
#include "formats/text/decimal.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/trace.h"
#include "lut/words.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>
#include <vector>

using tintwell::BodyLines;
using tintwell::LineSource;
using tintwell::removeAll;
using tintwell::SampleLine;
using tintwell::scan;
using tintwell::setDomain;
using tintwell::startsWith;
using tintwell::Triple;
using tintwell::wordCount;

namespace {

/// Returns how many numbers a line of three words begins with; 0 for any other line.
int scanSample(std::string_view line, Triple<double>& sample) {
    return tintwell::scanWords(line, sample.r, sample.g, sample.b);
}

/// For the second pass: the first has told of the odd lines.
SampleLine rescanSample(std::string_view line, Triple<double>& sample) {
    return scanSample(line, sample) > 0 ? SampleLine::Whole : SampleLine::PassedOver;
}

Triple<float> narrowed(const Triple<double>& sample) {
    return {static_cast<float>(sample.r), static_cast<float>(sample.g),
            static_cast<float>(sample.b)};
}

/// Moves past the next line if it is three integers of at most seven digits separated by single
/// blanks, as most samples are. Otherwise does not move, and returns false.
bool takeCodes(LineSource& lines, std::array<std::uint32_t, 3>& codes) {
    static constexpr std::array<char, 3> ends = {' ', ' ', '\n'};
    constexpr unsigned mostDigits = 7;
    const char* at = lines.position();
    for (std::size_t n = 0; n < codes.size(); ++n) {
        const unsigned digits = tintwell::evaluateDigits(at, codes[n]);
        at += digits;
        if (digits == 0 || digits > mostDigits || *at++ != ends[n]) {
            return false;
        }
    }
    lines.moveTo(at);
    return true;
}

/// Collects the samples in the pass that looks for size and scale, both of which may come after
/// them, so that the text need not be scanned a second time.
class SampleCollector {
public:
    /// Collects a line and, while the scale is not known, takes it into account for the scale.
    /// Returns how many numbers it has; 0, with nothing changed, for a line that is not a sample.
    int collect(std::string_view line, bool scaleIsKnown) {
        const int count = scanSample(line, m_current);
        if (count == 0) {
            return 0;
        }
        m_startsPartial |= m_samples.empty() && count < 3;
        if (hasRoom()) {
            m_samples.push_back(narrowed(m_current));
        }
        if (!scaleIsKnown) {
            learn(line, count);
        }
        return count;
    }

    /// Collects a run of samples that are three codes each, without splitting them into words.
    void collectCodes(LineSource& lines, bool scaleIsKnown) {
        const std::size_t before = m_samples.size();
        std::array<std::uint32_t, 3> codes{};
        std::uint32_t largestCode = 0;
        while (hasRoom() && takeCodes(lines, codes)) {
            m_samples.push_back({static_cast<float>(codes[0]), static_cast<float>(codes[1]),
                                 static_cast<float>(codes[2])});
            for (const std::uint32_t code : codes) {
                largestCode = std::max(largestCode, code);
            }
        }
        if (m_samples.size() == before) {
            return;
        }
        const Triple<float>& last = m_samples.back();
        m_current = {last.r, last.g, last.b};
        if (!scaleIsKnown) {
            m_lastUnscaled = m_current;
            raiseLargest(largestCode);
        }
    }

    /// Reserves the memory of a lattice in one piece, unless the file is too short for it.
    void reserve(int size, const LineSource& lines) {
        const std::int64_t n = size <= Read_LUTFile::MaxSize3D ? std::max(size, 0) : 0;
        if (lines.canHold(n * n * n)) {
            m_samples.reserve(static_cast<std::size_t>(n * n * n));
        }
    }

    const std::vector<Triple<float>>& samples() const { return m_samples; }
    /// The largest number before the scale was known.
    double largest() const { return m_largest; }
    /// Whether the first sample is incomplete. It takes the rest from the last sample of this pass,
    /// so all samples must be scanned again.
    bool needsSecondPass() const { return m_startsPartial; }
    /// The start of a second pass: the last sample before the scale was known.
    const Triple<double>& lastUnscaled() const { return m_lastUnscaled; }

private:
    /// The largest lattice has this many samples.
    bool hasRoom() const {
        constexpr std::size_t n = Read_LUTFile::MaxSize3D;
        return m_samples.size() < n * n * n;
    }

    void learn(std::string_view line, int count) {
        if (count == 3) {
            m_lastUnscaled = m_current;
        } else {
            scanSample(line, m_lastUnscaled);
        }
        for (const double number : {m_lastUnscaled.r, m_lastUnscaled.g, m_lastUnscaled.b}) {
            raiseLargest(number);
        }
    }

    /// NaN is kept only until the next number.
    void raiseLargest(double number) { m_largest = std::max(number, m_largest); }

    std::vector<Triple<float>> m_samples;
    Triple<double> m_current;
    Triple<double> m_lastUnscaled;
    double m_largest = 0;
    bool m_startsPartial = false;
};

/// What the first pass finds besides the fields of the container.
struct Header {
    int inBits = 0; // a later Mesh line may leave either unchanged
    int outBits = 0;
    double largestPosition = 0;
    SampleCollector samples;
    BodyLines body;
    tintwell::OddLines texts; ///< taken for shapers

    explicit Header(const LineSource& lines) : body(lines, 3) {}
};

int latticeSize(int inBits) {
    constexpr int largest = std::numeric_limits<int>::max();
    const double points = std::ldexp(1.0, inBits) + 1.0;
    return points < largest ? static_cast<int>(points) : largest;
}

bool parseMesh(std::string_view line, Read_LUTFile& lut, Header& header) {
    if (scan(removeAll(line, "Mesh "), header.inBits, header.outBits) == 0) {
        return false;
    }
    lut.setSize3D(latticeSize(header.inBits));
    setDomain(lut.domainMin3D, 0);
    setDomain(lut.domainMax3D, static_cast<float>(std::ldexp(1.0, header.outBits) - 1.0));
    return true;
}

bool parseGamma(std::string_view line, const LineSource& lines, Read_LUTFile& lut) {
    const bool found = scan(removeAll(line, "gamma "), lut.gamma) > 0;
    if (found && lut.gamma != 1) {
        remarkOnLine(lut, lines, QStringLiteral("which is not applied"));
    }
    return found;
}

/// Whether the positions of a shaper, whose last is 1, are even, but for the rounding of codes.
bool isEven(const double* positions, std::size_t count, double largest) {
    const double tolerance = largest > 1 ? 1 / largest : 1e-3;
    for (std::size_t n = 0; n < count; ++n) {
        const double even = static_cast<double>(n) / static_cast<double>(count - 1);
        if (!(std::fabs(positions[n] - even) <= tolerance)) {
            return false;
        }
    }
    return true;
}

/// Positions are relative to the largest of all shaper lines so far.
void parseShaper(std::string_view line, const LineSource& lines, Read_LUTFile& lut,
                 Header& header) {
    double first = 0;
    if (scan(line, first) == 0) {
        header.texts.add(lines);
    }
    tintwell::WordReader words(line);
    std::size_t count = 0;
    for (std::string_view word = words.next(); !word.empty(); word = words.next(), ++count) {
        const double position = tintwell::toDouble(word);
        header.largestPosition = std::max(header.largestPosition, position);
        if (count < std::size(lut.shaperIn)) {
            lut.shaperIn[count] = position;
        }
    }
    const std::size_t kept = std::min(count, std::size(lut.shaperIn));
    std::for_each_n(lut.shaperIn, kept,
                    [&](double& position) { position /= header.largestPosition; });
    if (kept == count && scan(line, first) > 0 &&
        !isEven(lut.shaperIn, kept, header.largestPosition)) {
        remarkOnLine(lut, lines, QStringLiteral("a shaper of uneven steps, which is not applied"));
    }
    if (lut.size3D == 0) {
        lut.setSize3D(static_cast<int>(count));
    }
}

/// Whether a Mesh line has stated the scale.
bool isScaleKnown(const Read_LUTFile& lut) {
    return !(lut.domainMax3D[0] < 1.1F);
}

/// Classifies every line. False for a keyword without its number.
bool readHeader(LineSource& lines, bool probe, Read_LUTFile& lut, Header& header) {
    SampleCollector& samples = header.samples;
    while (!lines.atEnd()) {
        if (!probe) {
            if (samples.samples().empty()) {
                samples.reserve(lut.size3D, lines); // the size is usually known by now
            }
            samples.collectCodes(lines, isScaleKnown(lut));
        }
        const std::string_view line = lines.next();
        if (line.empty() || line == "3DMESH") {
            continue;
        }
        if (line.front() == '#') {
            tintwell::traceLine("#:", line);
        } else if (startsWith(line, "Mesh")) {
            if (!parseMesh(line, lut, header)) {
                return failAtLine(lut, lines, QStringLiteral("the bits of the mesh"));
            }
        } else if (startsWith(line, "gamma")) {
            if (!parseGamma(line, lines, lut)) {
                return failAtLine(lut, lines, QStringLiteral("a number"));
            }
        } else if (const int found = probe ? 0 : samples.collect(line, isScaleKnown(lut));
                   found > 0) {
            header.body.isSample(tintwell::sampleLine(found, 3));
        } else if (const std::size_t count = wordCount(line); count > 1 && count != 3) {
            parseShaper(line, lines, lut, header);
        } else if (!startsWith(line, "LUT")) { // "LUT8" states the depth of the output
            header.body.isSample(SampleLine::None);
        }
    }
    if (!probe) {
        header.texts.tell(lut, QStringLiteral("which is taken for a shaper"));
        header.body.tell(lut);
    }
    return true;
}

/// The full scale of the smallest bit depth, 2 to 16, that covers the largest sample; real numbers
/// up to 1 are treated as codes of two bits.
float inferredScale(double largestSample) {
    int scale = 3;
    while (scale < 65535 && scale < std::trunc(largestSample)) {
        scale = 2 * scale + 1;
    }
    return static_cast<float>(scale);
}

void inferScale(Read_LUTFile& lut, double largestSample) {
    const float scale = inferredScale(largestSample);
    setDomain(lut.domainMax3D, scale);
    if (largestSample < static_cast<double>(scale)) {
        lut.remarks += QStringLiteral("the scale 0 to %1 is inferred from the largest sample, %2")
                           .arg(tintwell::formatted(scale))
                           .arg(largestSample);
    }
}

/// Only the last sample may be missing.
bool fill(Read_LUTFile& lut, const LineSource& lines, const std::vector<Triple<float>>& samples) {
    auto sample = samples.begin();
    tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        if (sample == samples.end()) {
            return false;
        }
        tintwell::store3D(lut, i, j, k, *sample++);
        return true;
    });
    const std::int64_t n = lut.size3D;
    const auto found = static_cast<std::int64_t>(samples.size());
    lut.remarkMissing(found, n * n * n);
    if (found > n * n * n) {
        lut.remarks += QStringLiteral("found %1, expected %2; the rest is not read")
                           .arg(tintwell::counted(found, "sample"))
                           .arg(n * n * n);
    }
    return found >= n * n * n - 1 || tintwell::failShort(lut, lines, found, n * n * n);
}

} // namespace

bool Read_LUTFile::Read_3dl(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::ThreeDl);

    Header header(lines);
    if (!readHeader(lines, probe, *this, header)) {
        return false;
    }
    const SampleCollector& samples = header.samples;
    if (samples.largest() > 0.1 && !isScaleKnown(*this)) {
        inferScale(*this, samples.largest());
    }
    if (probe || size3D < 1) {
        resetDomainMax3D();
        return hasSize() || tintwell::failUnsized(*this, lines, "a Mesh line or a shaper line");
    }
    if (samples.needsSecondPass()) {
        lines.rewind();
        return tintwell::readLattice(*this, lines, samples.lastUnscaled(), rescanSample);
    }
    const bool filled = allocateLattice(*this, lines, tintwell::Completeness::Complete) &&
                        fill(*this, lines, samples.samples());
    resetDomainMax3D();
    return filled;
}

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
// "Mesh 1 10" declares 2^1 + 1 points per axis and codes of ten bits. Without it the shaper line,
// of the input positions of the lattice, tells the size by its length (never three: a line of three
// words is a sample), and the largest sample tells the scale. Samples come k fastest.

#include "formats/tables.h"
#include "formats/text/words.h"
#include "lut/read_lutfile.h"
#include "lut/trace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>
#include <vector>

using tintwell::LineSource;
using tintwell::scan;
using tintwell::setDomain;
using tintwell::startsWith;
using tintwell::Triple;
using tintwell::without;
using tintwell::wordCount;

namespace {

/// What the first pass gathers beyond the fields of the container.
struct Header {
    int inBits = 0; // a later Mesh line may leave either as it is
    int outBits = 0;
    double largestPosition = 0;
    double largestSample = 0;
    Triple<double> sample; // the last before the scale was known: a second pass begins with it

    /// Every sample, as a second pass would find it, which is why there seldom is one.
    std::vector<Triple<float>> samples;
    Triple<double> current;
    bool startsPartial = false; ///< a second pass is needed: its first sample lacks numbers
};

int latticeSize(int inBits) {
    constexpr int largest = std::numeric_limits<int>::max();
    const double points = std::ldexp(1.0, inBits) + 1.0;
    return points < largest ? static_cast<int>(points) : largest;
}

bool takeMesh(std::string_view line, Read_LUTFile& lut, Header& header) {
    if (scan(without(line, "Mesh "), header.inBits, header.outBits) == 0) {
        return false;
    }
    lut.setSize3D(latticeSize(header.inBits));
    setDomain(lut.domainMin3D, 0);
    setDomain(lut.domainMax3D, static_cast<float>(std::ldexp(1.0, header.outBits) - 1.0));
    return true;
}

bool takeGamma(std::string_view line, Read_LUTFile& lut) {
    return scan(without(line, "gamma "), lut.gamma) > 0;
}

/// Positions are relative to the largest of all shaper lines so far.
void takeShaper(std::string_view line, Read_LUTFile& lut, Header& header) {
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
    if (lut.size3D == 0) {
        lut.setSize3D(static_cast<int>(count));
    }
}

bool lacksScale(const Read_LUTFile& lut) {
    return lut.domainMax3D[0] < 1.1F;
}

/// Returns how many numbers a line of three words begins with; 0 for any other line.
int scanSample(std::string_view line, Triple<double>& sample) {
    return tintwell::scanWords(line, sample.r, sample.g, sample.b);
}

/// False for a line that is no sample.
bool takeSample(std::string_view line, Triple<double>& sample) {
    return scanSample(line, sample) > 0;
}

/// A number takes the place of a NaN.
void raise(double& largest, double number) {
    largest = std::max(number, largest);
}

/// Whether another sample is to be kept: the largest lattice has no more.
bool hasRoom(const Header& header) {
    constexpr std::size_t n = Read_LUTFile::MaxSize3D;
    return header.samples.size() < n * n * n;
}

/// Keeps a sample, and learns from it while the scale is not known. False as takeSample() has it.
bool keepSample(std::string_view line, bool scaleIsKnown, Header& header) {
    const int count = scanSample(line, header.current);
    if (count == 0) {
        return false;
    }
    header.startsPartial |= header.samples.empty() && count < 3;
    if (hasRoom(header)) {
        header.samples.push_back({static_cast<float>(header.current.r),
                                  static_cast<float>(header.current.g),
                                  static_cast<float>(header.current.b)});
    }
    if (!scaleIsKnown) {
        if (count == 3) {
            header.sample = header.current;
        } else {
            scanSample(line, header.sample);
        }
        for (const double number : {header.sample.r, header.sample.g, header.sample.b}) {
            raise(header.largestSample, number);
        }
    }
    return true;
}

/// Asks for the memory in one piece where the size is known by then, as it mostly is.
void makeRoom(const Read_LUTFile& lut, const LineSource& lines, Header& header) {
    const std::int64_t n = lut.size3D <= Read_LUTFile::MaxSize3D ? std::max(lut.size3D, 0) : 0;
    if (lines.canHold(n * n * n)) {
        header.samples.reserve(static_cast<std::size_t>(n * n * n));
    }
}

/// Keeps a run of the most common lines, which are not looked at word by word.
void keepCodes(const Read_LUTFile& lut, LineSource& lines, Header& header) {
    const std::size_t before = header.samples.size();
    if (before == 0) {
        makeRoom(lut, lines, header);
    }
    std::array<std::uint32_t, 3> codes{};
    std::uint32_t largest = 0;
    while (hasRoom(header) && lines.takeCodes(codes)) {
        header.samples.push_back({static_cast<float>(codes[0]), static_cast<float>(codes[1]),
                                  static_cast<float>(codes[2])});
        for (const std::uint32_t code : codes) {
            largest = std::max(largest, code);
        }
    }
    if (header.samples.size() == before) {
        return;
    }
    const Triple<float>& last = header.samples.back();
    header.current = {last.r, last.g, last.b};
    if (lacksScale(lut)) {
        header.sample = header.current;
        raise(header.largestSample, largest);
    }
}

/// Classifies every line. False for a keyword without its number.
bool readHeader(LineSource& lines, bool probe, Read_LUTFile& lut, Header& header) {
    while (!lines.atEnd()) {
        if (!probe) {
            keepCodes(lut, lines, header);
        }
        const std::string_view line = lines.next();
        if (line.empty() || line == "3DMESH") {
            continue;
        }
        if (line.front() == '#') {
            tintwell::traceLine("#:", line);
        } else if (startsWith(line, "Mesh")) {
            if (!takeMesh(line, lut, header)) {
                return failAtLine(lut, lines, QStringLiteral("the bits of the mesh"));
            }
        } else if (startsWith(line, "gamma")) {
            if (!takeGamma(line, lut)) {
                return failAtLine(lut, lines, QStringLiteral("a number"));
            }
        } else if (probe || !keepSample(line, !lacksScale(lut), header)) {
            if (const std::size_t count = wordCount(line); count > 1 && count != 3) {
                takeShaper(line, lut, header);
            }
        }
    }
    return true;
}

/// The full scale of the fewest bits, 2 to 16, that reach the largest sample: real numbers are
/// taken for codes of two bits.
float inferredScale(double largestSample) {
    int scale = 3;
    while (scale < 65535 && scale < std::trunc(largestSample)) {
        scale = 2 * scale + 1;
    }
    return static_cast<float>(scale);
}

/// Only the last sample may lack.
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
    return found >= n * n * n - 1 || tintwell::failShort(lut, lines, found, n * n * n);
}

} // namespace

bool Read_LUTFile::Read_3dl(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrder(true, true);

    Header header;
    if (!readHeader(lines, probe, *this, header)) {
        return false;
    }
    if (header.largestSample > 0.1 && lacksScale(*this)) {
        setDomain(domainMax3D, inferredScale(header.largestSample));
    }
    if (probe || size3D < 1) {
        resetDomainMax3D();
        return hasSize() || tintwell::failUnsized(*this, "a Mesh line or a shaper line");
    }
    if (header.startsPartial) {
        lines.rewind();
        return tintwell::readLattice(*this, lines, header.sample, takeSample);
    }
    const bool filled = allocateLattice(*this, lines, tintwell::Body::Complete) &&
                        fill(*this, lines, header.samples);
    resetDomainMax3D();
    return filled;
}

// The csp format, 3D or 1D:
//
//     CSPLUTV100
//     3D
//
//     BEGIN METADATA
//     "Warm evening"
//     END METADATA
//
//     2
//     0.0 1.0
//     0.0 1.0
//     ...
//
//     2 2 2
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//
// The three shapers (red, green, blue) each consist of a count, a list of inputs and a list of
// outputs. They are not applied: the ends of their outputs are the domain. After them come the size
// (one number for 1D) and the samples, k fastest.

#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"

#include <QStringList>

#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

using tintwell::Completeness;
using tintwell::FillResult;
using tintwell::LineSource;
using tintwell::scan;
using tintwell::scanNumbers;
using tintwell::Triple;
using tintwell::wordCount;
using tintwell::WordReader;

namespace {

/// False if the file ends before the line.
bool passLine(LineSource& lines, std::string_view wanted, Read_LUTFile& lut) {
    tintwell::OddLines skipped;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (line == wanted) {
            skipped.tell(lut, QStringLiteral("which is skipped: metadata was expected"));
            return true;
        }
        skipped.addUnlessComment(line, lines);
    }
    return false;
}

/// The text between the lines that begin and end it. False if one of them is missing.
bool readMetadata(LineSource& lines, Read_LUTFile& lut) {
    if (!passLine(lines, "BEGIN METADATA", lut)) {
        return lut.fail(QStringLiteral("found no BEGIN METADATA line"));
    }
    constexpr int enough = 100;
    while (!lines.atEnd()) {
        if (lines.next() == "END METADATA") {
            lut.title = lut.title.trimmed().left(enough);
            return true;
        }
        if (lut.title.size() < enough) {
            lut.title += lines.currentText(enough) + QLatin1Char(' ');
        }
    }
    return lut.fail(QStringLiteral("found no END METADATA line"));
}

/// The next line whose number of words \a fits(count) accepts; empty at the end. Lines of a single
/// word are the counts of the shapers, which nobody needs.
template <typename Fits>
std::string_view nextOfWords(LineSource& lines, tintwell::OddLines& skipped, Fits&& fits) {
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        const std::size_t count = wordCount(line);
        if (fits(count)) {
            return line;
        }
        if (count > 1) {
            skipped.add(lines);
        }
    }
    return "";
}

/// Whether a shaper maps all of its inputs to themselves.
bool isIdentity(std::string_view inputs, std::string_view outputs) {
    constexpr float tolerance = 1e-5F;
    WordReader in(inputs);
    WordReader out(outputs);
    std::string_view x = in.next();
    std::string_view y = out.next();
    while (!x.empty() && !y.empty()) {
        if (!(std::fabs(tintwell::toFloat(x) - tintwell::toFloat(y)) <= tolerance)) {
            return false;
        }
        x = in.next();
        y = out.next();
    }
    return x.empty() && y.empty();
}

/// Returns whether applying the shaper would change more than the domain made from it does.
bool readShaper(LineSource& lines, float& min, float& max) {
    tintwell::OddLines none; // every line of several words is taken for a list
    const auto isList = [](std::size_t count) { return count >= 2; };
    const std::string_view inputs = nextOfWords(lines, none, isList);
    const std::string_view outputs = nextOfWords(lines, none, isList);
    WordReader words(outputs);
    std::string_view word = words.next();
    if (word.empty()) {
        return false;
    }
    min = tintwell::toFloat(word);
    std::string_view last;
    for (; !word.empty(); word = words.next()) {
        last = word;
    }
    max = tintwell::toFloat(last);
    const bool isStraight = wordCount(outputs) == 2 && (min != 0 || max != 1);
    return !isStraight && !isIdentity(inputs, outputs);
}

/// Reads the shapers of the three channels into the ends of a domain.
void readShapers(LineSource& lines, Read_LUTFile& lut, float* min, float* max) {
    static constexpr std::array<const char*, 3> channels = {"red", "green", "blue"};
    QStringList changing;
    for (std::size_t c = 0; c < channels.size(); ++c) {
        if (readShaper(lines, min[c], max[c])) {
            changing += QLatin1String(channels[c]);
        }
    }
    if (!changing.isEmpty()) {
        lut.remarks += QStringLiteral("shapers that are not the identity are ignored: ") +
                       changing.join(QStringLiteral(", "));
    }
}

void readSize3D(LineSource& lines, Read_LUTFile& lut) {
    tintwell::OddLines skipped;
    int i = 0;
    int j = 0;
    int k = 0;
    const auto isSize = [](std::size_t count) { return count == 3; };
    if (scan(nextOfWords(lines, skipped, isSize), i, j, k) == 3 && i == j && j == k) {
        lut.setSize3D(i);
    }
    skipped.tell(lut, QStringLiteral("which is skipped: a size was expected"));
}

void readSize1D(LineSource& lines, Read_LUTFile& lut) {
    tintwell::OddLines skipped;
    int size = 0;
    const auto isSize = [](std::size_t count) { return count == 1; };
    if (scan(nextOfWords(lines, skipped, isSize), size) == 1) {
        lut.setSize1D(size);
    }
    skipped.tell(lut, QStringLiteral("which is skipped: a size was expected"));
}

bool failUnsized(Read_LUTFile& lut, const LineSource& lines) {
    return tintwell::failUnsized(lut, lines, "a line of one size (1D) or three equal ones (3D)");
}

/// After a complete table the domain stays as the shapers gave it.
bool readSamples3D(Read_LUTFile& lut, LineSource& lines) {
    if (lut.size3D < 1) {
        return failUnsized(lut, lines);
    }
    FillResult end = FillResult::EndedEarly;
    if (tintwell::allocateLattice(lut, lines, Completeness::Complete)) {
        Triple<float> sample;
        end = tintwell::fillLattice(lut, lines, sample, scanNumbers);
        passRest(lut, lines, sample, scanNumbers);
    }
    if (end != FillResult::Complete) {
        lut.resetDomainMax3D();
    }
    return end != FillResult::EndedEarly;
}

bool readSamples1D(Read_LUTFile& lut, LineSource& lines) {
    Triple<float> sample;
    const bool filled =
        tintwell::allocateCurve(lut, lines, Completeness::Complete) &&
        tintwell::fillCurve(lut, lines, sample, scanNumbers) != FillResult::EndedEarly;
    lut.resetDomainMax1D();
    passRest(lut, lines, sample, scanNumbers);
    return filled;
}

} // namespace

bool Read_LUTFile::Read_Csp(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Csp);

    if (lines.next() != "CSPLUTV100") {
        return tintwell::failAtLine(*this, lines, QStringLiteral("\"CSPLUTV100\""));
    }
    const std::string_view kind = lines.next();
    const bool is3D = kind == "3D";
    if (!is3D && kind != "1D") {
        return tintwell::failAtLine(*this, lines, QStringLiteral("\"1D\" or \"3D\""));
    }
    if (!readMetadata(lines, *this)) {
        return false;
    }
    readShapers(lines, *this, is3D ? domainMin3D : domainMin1D, is3D ? domainMax3D : domainMax1D);
    if (is3D) {
        readSize3D(lines, *this);
    } else {
        readSize1D(lines, *this);
    }
    if (probe) {
        resetDomainMax1D();
        return hasSize() || failUnsized(*this, lines);
    }
    return is3D ? readSamples3D(*this, lines) : readSamples1D(*this, lines);
}

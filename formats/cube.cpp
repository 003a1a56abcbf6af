// The cube format, 3D, 1D or both:
//
//     TITLE "Warm evening"
//     LUT_3D_SIZE 2
//     DOMAIN_MIN 0.0 0.0 0.0
//     DOMAIN_MAX 1.0 1.0 1.0
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//
// Keywords may be on any line. Samples are k fastest; the entries of a 1D table follow those of the
// 3D table. A "Mesh 8 10" line declares integer samples, here of ten bits.

#include "formats/domain.h"
#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/stated_domain.h"
#include "lut/words.h"
#include "lut/write_lutfile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

using tintwell::allocateLattice;
using tintwell::Completeness;
using tintwell::contains;
using tintwell::FillResult;
using tintwell::latticeSizeOf;
using tintwell::LineSource;
using tintwell::removeAll;
using tintwell::SampleLine;
using tintwell::scan;
using tintwell::TableKind;
using tintwell::Triple;

namespace {

/// What the first pass finds besides the fields of the container.
struct CubeHeader {
    int size3D = 0; ///< as the last line with a size states it
    int size1D = 0; ///< likewise
    int outBits = 0;
    bool hasMeshWord = false; ///< some line contains "MESH" and must be skipped

    float meshScale() const { return std::ldexp(1.0F, outBits); }
};

enum class LineKind { Keyword, BadSize, Data };

bool isComment(std::string_view line) {
    return tintwell::startsWith(line, "#") || tintwell::startsWith(line, "x");
}

/// A keyword without all its numbers leaves what it does not state as it was.
LineKind checkNumbers(int found, int expected, const char* keyword, const LineSource& lines,
                      Read_LUTFile& lut) {
    if (found < expected) {
        remarkOnLine(lut, lines,
                     QStringLiteral("expected %1, one blank and %2: the rest is not set")
                         .arg(QLatin1String(keyword), tintwell::counted(expected, "number")));
    }
    return LineKind::Keyword;
}

/// After a tab the numbers are not seen, which is no loss if they are those that count anyway.
bool statesSame(const LineSource& lines, const char* keyword, const float (&channels)[3]) {
    std::array<float, 3> stated{};
    return scan(removeAll(lines.current(), keyword), stated[0], stated[1], stated[2]) == 3 &&
           std::equal(stated.begin(), stated.end(), channels);
}

LineKind parseTriple(const LineSource& lines, const char* keyword, float (&channels)[3],
                     Read_LUTFile& lut) {
    const std::string text = removeAll(lines.current(), std::string(keyword) + ' ');
    const int found = scan(text, channels[0], channels[1], channels[2]);
    return statesSame(lines, keyword, channels) ? LineKind::Keyword
                                                : checkNumbers(found, 3, keyword, lines, lut);
}

LineKind parseInputRange(const LineSource& lines, Read_LUTFile& lut) {
    const int found = tintwell::scanDomain(removeAll(lines.current(), "LUT_1D_INPUT_RANGE "),
                                           lut.domainMin1D, lut.domainMax1D);
    const bool isSame = tintwell::statesDomain(removeAll(lines.current(), "LUT_1D_INPUT_RANGE"),
                                               lut.domainMin1D, lut.domainMax1D);
    return isSame ? LineKind::Keyword : checkNumbers(found, 2, "LUT_1D_INPUT_RANGE", lines, lut);
}

/// Other programs state the inputs of a lattice so; here they are always those of DOMAIN_MIN and
/// DOMAIN_MAX.
void remarkOnInputRange(const LineSource& lines, Read_LUTFile& lut) {
    float from = 0;
    float to = 1;
    scan(removeAll(lines.current(), "LUT_3D_INPUT_RANGE"), from, to);
    if (from != 0 || to != 1) {
        remarkOnLine(lut, lines, QStringLiteral("which is ignored"));
    }
}

QString titleIn(const LineSource& lines) {
    constexpr int enough = 100;
    return lines.currentText(enough)
        .remove(QStringLiteral("TITLE"))
        .remove(QLatin1Char('"'))
        .trimmed();
}

LineKind parseMesh(std::string_view line, Read_LUTFile& lut, CubeHeader& header) {
    int inBits = 0;
    scan(line.substr(std::min<std::size_t>(line.size(), 5)), inBits, header.outBits);
    lut.meshHeader = true;
    return LineKind::Keyword;
}

/// The size that a line states. Of several the last one counts; \a before is the one before it.
LineKind checkSize(int size, int& before, const LineSource& lines, Read_LUTFile& lut) {
    if (before > 0 && size != before) {
        remarkOnLine(lut, lines, QStringLiteral("which replaces the size before"));
    }
    before = size;
    return size < 1 ? LineKind::BadSize : LineKind::Keyword;
}

LineKind parseSize3D(const LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    lut.setSize3D(tintwell::toInt(removeAll(lines.current(), "LUT_3D_SIZE ")));
    return checkSize(lut.size3D, header.size3D, lines, lut);
}

LineKind parseSize1D(const LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    lut.setSize1D(tintwell::toInt(removeAll(lines.current(), "LUT_1D_SIZE ")));
    return checkSize(lut.size1D, header.size1D, lines, lut);
}

LineKind parseTitle(const LineSource& lines, Read_LUTFile& lut) {
    if (lut.title.isEmpty()) {
        lut.title = titleIn(lines);
    }
    return LineKind::Keyword;
}

/// Whether parseLine() takes a line for a keyword.
bool isKeyword(std::string_view line) {
    static constexpr std::array<std::string_view, 6> keywords = {
        "LUT_3D_SIZE", "TITLE", "DOMAIN_MIN", "DOMAIN_MAX", "LUT_1D_SIZE", "LUT_1D_INPUT_RANGE"};
    return tintwell::startsWith(line, "Mesh") ||
           std::any_of(keywords.begin(), keywords.end(),
                       [line](std::string_view keyword) { return contains(line, keyword); });
}

/// Classifies the line read last, which is neither empty nor a comment, and processes its keyword.
LineKind parseLine(std::string_view line, const LineSource& lines, Read_LUTFile& lut,
                   CubeHeader& header) {
    header.hasMeshWord = header.hasMeshWord || contains(line, "MESH");
    if (contains(line, "LUT_3D_SIZE")) {
        return parseSize3D(lines, lut, header);
    }
    if (contains(line, "TITLE")) {
        return parseTitle(lines, lut);
    }
    if (contains(line, "DOMAIN_MIN")) {
        return parseTriple(lines, "DOMAIN_MIN", lut.domainMin3D, lut);
    }
    if (contains(line, "DOMAIN_MAX")) {
        return parseTriple(lines, "DOMAIN_MAX", lut.domainMax3D, lut);
    }
    if (contains(line, "LUT_1D_SIZE")) {
        return parseSize1D(lines, lut, header);
    }
    if (contains(line, "LUT_1D_INPUT_RANGE")) {
        return parseInputRange(lines, lut);
    }
    if (tintwell::startsWith(line, "Mesh")) {
        return parseMesh(line, lut, header);
    }
    if (contains(line, "LUT_3D_INPUT_RANGE")) {
        remarkOnInputRange(lines, lut);
    }
    return LineKind::Data;
}

/// What is wrong with the size line read last.
QString expectedSize(std::string_view line) {
    if (contains(line, "_SIZE\t")) {
        return QStringLiteral("a blank instead of the tab after the keyword");
    }
    tintwell::WordReader words(line);
    words.next();
    double size = 0;
    const std::string_view word = words.next();
    if (scan(word, size) == 0 || size < 1) {
        return QStringLiteral("a size of 1 or more");
    }
    return contains(word, ".") ? QStringLiteral("a whole number")
                               : QStringLiteral("a smaller size");
}

/// Processes every keyword, wherever it is. False for a bad size.
bool readHeader(LineSource& lines, Read_LUTFile& lut, CubeHeader& header) {
    while (lines.skipToLetters()) {
        const std::string_view line = lines.next();
        if (!isComment(line) && parseLine(line, lines, lut, header) == LineKind::BadSize) {
            return tintwell::failAtLine(lut, lines, expectedSize(line));
        }
    }
    return true;
}

/// For a file that states no size: sets that of the lattice that the data lines fill.
void inferSize(LineSource& lines, Read_LUTFile& lut) {
    int count = 0;
    lines.rewind();
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        count += !line.empty() && !isComment(line) && !isKeyword(line) ? 1 : 0;
    }
    lut.setSize3D(latticeSizeOf(count));
    lut.sizeInferred = lut.size3D > 0;
    if (lines.hasOnlyReturns()) {
        tintwell::remarkOnReturns(lut);
    } else if (lut.sizeInferred) {
        lut.remarks += QStringLiteral("no line states the size: %1 is inferred from %2")
                           .arg(QString::number(lut.size3D), tintwell::counted(count, "line"));
    }
}

/// Tells of domains that belong to a table that the file does not have.
void remarkOnUnusedDomains(Read_LUTFile& lut) {
    const auto isUnit = [&lut](TableKind kind) { return statedDomain(lut, kind).isUnit(); };
    if (lut.size3D == 0 && lut.size1D > 0 && !isUnit(TableKind::ThreeD)) {
        lut.remarks += QStringLiteral("DOMAIN_MIN and DOMAIN_MAX do not apply to a 1D table and "
                                      "are ignored");
    }
    if (lut.size1D == 0 && lut.size3D > 0 && !isUnit(TableKind::OneD)) {
        lut.remarks +=
            QStringLiteral("LUT_1D_INPUT_RANGE does not apply to a 3D table and is ignored");
    }
}

/// Whether the lattice begins with greys that rise, as a curve does.
bool startsLikeCurve(const Read_LUTFile& lut) {
    const int count = std::min(lut.size1D, lut.size3D);
    const float first = lut.data3D[0][0][0][0];
    float before = first;
    for (int n = 0; n < count; ++n) {
        const float* const cell = lut.tableOrder ? lut.data3D[0][0][n] : lut.data3D[n][0][0];
        if (cell[0] != cell[1] || cell[1] != cell[2] || cell[0] < before) {
            return false;
        }
        before = cell[0];
    }
    return before > first;
}

/// Many programs write the curve first.
void remarkOnBothTables(Read_LUTFile& lut) {
    const std::int64_t n = lut.size3D;
    const QString first =
        QStringLiteral("the file has both tables: its first %1 lines are taken for "
                       "the lattice, the next %2 for the curve")
            .arg(n * n * n)
            .arg(lut.size1D);
    lut.remarks += startsLikeCurve(lut)
                       ? first + QStringLiteral("; but the first lines are grey and rising, as if "
                                                "the curve came first")
                       : first;
}

/// Scans integer samples and scales them to real numbers.
class CodeScanner {
public:
    CodeScanner(const LineSource& lines, float scale) : m_lines(lines), m_scale(scale) {}

    /// Returns how many numbers there are.
    int scan(std::string_view line, Triple<float>& sample) {
        const int found = m_codes.scan(line);
        if (found > 0) {
            sample = {static_cast<float>(m_codes.r) / m_scale,
                      static_cast<float>(m_codes.g) / m_scale,
                      static_cast<float>(m_codes.b) / m_scale};
            if (contains(line, ".")) {
                m_reals.add(m_lines);
            }
        }
        return found;
    }

    void tell(Read_LUTFile& lut) const {
        m_reals.tell(lut, QStringLiteral("expected integers, as the Mesh line says: a number ends "
                                         "at its point"));
    }

private:
    const LineSource& m_lines;
    float m_scale;
    Triple<int> m_codes;
    tintwell::OddLines m_reals;
};

/// Lines that never hold a sample, whatever they begin with.
bool isPassedOver(std::string_view line, const CubeHeader& header) {
    return line.empty() || isComment(line) || (header.hasMeshWord && contains(line, "MESH"));
}

/// The result of scanning a line that may be a keyword.
SampleLine sampleOrKeyword(std::string_view line, int found) {
    return found == 0 && (isKeyword(line) || contains(line, "LUT_3D_INPUT_RANGE"))
               ? SampleLine::PassedOver
               : tintwell::sampleLine(found, 3);
}

} // namespace

bool Read_LUTFile::Read_Cube(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Cube);
    meshHeader = false;

    CubeHeader header;
    if (!readHeader(lines, *this, header)) {
        return false;
    }
    if (size3D == 0 && size1D == 0) {
        inferSize(lines, *this);
    }
    remarkOnUnusedDomains(*this);
    if (probe) {
        return true;
    }
    if ((size3D > 0 && !allocateLattice(*this, lines, Completeness::Complete)) ||
        (size1D > 0 && !tintwell::allocateCurve(*this, lines, Completeness::Partial))) {
        resetDomainMax3D();
        return false;
    }

    lines.rewind();
    Triple<float> sample;
    CodeScanner codes(lines, header.meshScale());
    const auto parseSample = [&](std::string_view line, Triple<float>& values) {
        if (isPassedOver(line, header)) {
            return SampleLine::PassedOver;
        }
        return sampleOrKeyword(line, meshHeader ? codes.scan(line, values) : values.scan(line));
    };
    const FillResult lattice = fillLattice(*this, lines, sample, parseSample);
    codes.tell(*this);
    if (lattice != FillResult::Complete) {
        resetDomainMax3D();
        if (lattice == FillResult::LastMissing) {
            resetDomainMax1D();
        }
        return lattice == FillResult::LastMissing;
    }

    const auto parseEntry = [&](std::string_view line, Triple<float>& values) {
        return isPassedOver(line, header) ? SampleLine::PassedOver
                                          : sampleOrKeyword(line, values.scan(line));
    };
    const FillResult entries = fillCurve(*this, lines, sample, parseEntry);
    resetDomainMax1D();
    if (entries == FillResult::EndedEarly) {
        return false;
    }
    resetDomainMax3D();
    passRest(*this, lines, sample, parseEntry);
    if (size3D > 0 && size1D > 0) {
        remarkOnBothTables(*this);
    }
    return true;
}

bool Write_LUTFile::Write_Cube(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor3D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Cube);
    out << "TITLE \n"
        << "LUT_3D_SIZE " << lut.size3D << '\n';
    tintwell::emitLattice(out, *this, lut, outputScale, " ");
    return true;
}

// The csv format, 1D, of integer codes:
//
//     0,	0
//     1,	3
//     2,	7
//     ...
//
// Each line has the index of an entry and the code of all its channels. There is no header and no
// comment. The last code of the file gives the full scale: the next power of two, less one.

#include "formats/domain.h"
#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/filled_places.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/words.h"
#include "lut/write_lutfile.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

using tintwell::LineSource;

namespace {

/// The content of a line. A line with only an index keeps the code of the line before.
struct Entry {
    int index = 0;
    int code = 0;
    tintwell::LineEnd end;

    /// Returns how many numbers there are.
    int scan(std::string_view line) {
        return tintwell::scan(line, index, tintwell::Literal{','}, code, end);
    }
};

/// Collects the lines that lose something.
class OddEntries {
public:
    explicit OddEntries(const LineSource& lines) : m_lines(lines) {}

    void add(std::string_view line, int found, const Entry& entry) {
        if (found == 2 && entry.end.isReached) {
            return;
        }
        if (found == 0) {
            m_unknown.addUnlessComment(line, m_lines);
        } else if (found == 1) {
            m_incomplete.add(m_lines);
        } else if (std::count(line.begin(), line.end(), ',') > 1) {
            m_wide.add(m_lines);
        } else {
            m_real.add(m_lines);
        }
    }
    void addOutside() { m_outside.add(m_lines); }
    void addRepeated() { m_repeated.add(m_lines); }

    /// \a found of \a expected entries have a line. Without a line for each, others are odd.
    void tell(Read_LUTFile& lut, std::int64_t found, std::int64_t expected) const {
        m_unknown.tell(lut, QStringLiteral("which is neither a sample nor a keyword"));
        m_incomplete.tell(lut, QStringLiteral("without a code: that of the line before is taken"));
        m_wide.tell(lut, QStringLiteral("of which only the first code is read"));
        m_real.tell(lut, QStringLiteral("of which only the integer part is read"));
        const QString missing = tintwell::counted(expected - found, "entry without a line is black",
                                                  "entries without a line are black");
        m_outside.tell(lut, QStringLiteral("whose index is outside the table; ") + missing);
        m_repeated.tell(lut, QStringLiteral("whose index has had a line before; ") + missing);
    }

private:
    const LineSource& m_lines;
    tintwell::OddLines m_unknown;
    tintwell::OddLines m_incomplete;
    tintwell::OddLines m_wide;
    tintwell::OddLines m_real;
    tintwell::OddLines m_outside;
    tintwell::OddLines m_repeated;
};

int countEntries(LineSource& lines, Entry& entry) {
    int count = 0;
    while (!lines.atEnd()) {
        count += entry.scan(lines.next()) > 0 ? 1 : 0;
    }
    return count;
}

/// Fills the table, each code at its index.
void readEntries(LineSource& lines, Entry& entry, Read_LUTFile& lut) {
    OddEntries odd(lines);
    tintwell::FilledPlaces entries(lut.size1D);
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        const int found = entry.scan(line);
        odd.add(line, found, entry);
        if (found == 0) {
            continue;
        }
        if (entry.index < 0 || entry.index >= lut.size1D) {
            odd.addOutside();
            continue;
        }
        const auto value = static_cast<float>(entry.code);
        lut.White1D(entry.index, value, value, value, lut.domainMin1D, lut.domainMax1D);
        if (!entries.add(entry.index)) {
            odd.addRepeated();
        }
    }
    odd.tell(lut, entries.count(), entries.all());
}

/// The largest code of the bit depth that \a lastCode needs; a power of two belongs to the depth
/// below it.
float fullScale(int lastCode) {
    std::int64_t codes = 2;
    while (codes < lastCode) {
        codes *= 2;
    }
    return static_cast<float>(codes - 1);
}

} // namespace

bool Read_LUTFile::Read_Csv(QString path, bool probe) {
    constexpr int leastEntries = 256;

    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Csv);
    Entry entry;
    setSize1D(countEntries(lines, entry));
    tintwell::setDomain(domainMax1D, fullScale(entry.code));
    if (probe) {
        return size1D >= leastEntries ||
               fail(QStringLiteral("found %1 entries, expected at least %2")
                        .arg(size1D)
                        .arg(leastEntries));
    }
    if (size1D > 0 && !allocate1D()) {
        resetDomainMax1D();
        return false;
    }
    if (lines.hasOnlyReturns()) {
        tintwell::remarkOnReturns(*this);
    }
    if (size1D > 0 && domainMax1D[0] > static_cast<float>(entry.code)) {
        remarks += QStringLiteral("the last code, %1, is not full scale: %2 is taken")
                       .arg(QString::number(entry.code), tintwell::formatted(domainMax1D[0]));
    }
    tellNumbersOnce1D(3);
    lines.rewind();
    readEntries(lines, entry, *this);
    resetDomainMax1D();
    return true;
}

/// Writes the first channel only. Real numbers are written too, but read again as their integer
/// parts.
bool Write_LUTFile::Write_Csv(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor1D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Csv);
    for (int n = 0; n < lut.size1D; ++n) {
        out << n << ",\t";
        emitValue(out, lut.data1D[n][0], outputScale, "\n");
    }
    return true;
}

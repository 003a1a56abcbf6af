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
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <cstdint>
#include <string_view>

using tintwell::LineSource;

namespace {

/// The content of a line. A line with only an index keeps the code of the line before.
struct Entry {
    int index = 0;
    int code = 0;

    bool scan(std::string_view line) {
        return tintwell::scan(line, index, tintwell::Literal{','}, code) > 0;
    }
};

int countEntries(LineSource& lines, Entry& entry) {
    int count = 0;
    while (!lines.atEnd()) {
        count += entry.scan(lines.next()) ? 1 : 0;
    }
    return count;
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
    lines.rewind();
    while (!lines.atEnd()) {
        if (!entry.scan(lines.next()) || entry.index < 0 || entry.index >= size1D) {
            continue;
        }
        const auto value = static_cast<float>(entry.code);
        White1D(entry.index, value, value, value, domainMin1D, domainMax1D);
    }
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

// The Spi3d format, 3D:
//
//     SPILUT 1.0
//     3 3
//     2 2 2
//     0 0 0 0.000000 0.000000 0.000000
//     0 0 1 0.000000 0.000000 1.000000
//     ...
//
// Each sample states its place, so lines may be in any order, and points without a line stay black.

#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <cstdint>
#include <optional>
#include <string_view>

using tintwell::Completeness;
using tintwell::LineSource;
using tintwell::scan;
using tintwell::Triple;

namespace {

void skipSignature(LineSource& lines) {
    while (!lines.atEnd() && !tintwell::startsWith(lines.next(), "SPILUT")) {
    }
}

/// Finds the next line that has all the requested numbers.
template <typename... Numbers>
bool findNumbers(LineSource& lines, Numbers&... numbers) {
    while (!lines.atEnd()) {
        if (scan(lines.next(), numbers...) == static_cast<int>(sizeof...(numbers))) {
            return true;
        }
    }
    return false;
}

/// \a size is unchanged if the file ends before it. False if the channel counts differ, or the
/// sizes do.
bool readHeader(LineSource& lines, Read_LUTFile& lut, std::optional<int>& size) {
    skipSignature(lines);
    int inputs = 0;
    int outputs = 0;
    if (findNumbers(lines, inputs, outputs) && inputs != outputs) {
        return failAtLine(lut, lines, QStringLiteral("as many inputs as outputs"));
    }
    int width = 0;
    int height = 0;
    int depth = 0;
    if (!findNumbers(lines, width, height, depth)) {
        return true;
    }
    if (width != height || width != depth) {
        return failAtLine(lut, lines, QStringLiteral("three equal sizes"));
    }
    size = width;
    return true;
}

/// The content of a sample line. A line with fewer numbers keeps the rest from the line before.
struct PlacedSample {
    int i = 0;
    int j = 0;
    int k = 0;
    Triple<float> value;

    bool scan(std::string_view line) {
        return tintwell::scan(line, i, j, k, value.r, value.g, value.b) > 0;
    }

    bool isInside(int size) const {
        const auto inside = [size](int index) { return index >= 0 && index < size; };
        return inside(i) && inside(j) && inside(k);
    }
};

} // namespace

bool Read_LUTFile::Read_Spi3D(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Spi3D);
    std::optional<int> size;
    if (!readHeader(lines, *this, size)) {
        return false;
    }
    if (size) {
        setSize3D(*size);
    }
    if (probe || !size || size3D < 1) {
        resetDomainMax3D();
        return hasSize() || tintwell::failUnsized(*this, "a line of three sizes");
    }
    if (!allocateLattice(*this, lines, Completeness::Partial)) {
        return false;
    }
    PlacedSample sample;
    std::int64_t found = 0;
    while (!lines.atEnd()) {
        if (sample.scan(lines.next()) && sample.isInside(size3D)) {
            store3D(*this, sample.i, sample.j, sample.k, sample.value);
            ++found;
        }
    }
    const std::int64_t n = size3D;
    tintwell::warnShort(*this, found, n * n * n);
    resetDomainMax3D();
    return true;
}

bool Write_LUTFile::Write_Spi3D(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor3D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    out << "SPILUT 1.0\n"
        << "3 3\n"
        << lut.size3D << ' ' << lut.size3D << ' ' << lut.size3D << '\n';
    forceRealNumbers();
    applyDefaultOrders(tintwell::FormatCode::Spi3D);
    emitLattice(out, *this, lut, outputScale, " ",
                [&out](int i, int j, int k) { out << i << ' ' << j << ' ' << k << ' '; });
    return true;
}

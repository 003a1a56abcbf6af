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
#include "formats/filled_places.h"
#include "formats/text/words.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <cstdint>
#include <optional>
#include <string_view>

using tintwell::Completeness;
using tintwell::LineSource;
using tintwell::OddLines;
using tintwell::SampleLine;
using tintwell::scan;
using tintwell::Triple;

namespace {

void skipSignature(LineSource& lines, OddLines& unknown) {
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (tintwell::startsWith(line, "SPILUT")) {
            return;
        }
        unknown.addUnlessComment(line, lines);
    }
}

/// Finds the next line that has all the requested numbers.
template <typename... Numbers>
bool findNumbers(LineSource& lines, OddLines& unknown, Numbers&... numbers) {
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (scan(line, numbers...) == static_cast<int>(sizeof...(numbers))) {
            return true;
        }
        unknown.addUnlessComment(line, lines);
    }
    return false;
}

/// \a size is unchanged if the file ends before it. False if the channel counts differ, or the
/// sizes do.
bool readHeader(LineSource& lines, Read_LUTFile& lut, std::optional<int>& size) {
    OddLines unknown;
    skipSignature(lines, unknown);
    int inputs = 0;
    int outputs = 0;
    if (findNumbers(lines, unknown, inputs, outputs) && inputs != outputs) {
        return failAtLine(lut, lines, QStringLiteral("as many inputs as outputs"));
    }
    int width = 0;
    int height = 0;
    int depth = 0;
    if (!findNumbers(lines, unknown, width, height, depth)) {
        return true;
    }
    if (width != height || width != depth) {
        return failAtLine(lut, lines, QStringLiteral("three equal sizes"));
    }
    unknown.tell(lut, QStringLiteral("which is not a line of the header"));
    size = width;
    return true;
}

/// The content of a sample line. A line with fewer numbers keeps the rest from the line before.
struct PlacedSample {
    int i = 0;
    int j = 0;
    int k = 0;
    Triple<float> value;

    static constexpr int numbers = 6; ///< on a line

    SampleLine scan(std::string_view line) {
        return tintwell::sampleLine(tintwell::scan(line, i, j, k, value.r, value.g, value.b),
                                    numbers);
    }

    bool isInside(int size) const {
        const auto inside = [size](int index) { return index >= 0 && index < size; };
        return inside(i) && inside(j) && inside(k);
    }
};

/// Reads the samples, each to its place.
void readSamples(LineSource& lines, Read_LUTFile& lut) {
    tintwell::BodyLines body(lines, PlacedSample::numbers);
    OddLines outside;
    OddLines repeated;
    const std::int64_t n = lut.size3D;
    tintwell::FilledPlaces points(n * n * n);
    PlacedSample sample;
    while (!lines.atEnd()) {
        if (!body.isSample(sample.scan(lines.next()))) {
            continue;
        }
        if (!sample.isInside(lut.size3D)) {
            outside.add(lines);
            continue;
        }
        store3D(lut, sample.i, sample.j, sample.k, sample.value);
        if (!points.add((sample.i * n + sample.j) * n + sample.k)) {
            repeated.add(lines);
        }
    }
    body.tellWithLast(lut);
    outside.tell(lut, QStringLiteral("which is outside the lattice and is ignored"));
    repeated.tell(lut, QStringLiteral("whose point has had a line before: the last one counts"));
    lut.remarkMissing(points.count(), points.all());
}

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
        return hasSize() || tintwell::failUnsized(*this, lines, "a line of three sizes");
    }
    if (!allocateLattice(*this, lines, Completeness::Partial)) {
        return false;
    }
    readSamples(lines, *this);
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

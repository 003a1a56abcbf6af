// The NVX 3D format:
//
//     From 0.0 1.0
//     Length 2
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//
// Samples are k fastest. Every line of the body stands for a point, whatever it holds; points
// without a sample stay black.

#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/nvx_header.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <cstdint>
#include <string_view>

using tintwell::Completeness;
using tintwell::LineSource;
using tintwell::Triple;
using tintwell::walkLattice;

bool Read_LUTFile::Read_NVX3D(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Nvx3D);
    const int length = tintwell::readNvxHeader(*this, lines, domainMin3D, domainMax3D);
    if (length != 0) {
        setSize3D(length);
    }
    if (probe || length < 1) {
        return length >= 1 || tintwell::failUnsized(*this, lines, "a Length line");
    }
    if (!allocateLattice(*this, lines, Completeness::Partial)) {
        return false;
    }
    Triple<float> sample;
    tintwell::OddLines empty;
    tintwell::BodyLines body(lines, 3);
    const auto place = [&](std::string_view line, int i, int j, int k) {
        const tintwell::SampleLine kind = tintwell::scanNumbers(line, sample);
        if (kind == tintwell::SampleLine::None) {
            empty.add(lines);
        } else if (body.isSample(kind)) {
            store3D(*this, i, j, k, sample);
        }
        return true;
    };
    const std::int64_t n = size3D;
    std::int64_t found = n * n * n;
    walkLattice(lines, size3D, place, &found);
    empty.tell(*this,
               QStringLiteral("which is not a sample: its point stays black, and those after "
                              "it are late"));
    body.tellWithLast(*this);
    remarkMissing(found, n * n * n);
    if (empty.count() == 0) { // else the last samples are left over
        passRest(*this, lines, sample, tintwell::scanNumbers);
    }
    resetDomainMax3D();
    return true;
}

bool Write_LUTFile::Write_NVX3D(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor3D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Nvx3D);
    tintwell::writeNvxHeader(out, lut.size3D);
    emitLattice(out, *this, lut, 1, " ");
    return true;
}

// The NVX 1D format:
//
//     From 0.0 1.0
//     Length 256
//     0 0 0
//     0.00392157 0.00392157 0.00392157
//     ...
//
// There must be exactly as many samples as the length says.

#include "formats/emit_table.h"
#include "formats/fill_table.h"
#include "formats/nvx_header.h"
#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <string_view>

using tintwell::FillResult;
using tintwell::LineSource;
using tintwell::scanNumbers;
using tintwell::Triple;

bool Read_LUTFile::Read_NVX1D(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrders(tintwell::FormatCode::Nvx1D);
    const int length = tintwell::readNvxHeader(*this, lines, domainMin1D, domainMax1D);
    if (length != 0) {
        setSize1D(length);
    }
    if (probe || length < 1) {
        return length >= 1 || tintwell::failUnsized(*this, lines, "a Length line");
    }
    if (!tintwell::allocateCurve(*this, lines, tintwell::Completeness::Complete)) {
        return false;
    }
    Triple<float> sample;
    const FillResult entries = fillCurve(*this, lines, sample, scanNumbers);
    if (entries != FillResult::Complete) {
        return entries == FillResult::LastMissing
                   ? tintwell::failShort(*this, lines, size1D - 1, size1D)
                   : false;
    }
    tintwell::OddLines unknown;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (sample.scan(line) > 0) {
            return tintwell::failAtLine(*this, lines,
                                        QStringLiteral("nothing after %1 samples").arg(size1D));
        }
        unknown.addUnlessComment(line, lines);
    }
    unknown.tell(*this, QStringLiteral("which is neither a sample nor a keyword"));
    resetDomainMax1D();
    return true;
}

bool Write_LUTFile::Write_NVX1D(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::createFor1D(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrders(tintwell::FormatCode::Nvx1D);
    tintwell::writeNvxHeader(out, lut.size1D);
    for (int n = 0; n < lut.size1D; ++n) {
        emitCell1D(out, lut.data1D[n], dataOrder, 1, " ");
        out << '\n';
    }
    return true;
}

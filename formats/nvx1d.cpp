// The NVX 1D format:
//
//     From 0.0 1.0
//     Length 256
//     0 0 0
//     0.00392157 0.00392157 0.00392157
//     ...
//
// As many samples as the length says, no more and no fewer.

#include "formats/nvx_header.h"
#include "formats/tables.h"
#include "lut/read_lutfile.h"
#include "lut/text_file.h"
#include "lut/write_lutfile.h"

#include <string_view>

using tintwell::LineSource;
using tintwell::takeNumbers;
using tintwell::Triple;
using tintwell::Walk;

bool Read_LUTFile::Read_NVX1D(QString path, bool probe) {
    LineSource lines(path);
    if (!lines.isOpen()) {
        return fail(lines.error());
    }
    applyDefaultOrder(true, true);
    const int length = tintwell::readNvxHeader(lines, domainMin1D, domainMax1D);
    if (length != 0) {
        setSize1D(length);
    }
    if (probe || length < 1) {
        return length >= 1 || tintwell::failUnsized(*this, "a Length line");
    }
    if (!tintwell::allocateCurve(*this, lines, tintwell::Body::Complete)) {
        return false;
    }
    Triple<float> sample;
    const Walk entries = fillCurve(*this, lines, sample, takeNumbers);
    if (entries != Walk::Complete) {
        return entries == Walk::LacksLast ? tintwell::failShort(*this, lines, size1D - 1, size1D)
                                          : false;
    }
    while (!lines.atEnd()) {
        if (sample.take(lines.next())) {
            return tintwell::failAtLine(*this, lines,
                                        QStringLiteral("nothing behind %1 samples").arg(size1D));
        }
    }
    resetDomainMax1D();
    return true;
}

bool Write_LUTFile::Write_NVX1D(QString path, Read_LUTFile& lut) {
    tintwell::TextFile out = tintwell::TextFile::forCurve(path, lut, lastError);
    if (!out.isOpen()) {
        return false;
    }
    applyDefaultOrder(true, true);
    tintwell::writeNvxHeader(out, lut.size1D);
    for (int n = 0; n < lut.size1D; ++n) {
        emitCell1D(out, lut.data1D[n], dataOrder, 1, " ");
        out << '\n';
    }
    return true;
}

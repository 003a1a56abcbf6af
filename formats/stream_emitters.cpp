// The emitters that print single table entries to a text stream of the caller.

#include "formats/text/emit.h"
#include "lut/write_lutfile.h"

#include <QTextStream>

void Write_LUTFile::White3D(float**** data, QTextStream& out, int i, int j, int k, long scale,
                            QString sep) {
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setFieldWidth(0);
    const float* const cell = tableOrder ? data[i][j][k] : data[k][j][i];
    tintwell::StreamSink sink{out};
    tintwell::emitCell3D(sink, cell, dataOrder, scale, sep);
}

void Write_LUTFile::White1D(float** data, QTextStream& out, int i, long scale, QString sep) {
    tintwell::StreamSink sink{out};
    tintwell::emitCell1D(sink, data[i], dataOrder, scale, sep);
}

void Write_LUTFile::WhiteGamma(float** data, QTextStream& out, int i, long scale, QString sep) {
    tintwell::StreamSink sink{out};
    tintwell::emitValue(sink, data[i][0], scale, sep);
}

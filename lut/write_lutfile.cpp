#include "lut/write_lutfile.h"

#include "lut/catalogue.h"
#include "lut/emit.h"

#include <QTextStream>

#include <algorithm>
#include <new>

Write_LUTFile::Write_LUTFile(QObject* parent) : QObject(parent) {}

bool Write_LUTFile::WriteFile(LUTFILE_ST st, Read_LUTFile& lut) try {
    dataOrder = st.dataOrder;
    tableOrder = st.tableOrder;
    defaultOrder = st.defaultOrder;
    outputScale = st.outputScale;

    lastError.clear();
    const tintwell::Format* const format = tintwell::formatOf(st.formatCode);
    if (format == nullptr || format->write == nullptr) {
        lastError = QStringLiteral("no writer has the format code %1").arg(st.formatCode);
        return false;
    }
    return (this->*format->write)(st.path, lut);
} catch (const std::bad_alloc&) {
    lastError = QStringLiteral("the table is too large for the memory");
    return false;
}

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

void Write_LUTFile::forceRealNumbers() {
    outputScale = std::min<std::int64_t>(outputScale, 1);
}

void Write_LUTFile::applyDefaultOrder(bool formatDataOrder, bool formatTableOrder) {
    if (defaultOrder) {
        dataOrder = formatDataOrder;
        tableOrder = formatTableOrder;
    }
}

#pragma once

#include "samples.h"

namespace samples {

/// Reads and writes small files of one format.
class OneFormat {
public:
    explicit OneFormat(int code) : m_code(code) {}

    /// In the format's own orders.
    bool read(Read_LUTFile& lut, const QByteArray& text, bool probe = false) const {
        return lut.ReadFile(request(m_folder.file(QStringLiteral("in"), text), m_code), probe);
    }

    bool readInOrders(Read_LUTFile& lut, const QByteArray& text, bool dataOrder,
                      bool tableOrder) const {
        const QString path = m_folder.file(QStringLiteral("in"), text);
        return lut.ReadFile(request(path, m_code, dataOrder, tableOrder), false);
    }

    QByteArray written(Read_LUTFile& lut, int scale = 1) const {
        return written(lut, request(m_folder.path(QStringLiteral("out")), m_code), scale);
    }

    QByteArray writtenInOrders(Read_LUTFile& lut, bool dataOrder, bool tableOrder,
                               int scale = 1) const {
        const QString path = m_folder.path(QStringLiteral("out"));
        return written(lut, request(path, m_code, dataOrder, tableOrder), scale);
    }

private:
    QByteArray written(Read_LUTFile& lut, LUTFILE_ST st, int scale) const {
        st.outputScale = scale;
        return Write_LUTFile(nullptr).WriteFile(st, lut) ? m_folder.content(QStringLiteral("out"))
                                                         : QByteArrayLiteral("(failed)");
    }

    Folder m_folder;
    int m_code;
};

/// A 1D table's cells, one after the other.
inline QVector<float> curve(const Read_LUTFile& lut) {
    QVector<float> values;
    for (int n = 0; lut.data1D != nullptr && n < lut.size1D; ++n) {
        values += cell(lut.data1D[n]);
    }
    return values;
}

inline void fill1D(Read_LUTFile& lut, const QVector<float>& values) {
    lut.size1D = values.size() / 3;
    QVERIFY(lut.allocate1D());
    for (int n = 0; n < values.size(); ++n) {
        lut.data1D[n / 3][n % 3] = values[n];
    }
}

/// What a 1D reader makes of a text: whether it reads, the size, and, where given, the cells.
inline void curveColumns() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("reads");
    QTest::addColumn<int>("size");
    QTest::addColumn<QVector<float>>("cells");
}

inline void curveRow(const char* name, const QByteArray& text, bool reads, int size,
                     const QVector<float>& cells = {}) {
    QTest::newRow(name) << text << reads << size << cells;
}

inline void compareCurve(const OneFormat& format) {
    QFETCH(QByteArray, text);
    QFETCH(QVector<float>, cells);
    Read_LUTFile lut(nullptr);
    QTEST(format.read(lut, text), "reads");
    QTEST(lut.size1D, "size");
    if (!cells.isEmpty()) {
        QCOMPARE(curve(lut), cells);
        QCOMPARE(cell(lut.domainMax1D), QVector<float>({1, 1, 1}));
    }
}

} // namespace samples

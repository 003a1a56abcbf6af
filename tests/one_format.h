#pragma once

#include "samples.h"

namespace samples {

/// Reads and writes small files of one format.
class OneFormat {
public:
    explicit OneFormat(int code) : m_code(code) {}

    /// In the format's own orders, which the container is first set to differ from.
    bool read(Read_LUTFile& lut, const QByteArray& text, bool probe = false) const {
        lut.dataOrder = lut.tableOrder = false;
        return lut.ReadFile(request(m_folder.file(QStringLiteral("in"), text), m_code), probe);
    }

    bool readInOrders(Read_LUTFile& lut, const QByteArray& text, bool dataOrder,
                      bool tableOrder) const {
        const QString path = m_folder.file(QStringLiteral("in"), text);
        return lut.ReadFile(request(path, m_code, dataOrder, tableOrder), false);
    }

    /// The same: the writer must use these orders instead of the requested ones.
    QByteArray written(Read_LUTFile& lut, std::int64_t scale = 1) const {
        LUTFILE_ST st = request(m_folder.path(QStringLiteral("out")), m_code, false, false);
        st.defaultOrder = true;
        return written(lut, st, scale);
    }

    QByteArray writtenInOrders(Read_LUTFile& lut, bool dataOrder, bool tableOrder,
                               std::int64_t scale = 1) const {
        const QString path = m_folder.path(QStringLiteral("out"));
        return written(lut, request(path, m_code, dataOrder, tableOrder), scale);
    }

private:
    QByteArray written(Read_LUTFile& lut, LUTFILE_ST st, std::int64_t scale) const {
        st.outputScale = scale;
        return Write_LUTFile(nullptr).WriteFile(st, lut) ? m_folder.content(QStringLiteral("out"))
                                                         : QByteArrayLiteral("(failed)");
    }

    Folder m_folder;
    int m_code;
};

/// Sample (i, j, k), wherever the orders have stored it.
inline QVector<float> sampleAt(const Read_LUTFile& lut, int i, int j, int k) {
    return cell(lut.tableOrder ? lut.data3D[i][j][k] : lut.data3D[k][j][i]);
}

/// The cells of a 1D table, one after the other.
inline QVector<float> curve(const Read_LUTFile& lut) {
    QVector<float> values;
    for (int n = 0; lut.data1D != nullptr && n < lut.size1D; ++n) {
        values += cell(lut.data1D[n]);
    }
    return values;
}

inline void fill1D(Read_LUTFile& lut, const QVector<float>& values) {
    fill1D(lut, values.size() / 3, [&](int n) { return values.mid(3 * n, 3); });
}

/// A text and what a reader should make of it: whether it can be read, the size and, if given, the
/// values of sample (0, 0, 1) of a lattice or of a whole curve.
inline void textColumns() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("reads");
    QTest::addColumn<int>("size");
    QTest::addColumn<QVector<float>>("values");
}

inline void textRow(const char* name, const QByteArray& text, bool reads, int size,
                    const QVector<float>& values = {}) {
    QTest::newRow(name) << text << reads << size << values;
}

inline void compareLattice(const OneFormat& format) {
    QFETCH(QByteArray, text);
    QFETCH(QVector<float>, values);
    Read_LUTFile lut(nullptr);
    QTEST(format.read(lut, text), "reads");
    QTEST(lut.size3D, "size");
    if (!values.isEmpty()) {
        QCOMPARE(sampleAt(lut, 0, 0, 1), values);
    }
}

inline void compareCurve(const OneFormat& format) {
    QFETCH(QByteArray, text);
    QFETCH(QVector<float>, values);
    Read_LUTFile lut(nullptr);
    QTEST(format.read(lut, text), "reads");
    QTEST(lut.size1D, "size");
    if (!values.isEmpty()) {
        QCOMPARE(curve(lut), values);
        QCOMPARE(cell(lut.domainMax1D), QVector<float>({1, 1, 1}));
    }
}

/// Sample lines numbered by their first value, in steps of 1/32 from 0.
inline QByteArray numbered(int from, int to) {
    QByteArray lines;
    for (int n = from; n < to; ++n) {
        lines += QByteArray::number(n / 32.0) + " 0.5 0.25\n";
    }
    return lines;
}

} // namespace samples

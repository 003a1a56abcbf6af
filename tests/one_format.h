#pragma once

#include "lut/format_code.h"
#include "lut/table_kind.h"
#include "samples.h"

namespace samples {

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

/// Reads and writes small files of one format.
class OneFormat {
public:
    explicit OneFormat(tintwell::FormatCode code) : m_code(static_cast<int>(code)) {}

    tintwell::FormatCode code() const { return static_cast<tintwell::FormatCode>(m_code); }
    bool is3D() const { return Read_LUTFile::formatIs3D(m_code); }

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

    /// In the format's own orders, not the ones of the request.
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

    /// What the reader makes of a text: "SIZE: NUMBERS" with sample (0, 0, 1) of a lattice or all
    /// cells of a curve, and where the domain ends if not at 1; or "fails, SIZE".
    QString outcomeOf(const QByteArray& text, tintwell::TableKind kind) const {
        const bool lattice = kind == tintwell::TableKind::ThreeD;
        Read_LUTFile lut(nullptr);
        const bool reads = read(lut, text);
        const QString size = QString::number(lattice ? lut.size3D : lut.size1D);
        if (!reads) {
            return (lut.lastError.isEmpty() ? "fails silently, " : "fails, ") + size;
        }
        const QVector<float> values = !lattice           ? curve(lut)
                                      : lut.hasTable3D() ? sampleAt(lut, 0, 0, lut.size3D > 1)
                                                         : QVector<float>();
        const QVector<float> end = cell(lattice ? lut.domainMax3D : lut.domainMax1D);
        return size + ':' + inWords(values) +
               (end == QVector<float>{1, 1, 1} ? QString() : " to" + inWords(end));
    }

    /// Each of these texts has this outcome.
    void expect(tintwell::TableKind kind, const char* outcome, const QByteArrayList& texts) const {
        for (const QByteArray& text : texts) {
            const QString found = outcomeOf(text, kind);
            QVERIFY2(found == QString::fromUtf8(outcome),
                     qPrintable(QString::fromUtf8(text.left(400)) + "\nis read as " + found +
                                "\nexpected " + outcome));
        }
    }

private:
    static QString inWords(const QVector<float>& values) {
        QString words;
        for (const float value : values) {
            words += ' ' + QString::number(double(value), 'g', 5);
        }
        return words;
    }

    QByteArray written(Read_LUTFile& lut, LUTFILE_ST st, std::int64_t scale) const {
        st.outputScale = scale;
        return Write_LUTFile(nullptr).WriteFile(st, lut) ? m_folder.content(QStringLiteral("out"))
                                                         : QByteArrayLiteral("(failed)");
    }

    Folder m_folder;
    int m_code;
};

} // namespace samples

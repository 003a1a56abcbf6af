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

    /// What the reader makes of a text: "SIZE^3: NUMBERS" with sample (0, 0, 1) of a lattice, or
    /// the only one, "SIZE: NUMBERS" with all cells of a curve as stored, both, or "nothing"; and
    /// where a domain ends if not at 1. If it fails, "fails" with the sizes. Numbers have five
    /// digits.
    QString outcomeOf(const QByteArray& text) const {
        Read_LUTFile lut(nullptr);
        QStringList parts;
        if (!read(lut, text)) {
            parts += lut.lastError.isEmpty() ? "fails silently" : "fails";
        }
        if (lut.size3D != 0) {
            const QVector<float> sample =
                lut.hasTable3D() ? sampleAt(lut, 0, 0, lut.size3D > 1) : QVector<float>();
            parts += QStringLiteral("%1^3").arg(lut.size3D) + inWords(sample, lut.domainMax3D);
        }
        if (lut.size1D != 0) {
            parts += QString::number(lut.size1D) + inWords(curve(lut), lut.domainMax1D);
        }
        return parts.isEmpty() ? QStringLiteral("nothing") : parts.join(", ");
    }

    void expect(const char* outcome, const QByteArrayList& texts) const {
        for (const QByteArray& text : texts) {
            const QString found = outcomeOf(text);
            QVERIFY2(found == QString::fromUtf8(outcome),
                     qPrintable(QString::fromUtf8(text.left(400)) + "\nis read as " + found +
                                "\nexpected " + outcome));
        }
    }

private:
    static QString inWords(const QVector<float>& values, const float* domainEnd) {
        QString words = values.isEmpty() ? "" : ":";
        for (const float value : values) {
            words += ' ' + QString::number(double(value), 'g', 5);
        }
        if (!values.isEmpty() && cell(domainEnd) != QVector<float>{1, 1, 1}) {
            words += QStringLiteral(" to %1 %2 %3")
                         .arg(double(domainEnd[0]))
                         .arg(double(domainEnd[1]))
                         .arg(double(domainEnd[2]));
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

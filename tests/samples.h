#pragma once

#include "calc/make_table.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <clocale>
#include <functional>
#include <random>

namespace samples {

/// A folder for files made by one test.
class Folder {
public:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString file(const QString& name, const QByteArray& content) const {
        QFile::remove(path(name)); // faster than truncating it
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return file.fileName();
    }

    QByteArray content(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(no file)");
    }

private:
    QTemporaryDir m_folder;
};

/// A request to read a file: in the format's own orders, or in the given ones.
inline LUTFILE_ST request(const QString& path, int code) {
    LUTFILE_ST st;
    st.path = path;
    st.formatCode = code;
    return st;
}

inline LUTFILE_ST request(const QString& path, int code, bool dataOrder, bool tableOrder) {
    LUTFILE_ST st = request(path, code);
    st.defaultOrder = false;
    st.dataOrder = dataOrder;
    st.tableOrder = tableOrder;
    return st;
}

/// Gives a container a table whose cell (a, b, c) is \a value of it.
inline void fill3D(Read_LUTFile& lut, int size,
                   const std::function<QVector<float>(int, int, int)>& value) {
    QVERIFY(tintwell::makeZeros(lut, tintwell::TableKind::ThreeD, size));
    tintwell::visitLattice(size, [&](int i, int j, int k) {
        const QVector<float> cell = value(i, j, k);
        std::copy(cell.cbegin(), cell.cend(), lut.data3D[i][j][k]);
        return true;
    });
}

inline void fillRandom(Read_LUTFile& lut, int size, unsigned seed, float min = 0, float max = 1) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> real(min, max);
    fill3D(lut, size, [&](int, int, int) {
        return QVector<float>({real(random), real(random), real(random)});
    });
}

/// Gives a container a 1D table whose entry n is \a value of it.
inline void fill1D(Read_LUTFile& lut, int size, const std::function<QVector<float>(int)>& value) {
    QVERIFY(tintwell::makeZeros(lut, tintwell::TableKind::OneD, size));
    for (int n = 0; n < size; ++n) {
        const QVector<float> cell = value(n);
        std::copy(cell.cbegin(), cell.cend(), lut.data1D[n]);
    }
}

inline QVector<float> cell(const float* from) {
    return {from[0], from[1], from[2]};
}

/// Fails if a test run for the sake of a decimal comma does not have a locale with one.
inline void requireExpectedLocale() {
    std::setlocale(LC_ALL, "");
    const bool comma = std::localeconv()->decimal_point[0] == ',';
    QCOMPARE(comma, qEnvironmentVariableIsSet("TINTWELL_EXPECT_COMMA"));
}

} // namespace samples

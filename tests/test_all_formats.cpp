#include "format_samples.h"
#include "lut/lattice.h"
#include "one_format.h"

#include <QDir>

#include <cmath>

// The container, and what all formats have in common.

using tintwell::FormatCode;

namespace {

/// How two points or entries are written; for a lattice, its beginning.
struct Layout {
    FormatCode code;
    QByteArray reals;
    QByteArray thousandths = reals; ///< at a scale of 1000
    bool readsScale = false;        ///< its reader undoes the scale
};

QByteArray mgaHeader(const char* codes) {
    return "#HEADER\n#type: 3D cube file\n#format: 1.00\n#created:\n#owner: norvane\n#END\n\n"
           "channel\t3d\nin 8\nout" +
           QByteArray(codes) + "\n\nformat lut\n\nvalues\tred\tgreen\tblue\n";
}

QByteArray discreetHeader(const char* scale) {
    return "# Discreet LUT file\n#      Channels: 3\n# Input Samples: 2\n#   Ouput Scale: " +
           QByteArray(scale) + "\n#\n#Exported from norvane\n#\n\nLUT: 3 2\n";
}

QByteArray spi1DHeader(const char* to) {
    return "Version 1\nFrom 0.0 " + QByteArray(to) + "\nLength 2\nComponents 3\n{\n";
}

const Layout layouts[] = {
    {FormatCode::Cube,
     "TITLE \nLUT_3D_SIZE 2\n0.000000 0.000000 -0.007813\n0.500000 0.000000 -0.007813\n",
     "TITLE \nLUT_3D_SIZE 2\n0 0 -7 \n500 0 -7 \n"},
    {FormatCode::Mga,
     mgaHeader("\t1") + "0\t0.000000\t0.000000\t-0.007813\n1\t0.000000\t0.000000\t0.992188\n",
     mgaHeader(" 1001") + "0\t0\t0\t-7\t\n1\t0\t0\t992\t\n", true},
    {FormatCode::Discreet1D,
     discreetHeader("1") + "     0\n     1e-05\n     0.25\n     0.333333\n     1\n     -0.5\n",
     discreetHeader("1000") + "     0\n     0\n     250\n     333\n     1000\n     -500\n", true},
    {FormatCode::Plain1D, "Index\tRed\tGreen\tBlue\n0\t0\t0.25\t1\t\n1\t1e-05\t0.333333\t-0.5\t\n",
     "Index\tRed\tGreen\tBlue\n0\t0\t250\t1000\t\n1\t0\t333\t-500\t\n"},
    {FormatCode::DavLut, "# Authors: norvane\n\n3DLUTSIZE 2\n0.000000 0.000000 -0.007813\n"
                         "0.000000 0.000000 0.992188\n"},
    {FormatCode::Itx, "LUT_3D_SIZE 2\n0.000000 0.000000 -0.007813\n0.500000 0.000000 -0.007813\n"},
    {FormatCode::Spi1D, spi1DHeader("1") + "        0 0.25 1 \n        1e-05 0.333333 -0.5 \n}\n",
     spi1DHeader("1000") + "        0 250 1000 \n        0 333 -500 \n}\n", true},
    {FormatCode::Spi3D, "SPILUT 1.0\n3 3\n2 2 2\n0 0 0 0.000000 0.000000 -0.007813\n"
                        "0 0 1 0.000000 0.000000 0.992188\n"},
    {FormatCode::Csv, "0,\t0\n1,\t1e-05\n", "0,\t0\n1,\t0\n", true},
    {FormatCode::Nvx1D, "From 0.0 1.0\nLength 2\n0 0.25 1 \n1e-05 0.333333 -0.5 \n"},
    {FormatCode::Nvx3D,
     "From 0.0 1.0\nLength 2\n0.000000 0.000000 -0.007813\n0.000000 0.000000 0.992188\n"},
};

QString sampleFile(int code) {
    return QDir(QStringLiteral(TINTWELL_TEST_DATA))
        .filePath(QLatin1String(samples::sampleOf(code).file));
}

/// The value of every cell; reading them lets the sanitizers detect a table smaller than its size.
QVector<float> allValues(const Read_LUTFile& lut) {
    QVector<float> values = samples::curve(lut);
    tintwell::visitLattice(lut.data3D != nullptr ? lut.size3D : 0, [&](int i, int j, int k) {
        values += samples::cell(lut.data3D[i][j][k]);
        return true;
    });
    return values;
}

} // namespace

class TestAllFormats : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    void addFormats() {
        QTest::addColumn<int>("code");
        for (int code = 0; code < tintwell::formatCount; ++code) {
            QTest::newRow(samples::sampleOf(code).file) << code;
        }
    }

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void samplesRead_data() { addFormats(); }
    void samplesRead() {
        QFETCH(int, code);
        QCOMPARE(int(samples::sampleOf(code).code), code);
        const LUTFILE_ST st = samples::request(sampleFile(code), code);
        const bool tableOrder = samples::sampleOf(code).readerIsBlueFastest;
        Read_LUTFile probed(nullptr);
        probed.dataOrder = probed.tableOrder = false;
        QVERIFY(probed.ReadFile(st, true));
        QVERIFY(probed.data3D == nullptr && probed.data1D == nullptr);
        QVERIFY(probed.dataOrder);
        QCOMPARE(probed.tableOrder, tableOrder);

        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(st.path, code, false, false), false));
        QVERIFY(!lut.dataOrder && !lut.tableOrder);
        QVERIFY(lut.ReadFile(st, false));
        QCOMPARE(lut.tableOrder, tableOrder);
        QCOMPARE(lut.size3D > 0 && lut.data3D != nullptr, Read_LUTFile::formatIs3D(code));
        QCOMPARE(lut.size3D, probed.size3D);
        QCOMPARE(lut.size1D, probed.size1D);
        QVERIFY(allValues(lut).contains(1));
        QVERIFY(lut.ReadFile(st, true)); // leaves no old table
        QVERIFY(lut.data3D == nullptr && lut.data1D == nullptr);

        const LUTFILE_ST missing = samples::request(m_folder.path(QStringLiteral("no/x")), code);
        const bool isStrip = code == int(FormatCode::UnwrappedCube); // of no pixels
        QCOMPARE(lut.ReadFile(missing, true), isStrip);
        QCOMPARE(lut.ReadFile(missing, false), isStrip);
        Read_LUTFile none(nullptr);
        QVERIFY(!Write_LUTFile(nullptr).WriteFile(missing, none));
    }

    void allocationIsZeroFilledAndBounded() {
        float**** lattice = nullptr;
        float** curve = nullptr;
        Read_LUTFile::Data3DCalloc(&lattice, 0);
        Read_LUTFile::Data1DCalloc(&curve, -1);
        QVERIFY(lattice == nullptr && curve == nullptr);
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.dataOrder && lut.tableOrder);
        samples::fillRandom(lut, 3, 1);
        lut.size1D = Read_LUTFile::MaxSize1D;
        QVERIFY(lut.allocate3D() && lut.allocate1D()); // replacing the lattice
        QCOMPARE(samples::cell(lut.data3D[2][1][0]), QVector<float>({0, 0, 0}));
        lut.setSize3D(Read_LUTFile::MaxSize3D + 1);
        lut.setSize1D(Read_LUTFile::MaxSize1D + 1);
        QVERIFY(!lut.allocate3D() && !lut.allocate1D());
    }

    void refusesUnknownCodesAndMissingTables() {
        const QString path = m_folder.file(QStringLiteral("a.cube"), "LUT_3D_SIZE 2\n");
        const QString target = m_folder.path(QStringLiteral("b"));
        Read_LUTFile lut(nullptr);
        Write_LUTFile writer(nullptr);
        for (const int code : {-1, tintwell::formatCount}) {
            QVERIFY(Read_LUTFile::formatStr(code).isEmpty() && !Read_LUTFile::formatIs3D(code));
            QVERIFY(!lut.ReadFile(samples::request(path, code), true));
            QVERIFY(!writer.WriteFile(samples::request(target, code), lut));
        }
        QCOMPARE(Read_LUTFile::formatStr(15), QString::fromUtf8(".nvx1d norvane专用格式1D"));
        lut.size1D = lut.size3D = 3; // as after a probe
        for (int code = 0; code < tintwell::formatCount; ++code) {
            QVERIFY(!writer.WriteFile(samples::request(target, code), lut));
            QVERIFY(!writer.lastError.isEmpty());
        }
        lut.size1D = lut.size3D = 0;
        QVERIFY(!QFile::exists(target));
        QVERIFY(writer.WriteFile(samples::request(target, 0), lut));
        QVERIFY(writer.lastError.isEmpty());
    }

    /// The container frees everything it holds and keeps no trace of it. Checked by the sanitizer.
    void tablesLeaveTheContainer() {
        Read_LUTFile owner(nullptr);
        for (const int size : {7, 9, 5}) { // often at the same address
            Read_LUTFile lut(nullptr);
            lut.setSize3D(size + 1);
            QVERIFY(lut.allocate3D());
            lut.setSize3D(0);
            Read_LUTFile::Data3DCalloc(&lut.data3D, size);
            lut.size3D = size;
            lut.data3D[size - 1][size - 1][size - 1][2] = 1;
            if (size == 5) {
                owner.data3D = lut.data3D;
                owner.size3D = size;
                lut.size3D = 0; // not its own any more
            }
        }
        QCOMPARE(owner.data3D[4][4][4][2], 1.0F);
    }

    /// Such a file leaves the container unchanged: the result is whether it holds a table.
    void filesWithoutASize() {
        for (const FormatCode code : {FormatCode::DavLut, FormatCode::Itx, FormatCode::Spi3D}) {
            Read_LUTFile lut(nullptr);
            samples::fillRandom(lut, 3, 1);
            const QVector<float> before = allValues(lut);
            QVERIFY(samples::OneFormat(code).read(lut, "# 1 2 3\n", true));
            QVERIFY(samples::OneFormat(code).read(lut, "# 1 2 3\n", false));
            QCOMPARE(allValues(lut), before);
        }
    }

    void writersLayOutLines() {
        Read_LUTFile lut(nullptr);
        Read_LUTFile empty(nullptr);
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i) / 2, float(j) / 4, float(k) - 0.0078125F});
        });
        samples::fill1D(lut, 2, [](int n) {
            return n == 0 ? QVector<float>{0, 0.25F, 1} : QVector<float>{0.00001F, 1 / 3.0F, -0.5F};
        });
        for (const Layout& layout : layouts) {
            const samples::OneFormat file(layout.code);
            for (const int scale : {1, 1000}) {
                const QByteArray& expected = scale == 1 ? layout.reals : layout.thousandths;
                const QByteArray text = file.written(lut, scale);
                QCOMPARE(file.is3D() ? text.left(expected.size()) : text, expected);
                QCOMPARE(text.count('\n'), expected.count('\n') + (file.is3D() ? 6 : 0));
            }
        }
        QCOMPARE(samples::OneFormat(FormatCode::Cube).written(empty),
                 QByteArray("TITLE \nLUT_3D_SIZE 0\n"));
        const samples::OneFormat mga(FormatCode::Mga);
        QVERIFY(mga.written(empty, std::numeric_limits<std::int64_t>::max())
                    .contains("\nout 9223372036854775808\n"));
        QVERIFY(mga.written(empty, 0).contains("\nout 1\n")); // with a tab at scale 1
    }

    /// Every writer in every order, in sizes and scales that its reader understands.
    void roundTrips_data() {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(layouts)); ++row) {
            QTest::newRow(samples::sampleOf(int(layouts[row].code)).file) << row;
        }
    }
    void roundTrips() {
        QFETCH(int, row);
        const Layout& layout = layouts[row];
        const samples::OneFormat file(layout.code);
        const bool hasOneChannel = layout.code == FormatCode::Csv; // and no real numbers
        for (const int size : file.is3D() ? QVector<int>{1, 5, 33} : QVector<int>{256, 300}) {
            Read_LUTFile lut(nullptr);
            if (file.is3D()) {
                samples::fillRandom(lut, size, 1);
            } else {
                samples::fill1D(lut, size, [size](int n) { // the largest and the last number are 1
                    const float value = float(n) / float(size - 1);
                    return QVector<float>({value, 1 - value, value * value});
                });
            }
            const QVector<float> before = allValues(lut);
            for (int n = 0; n < 8; ++n) {
                const bool rgb = (n & 1) != 0;
                const bool ijk = (n & 2) != 0;
                const int scale = n >= 4 && layout.readsScale ? 4095 : 1;
                Read_LUTFile again(nullptr);
                // In a reader's curves, two unequal orders swap the channels.
                QVERIFY(file.readInOrders(again, file.writtenInOrders(lut, rgb, ijk, scale), rgb,
                                          !file.is3D() || ijk));
                const QVector<float> after = allValues(again);
                QCOMPARE(after.size(),
                         layout.code == FormatCode::Plain1D ? 3 * 256 : before.size());
                for (int at = 0; at < after.size() && (scale > 1 || !hasOneChannel); ++at) {
                    const float expected = before[hasOneChannel ? at / 3 * 3 : at];
                    QVERIFY(std::fabs(after[at] - expected) <= (scale > 1 ? 2.5e-4F : 5.1e-7F));
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestAllFormats)
#include "test_all_formats.moc"

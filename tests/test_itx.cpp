#include "samples.h"

// The course of a read is that of the DavLut format and tested there.

namespace {

constexpr int itx = 11;

QByteArray numbered(int count) {
    QByteArray text;
    for (int n = 0; n < count; ++n) {
        text += QByteArray::number(n / 32.0) + "\t0.5  0.25\r\n";
    }
    return text;
}

} // namespace

class TestItx : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    bool read(Read_LUTFile& lut, const QByteArray& text) {
        return lut.ReadFile(samples::request(m_folder.file(QStringLiteral("in.itx"), text), itx),
                            false);
    }

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    /// Whether the file \a text reads, and its size.
    void content_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::newRow("two points") << "LUT_3D_SIZE 2\r\n" + numbered(8) << true << 2;
        QTest::newRow("three points") << "# c\n\nLUT_3D_SIZE 3\n" + numbered(27) << true << 3;
        QTest::newRow("no keyword but the size")
            << "TITLE \"a\"\nDOMAIN_MAX 2 2 2\nLUT_1D_SIZE 9\nLUT_3D_SIZE 2\n" + numbered(8) << true
            << 2;
        QTest::newRow("size line without its blank")
            << "LUT_3D_SIZE2LUT_3D_SIZE\n" + numbered(8) << true << 2;
        QTest::newRow("last sample lacks") << "LUT_3D_SIZE 2\n" + numbered(7) << true << 2;
        QTest::newRow("two samples lack") << "LUT_3D_SIZE 2\n" + numbered(6) << false << 2;
        QTest::newRow("size in lower case") << "lut_3d_size 2\n" + numbered(8) << false << 0;
        QTest::newRow("keyword inside a line") << "A LUT_3D_SIZE 2\n" + numbered(8) << false << 0;
        QTest::newRow("another format's keyword") << "3DLUTSIZE 2\n" + numbered(8) << false << 0;
        QTest::newRow("size inferred from nothing") << numbered(8) << false << 0;
    }
    void content() {
        QFETCH(QByteArray, text);
        QFETCH(bool, reads);
        Read_LUTFile lut(nullptr);
        QCOMPARE(read(lut, text), reads);
        QTEST(lut.size3D, "size");
        for (int n = 0; reads && n < lut.size3D * lut.size3D * lut.size3D - 1; ++n) {
            const int i = n / (lut.size3D * lut.size3D);
            const int j = n / lut.size3D % lut.size3D;
            const float* const cell = lut.data3D[n % lut.size3D][j][i]; // the format's own order
            QCOMPARE(samples::cell(cell), QVector<float>({float(n) / 32, 0.5F, 0.25F}));
        }
    }

    void readsTheSample() {
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(
            samples::request(QStringLiteral(TINTWELL_TEST_DATA "/sample.itx"), itx), false));
        QCOMPARE(samples::cell(lut.data3D[1][1][0]), QVector<float>({0, 0.9F, 0.75F}));
    }

    void writes_data() {
        QTest::addColumn<bool>("defaultOrder");
        QTest::addColumn<int>("scale");
        QTest::addColumn<QByteArray>("lines");
        QTest::newRow("default orders: RGB, kji")
            << true << 1
            << QByteArray("0.000000 0.000000 0.000000\n1.000000 0.000000 0.000000\n"
                          "0.000000 0.500000 0.000000\n1.000000 0.500000 0.000000\n"
                          "0.000000 0.000000 0.250000\n1.000000 0.000000 0.250000\n"
                          "0.000000 0.500000 0.250000\n1.000000 0.500000 0.250000\n");
        QTest::newRow("BGR, ijk, integers asked for")
            << false << 1023
            << QByteArray("0.000000 0.000000 0.000000\n0.250000 0.000000 0.000000\n"
                          "0.000000 0.500000 0.000000\n0.250000 0.500000 0.000000\n"
                          "0.000000 0.000000 1.000000\n0.250000 0.000000 1.000000\n"
                          "0.000000 0.500000 1.000000\n0.250000 0.500000 1.000000\n");
    }
    void writes() {
        Read_LUTFile lut(nullptr);
        LUTFILE_ST st =
            samples::request(m_folder.path(QStringLiteral("out.itx")), itx, false, true);
        QVERIFY(Write_LUTFile(nullptr).WriteFile(st, lut));
        QCOMPARE(m_folder.content(QStringLiteral("out.itx")), QByteArray("LUT_3D_SIZE 0\n"));

        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i), float(j) / 2, float(k) / 4});
        });
        QFETCH(bool, defaultOrder);
        QFETCH(int, scale);
        QFETCH(QByteArray, lines);
        st.defaultOrder = defaultOrder;
        st.outputScale = scale;
        Write_LUTFile writer(nullptr);
        QVERIFY(writer.WriteFile(st, lut));
        QCOMPARE(m_folder.content(QStringLiteral("out.itx")), "LUT_3D_SIZE 2\n" + lines);
        QCOMPARE(int(writer.outputScale), 1);

        Read_LUTFile again(nullptr);
        QVERIFY(again.ReadFile(st, false));
        QCOMPARE(samples::cell(again.data3D[1][0][1]), samples::cell(lut.data3D[1][0][1]));
    }
};

QTEST_GUILESS_MAIN(TestItx)
#include "test_itx.moc"

#include "lut/lattice.h"
#include "one_format.h"

class TestNvx3D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{16};

    static QByteArray numbered(int count) {
        QByteArray text;
        for (int n = 0; n < count; ++n) {
            text += QByteArray::number(n / 32.0) + " 0.5 0.25\n";
        }
        return text;
    }

    /// The red of each point in the file's order.
    static QVector<float> reds(const Read_LUTFile& lut) {
        QVector<float> values;
        tintwell::visitLattice(lut.data3D != nullptr ? lut.size3D : 0, [&](int i, int j, int k) {
            values += lut.data3D[i][j][k][0] * 32;
            return true;
        });
        return values;
    }

private Q_SLOTS:
    void placesSamples_data() {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("dataOrder");
        QTest::addColumn<bool>("tableOrder");
        QTest::newRow("two points") << 2 << true << true;
        QTest::newRow("three points, BGR") << 3 << false << true;
        QTest::newRow("three points, kji") << 3 << true << false;
    }
    void placesSamples() {
        QFETCH(int, size);
        QFETCH(bool, dataOrder);
        QFETCH(bool, tableOrder);
        const int points = size * size * size;
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(
            lut, "From 0.0 1.0\nLength " + QByteArray::number(size) + '\n' + numbered(points),
            dataOrder, tableOrder));
        for (int n = 0; n < points; ++n) {
            const int i = n / (size * size);
            const int j = n / size % size;
            const int k = n % size;
            const float* const cell = tableOrder ? lut.data3D[i][j][k] : lut.data3D[k][j][i];
            QCOMPARE(cell[dataOrder ? 0 : 2], float(n) / 32);
            QCOMPARE(cell[1], 0.5F);
            QCOMPARE(cell[dataOrder ? 2 : 0], 0.25F);
        }
    }

    void everyLineTakesAPoint_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVector<float>>("values");
        const auto row = [](const char* name, const QByteArray& text,
                            const QVector<float>& values) {
            QTest::newRow(name) << text << values;
        };
        const QByteArray header = "Length 2\n";
        row("plain", header + numbered(8), {0, 1, 2, 3, 4, 5, 6, 7});
        row("as other systems write it",
            "\xEF\xBB\xBF# c\r\n\r\n From 0\t1\r\nLength  2\r\n" +
                numbered(8).replace("\n", "\r\n"),
            {0, 1, 2, 3, 4, 5, 6, 7});
        row("blank line", header + numbered(2) + '\n' + numbered(6), {0, 1, 0, 0, 1, 2, 3, 4});
        row("text and comment", header + "From 0 9\n#1\n" + numbered(8), {0, 0, 0, 1, 2, 3, 4, 5});
        row("short", header + numbered(3), {0, 1, 2, 0, 0, 0, 0, 0});
        row("no body", "Length 2", {0, 0, 0, 0, 0, 0, 0, 0});
        row("long", header + numbered(20), {0, 1, 2, 3, 4, 5, 6, 7});
        row("domain divides", "From 0 4\n" + header + "2\n9\n-1", {16, 32, 0, 0, 0, 0, 0, 0});
    }
    void everyLineTakesAPoint() {
        QFETCH(QByteArray, text);
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, text));
        QTEST(reds(lut), "values");
        QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
    }

    void partialLinesKeepTheRest() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "From 0 1023\nLength 2\n1023 0 511.5\n\n0 1023\n"));
        QCOMPARE(samples::cell(lut.data3D[0][0][0]), QVector<float>({1, 0, 0.5F}));
        QCOMPARE(samples::cell(lut.data3D[0][0][1]), QVector<float>({0, 0, 0}));
        QCOMPARE(samples::cell(lut.data3D[0][1][0]), QVector<float>({0, 1, 0.5F}));
    }

    void badLengths_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("probes");
        QTest::newRow("none") << QByteArray("From 0 1\n0 0 0\n") << false;
        QTest::newRow("zero") << QByteArray("Length 0\nLength 2\n") << false;
        QTest::newRow("negative") << QByteArray("Length -2\n") << false;
        QTest::newRow("without its blank") << QByteArray("Length\t2\n") << false;
        QTest::newRow("beyond a full read") << QByteArray("Length 257\n") << true;
        QTest::newRow("beyond what the file fills") << QByteArray("Length 256\n") << true;
    }
    void badLengths() {
        QFETCH(QByteArray, text);
        Read_LUTFile lut(nullptr);
        QVERIFY(!m_format.read(lut, text));
        QVERIFY(lut.data3D == nullptr);
        Read_LUTFile probed(nullptr);
        QTEST(m_format.read(probed, text, true), "probes");
    }

    void probesTheHeader() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "From 0.5 4\nLength 65\n", true));
        QCOMPARE(lut.size3D, 65);
        QVERIFY(lut.data3D == nullptr);
        QCOMPARE(samples::cell(lut.domainMin3D), QVector<float>(3, 0.5F));
        QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>(3, 4));
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        QCOMPARE(m_format.written(lut), QByteArray("From 0.0 1.0\nLength 0\n"));
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i) / 2, float(j) / 4, float(k) - 0.0078125F});
        });
        const QByteArray header = "From 0.0 1.0\nLength 2\n";
        QCOMPARE(m_format.written(lut),
                 header + "0.000000 0.000000 -0.007813\n0.000000 0.000000 0.992188\n"
                          "0.000000 0.250000 -0.007813\n0.000000 0.250000 0.992188\n"
                          "0.500000 0.000000 -0.007813\n0.500000 0.000000 0.992188\n"
                          "0.500000 0.250000 -0.007813\n0.500000 0.250000 0.992188\n");
        QCOMPARE(m_format.writtenInOrders(lut, false, false, 1023), // real numbers at any scale
                 header + "-0.007813 0.000000 0.000000\n-0.007813 0.000000 0.500000\n"
                          "-0.007813 0.250000 0.000000\n-0.007813 0.250000 0.500000\n"
                          "0.992188 0.000000 0.000000\n0.992188 0.000000 0.500000\n"
                          "0.992188 0.250000 0.000000\n0.992188 0.250000 0.500000\n");
    }

    void readsBackWhatItWrites() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "Length 3\n" + numbered(27)));
        Read_LUTFile again(nullptr);
        QVERIFY(m_format.read(again, m_format.written(lut)));
        QCOMPARE(reds(again), reds(lut));
    }
};

QTEST_GUILESS_MAIN(TestNvx3D)
#include "test_nvx3d.moc"

#include "one_format.h"

class TestNvx1D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{15};

private Q_SLOTS:
    void reads_data() {
        samples::curveColumns();
        using samples::curveRow;
        const QByteArray header = "From 0.0 1.0\nLength 2\n";
        const QVector<float> cells = {0, 0.25F, 0.5F, 1, 0.5F, 0.75F};
        curveRow("two entries", header + "0 0.25 0.5\n1 0.5 0.75\n", true, 2, cells);
        curveRow("one entry, no domain", "Length 1\n1 0.5 0", true, 1, {1, 0.5F, 0});
        curveRow("as other systems write it",
                 "\xEF\xBB\xBF# From 0 9\r\n\r\n  From 0\t1\r\nfrom 0 7\r\n Length  2\r\n# c\r\n"
                 "\t0  .25\t.5\r\n\r\nFrom 0 9\r\n1 .5 .75\r\nend 1\r\n",
                 true, 2, cells);
        curveRow("domain divides", "From 0 1023\nLength 1\n1023 512 0\n", true, 1,
                 {1, 512.0F / 1023, 0});
        curveRow("domain divides without subtracting", "From 0.5 1\nLength 1\n0.75 9 -9\n", true, 1,
                 {1.5F, 2, 1});
        curveRow("last domain wins", "From 0 9\nFrom 0 4\nLength 1\n4 2 1\n", true, 1,
                 {1, 0.5F, 0.25F});
        curveRow("an unreadable domain is none",
                 "From 0 4\nFrom x\nFrom\t0 9\nFrom\nLength 1\n4 2 1\n", true, 1, {1, 0.5F, 0.25F});
        curveRow("a domain of one number keeps the other end",
                 "From 0 4\nFrom 1\nLength 1\n3 4 1.5\n", true, 1, {1, 4.0F / 3, 0.5F});
        curveRow("keyword removed wherever it stands",
                 "FromFrom 0 4\nFrom From 0 From 4\nLength Length 1\n"
                 "4 2 1\n",
                 true, 1, {1, 0.5F, 0.25F});
        curveRow("partial lines keep the rest", header + "0.5\n1 0.25\n", true, 2,
                 {0.5F, 0, 0, 1, 0.25F, 0});
        curveRow("read in single precision", "Length 1\n0.50000002980232238770 0 0\n", true, 1,
                 {0.50000005960464478F, 0, 0});
        curveRow("one line fewer", header + "0 0 0\n", false, 2);
        curveRow("one line more", header + "0 0 0\n1 1 1\n0\n", false, 2);
        curveRow("many lines more", header + QByteArray("1 1 1\n").repeated(99), false, 2);
        curveRow("no length", "From 0 1\n0 0 0\n", false, 0);
        curveRow("length zero", "Length 0\nLength 1\n0 0 0\n", false, 0);
        curveRow("length without its blank", "Length\t1\n0 0 0\n", false, 0);
        curveRow("length negative", "Length -1\n", false, -1);
        curveRow("length too large", "Length 1048577\n0 0 0\n", false, 1048577);
        curveRow("nothing", "", false, 0);
    }
    void reads() { samples::compareCurve(m_format); }

    void differingOrdersSwapChannels() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, "Length 1\n1 0.5 0\n", true, false));
        QCOMPARE(samples::curve(lut), QVector<float>({0, 0.5F, 1}));
    }

    /// A failed body leaves the table and the domain as far as they came.
    void failureKeepsTheDomain() {
        Read_LUTFile lut(nullptr);
        QVERIFY(!m_format.read(lut, "From 0 4\nLength 2\n4 2 1\n"));
        QCOMPARE(samples::curve(lut), QVector<float>({1, 0.5F, 0.25F, 0, 0, 0}));
        QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>(3, 4));
    }

    void probesTheHeader() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "From 0.5 4\nLength 9999999\n", true));
        QCOMPARE(lut.size1D, 9999999);
        QVERIFY(lut.data1D == nullptr);
        QCOMPARE(samples::cell(lut.domainMin1D), QVector<float>(3, 0.5F));
        QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>(3, 4));
        Read_LUTFile none(nullptr);
        QVERIFY(!m_format.read(none, "From 0 1\nLength 0\n", true));
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        QCOMPARE(m_format.written(lut), QByteArray("From 0.0 1.0\nLength 0\n"));
        samples::fill1D(lut, {0, 0.25F, 1, 0.00001F, 0.3333333F, -0.5F});
        const QByteArray header = "From 0.0 1.0\nLength 2\n";
        QCOMPARE(m_format.written(lut), header + "0 0.25 1 \n1e-05 0.333333 -0.5 \n");
        QCOMPARE(m_format.writtenInOrders(lut, false, true, 1023), // real numbers at any scale
                 header + "1 0.25 0 \n-0.5 0.333333 1e-05 \n");
    }

    void readsBackWhatItWrites() {
        const QVector<float> values = {0, 0.25F, 1, 0.5F, 0.125F, 0.0078125F};
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, values);
        Read_LUTFile again(nullptr);
        QVERIFY(m_format.read(again, m_format.written(lut)));
        QCOMPARE(samples::curve(again), values);
    }
};

QTEST_GUILESS_MAIN(TestNvx1D)
#include "test_nvx1d.moc"

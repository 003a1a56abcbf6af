#include "one_format.h"

class TestSpi1D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{12};

private Q_SLOTS:
    /// The reader's own orders differ: cells are blue, green, red.
    void reads_data() {
        samples::curveColumns();
        using samples::curveRow;
        const QByteArray length2 = "Version 1\nFrom 0.0 1.0\nLength 2\n";
        const QByteArray three = length2 + "Components 3\n{\n";
        const QVector<float> cells = {0.5F, 0.25F, 0, 0.75F, 0.5F, 1};
        curveRow("three components", three + "  0 0.25 0.5\n  1 0.5 0.75\n}\n", true, 2, cells);
        curveRow("two components", length2 + "Components 2\n{\n0 0.25\n1 0.5 0.75\n}\n", true, 2,
                 {0, 0.25F, 0, 0, 0.5F, 1});
        curveRow("one component", "Length 3\nComponents 1\n{\n0\n0.5 1\n1\n}\n", true, 3,
                 {0, 0, 0, 0.5F, 0.5F, 0.5F, 1, 1, 1});
        curveRow(
            "as other systems write it",
            "\xEF\xBB\xBF# c\r\nVersion\t1\r\nComponents\t3\r\n\r\nFrom\t0\t1\r\nLength\t2\r\n{\r\n"
            "\t0  .25\t.5\r\n\r\n}\r\n# c\r\n\t1 .5 .75\r\n",
            true, 2, cells);
        curveRow("integer samples", "From 0.0 4095\nLength 1\nComponents 3\n{\n4095 5000 -3\n}",
                 true, 1, {0, 1, 1});
        curveRow("domain divides without subtracting",
                 "From -0.125 1.125\nLength 1\nComponents 3\n{\n0.5 -1 2\n}", true, 1,
                 {0.9F, -0.1F, 0.4F});
        curveRow("a range of one number is a minimum",
                 "From 0.5\nLength 1\nComponents 1\n{\n0.25\n}", true, 1, {1, 1, 1});
        curveRow("keywords without blanks", "Length1\nComponents1\n{\n1\n", true, 1, {1, 1, 1});
        curveRow("last keyword wins", "Length 3\nComponents 1\n" + three + "0 .25 .5\n1 .5 .75\n",
                 true, 2, cells);
        curveRow("partial line keeps the rest", three + "0 0.25 0.5\n1\n", true, 2,
                 {0.5F, 0.25F, 0, 0.5F, 0.25F, 1});
        curveRow("read in double precision, then narrowed",
                 "Length 1\nComponents 1\n{\n0.50000002980232238770\n", true, 1,
                 {0.5F, 0.5F, 0.5F});
        curveRow("last lacks", three + "1 1 1\n}\n", true, 2, {1, 1, 1, 0, 0, 0});
        curveRow("two lack", three + "}\n", false, 2);
        curveRow("too many", three + "0 0.25 0.5\n1 0.5 0.75\n1 1 1\n", true, 2, cells);
        curveRow("no components", length2 + "{\n1 1 1\n", true, 2, {0, 0, 0, 0, 0, 0});
        curveRow("components unreadable", length2 + "Components x\n{\n1 1 1\n", true, 2,
                 {0, 0, 0, 0, 0, 0});
        curveRow("too many components", length2 + "Components 4\n{\n1 1 1 1\n1 1 1 1\n", false, 2);
        curveRow("header ends at a bad range", "Length 1\nComponents 1\nFrom x\nLength 2\n0.5\n",
                 true, 1, {0.5F, 0.5F, 0.5F});
        curveRow("no length", "Components 3\n{\n1 1 1\n", false, 0);
        curveRow("length unreadable", "Length {\nLength 1\n", false, 0);
        curveRow("length zero", "Length 0\nComponents 3\n{\n}\n", false, 0);
        curveRow("length too large", "Length 1048577\nComponents 1\n{\n1\n", false, 1048577);
        curveRow("nothing", "", false, 0);
    }
    void reads() { samples::compareCurve(m_format); }

    void agreeingOrdersKeepChannels() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, "Length 1\nComponents 3\n{\n0 0.5 1\n", false, false));
        QCOMPARE(samples::curve(lut), QVector<float>({0, 0.5F, 1}));
    }

    void probesTheHeader() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "From 0.5 4\nLength 9999999\n", true));
        QCOMPARE(lut.size1D, 9999999);
        QVERIFY(lut.data1D == nullptr);
        QCOMPARE(samples::cell(lut.domainMin1D), QVector<float>(3, 0.5F));
        QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>(3, 1));
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        const QByteArray header = "Version 1\nFrom 0.0 1\nLength ";
        QCOMPARE(m_format.written(lut), header + "0\nComponents 3\n{\n}\n");
        samples::fill1D(lut, {0, 0.25F, 1, 0.00001F, 0.3333333F, -0.5F});
        QCOMPARE(m_format.written(lut), header + "2\nComponents 3\n{\n"
                                                 "        0 0.25 1 \n"
                                                 "        1e-05 0.333333 -0.5 \n}\n");
        QCOMPARE(m_format.writtenInOrders(lut, false, true, 4095),
                 QByteArray("Version 1\nFrom 0.0 4095\nLength 2\nComponents 3\n{\n"
                            "        4095 1023 0 \n"
                            "        -2047 1364 0 \n}\n"));
    }

    void readsBackWhatItWrites() {
        const QVector<float> values = {0, 0.25F, 1, 0.5F, 0.125F, 0.0078125F};
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, values);
        Read_LUTFile again(nullptr);
        QVERIFY(m_format.readInOrders(again, m_format.written(lut), true, true));
        QCOMPARE(samples::curve(again), values);
    }
};

QTEST_GUILESS_MAIN(TestSpi1D)
#include "test_spi1d.moc"

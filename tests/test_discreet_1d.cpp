#include "one_format.h"

#include <cmath>

class TestDiscreet1D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{6};

private Q_SLOTS:
    void reads_data() {
        samples::textColumns();
        using samples::textRow;
        const QVector<float> cells = {0, 0.25F, 0.5F, 1, 0.75F, 0.125F};
        textRow("channel by channel", "LUT: 3 2\n0\n8\n2\n6\n4\n1\n", true, 2, cells);
        textRow(
            "as other systems write it",
            "\xEF\xBB\xBF# Discreet\r\n\r\nLUT:\t3\t2\r\n# red\r\n\t0\r\n8\r\n\r\nend 9\r\n2 \r\n"
            "#7\r\n6\r\n4\r\n1",
            true, 2, cells);
        textRow("numbers before the size line are ignored", "9\nLUT: 3 1\n1\n1\n1\n", true, 1,
                {1, 1, 1});
        textRow("blanks inside numbers",
                "LUT: 3 1\n1 000\n5\t00\n2\xC2\xA0"
                "50 \n",
                true, 1, {1, 0.5F, 0.25F});
        textRow("real numbers, normalised too", "LUT: 3 1\n.5\n1e-1x\n+0.25\n", true, 1,
                {1, 0.2F, 0.5F});
        textRow("below zero", "LUT: 3 1\n-4\n2\n1\n", true, 1, {0, 1, 0.5F});
        textRow("too many values, the largest among them", "LUT: 3 1\n1\n2\n4\n8\n16\n", true, 1,
                {0.25F, 0.5F, 1});
        textRow("in double precision, then narrowed",
                "LUT: 3 1\n1\n0.500000029802322387695312501\n0\n", true, 1, {1, 0.5F, 0});
        textRow("too few values", "LUT: 3 2\n0\n2\n1\n", true, 2, {0, 0.5F, 0, 1, 0, 0});
        textRow("only the first size line counts", "LUT: 3 1\n1\nLUT: 1 5\n1\n1\n", true, 1,
                {1, 1, 1});
        textRow("keyword removed wherever it is", "LUT:LUT: 3 LUT: 1\n1\n1\n1\n", true, 1,
                {1, 1, 1});
        textRow("one channel", "LUT: 1 2\n0\n1\nLUT: 3 2\n", false, 0);
        textRow("no size", "LUT: 3\n1\n", false, 0);
        textRow("no numbers", "LUT:\nLUT: 3 1\n1\n", false, 0);
        textRow("size zero", "LUT: 3 0\n1\n", false, 0);
        textRow("size negative", "LUT: 3 -1\n1\n", false, -1);
        textRow("size too large", "LUT: 3 1048577\n1\n", false, 1048577);
        textRow("other case", "lut: 3 1\n1\n1\n1\n", false, 0);
    }
    void reads() { samples::compareCurve(m_format); }

    void zerosHaveNoScale() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "LUT: 3 1\n0\n0\n0\n"));
        QVERIFY(std::isnan(lut.data1D[0][0]));
        QCOMPARE(lut.domainMax1D[0], 1.0F);
    }

    void differingOrdersSwapChannels() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, "LUT: 3 1\n1\n2\n4\n", false, true));
        QCOMPARE(samples::curve(lut), QVector<float>({1, 0.5F, 0.25F}));
    }

    void probes() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "#\nLUT: 3 9999999\n", true));
        QCOMPARE(lut.size1D, 9999999);
        QVERIFY(lut.data1D == nullptr);
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, {0, 0.25F, 1, 0.00001F, 0.3333333F, -0.5F});
        const auto header = [](const QByteArray& size, const QByteArray& scale) {
            return "# Discreet LUT file\n#      Channels: 3\n# Input Samples: " + size +
                   "\n#   Ouput Scale: " + scale + "\n#\n#Exported from norvane\n#\n\nLUT: 3 " +
                   size + '\n';
        };
        QCOMPARE(m_format.written(lut), header("2", "1") +
                                            "     0\n     1e-05\n     0.25\n     0.333333\n"
                                            "     1\n     -0.5\n");
        QCOMPARE(m_format.writtenInOrders(lut, false, true, 0),
                 header("2", "0") + "     1\n     -0.5\n     0.25\n     0.333333\n"
                                    "     0\n     1e-05\n");
        QCOMPARE(m_format.writtenInOrders(lut, true, false, 4095),
                 header("2", "4095") + "     0\n     0\n     1023\n     1364\n"
                                       "     4095\n     -2047\n");
        Read_LUTFile empty(nullptr);
        QCOMPARE(m_format.written(empty, 1023), header("0", "1023"));
    }
};

QTEST_GUILESS_MAIN(TestDiscreet1D)
#include "test_discreet_1d.moc"

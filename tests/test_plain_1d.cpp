#include "one_format.h"

#include <cmath>

class TestPlain1D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{7};

    /// Entry n is n / 256 and its fractions; \a end parts the lines.
    static QByteArray entries(int count, const char* end = "\n") {
        QByteArray text;
        for (int n = 0; n < count; ++n) {
            text += QByteArray::number(n);
            for (const double part : {1.0, 0.5, 0.25}) {
                text += '\t' + QByteArray::number(n / 256.0 * part, 'f', 10);
            }
            text += end;
        }
        return text;
    }

    static QVector<float> entry(int n) { return {float(n) / 256, float(n) / 512, float(n) / 1024}; }

private Q_SLOTS:
    /// Whether a file reads, and what becomes of its first and its last entry.
    void reads_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<QVector<float>>("first");
        QTest::addColumn<QVector<float>>("last");
        const auto row = [](const char* name, const QByteArray& text, bool reads,
                            const QVector<float>& first, const QVector<float>& last) {
            QTest::newRow(name) << text << reads << first << last;
        };
        const QByteArray header = "Index\tRed\tGreen\tBlue\n";
        const QVector<float> black = {0, 0, 0};
        row("plain", header + entries(256), true, black, entry(255));
        row("as other systems write it",
            "\xEF\xBB\xBF# c\r\n" + header + "\r\n" + entries(256, "\r\n"), true, black,
            entry(255));
        row("other lines between", "Red 1 2\n0 1 1 1\n#1 1 1 1\n\nIndex 1\n" + entries(255), true,
            {1, 1, 1}, entry(254));
        row("in the order of lines", "7.5 1 .5 .25\n" + entries(255), true, {1, 0.5F, 0.25F},
            entry(254));
        row("clamped", "0 1.5 -0.2 0.5\n" + entries(255), true, {1, 0, 0.5F}, entry(254));
        row("partial lines keep the rest", "0 0.5\n" + entries(254) + "254 0.75", true,
            {0.5F, 0, 0}, {0.75F, 253.0F / 512, 253.0F / 1024});
        row("an index alone", entries(255) + "255\n", true, black, entry(254));
        row("last lacks", entries(255), true, black, black);
        row("two lack", entries(254), false, black, black);
        row("nothing", "", false, black, black);
        row("too many", entries(300), true, black, entry(255));
    }
    void reads() {
        QFETCH(QByteArray, text);
        Read_LUTFile lut(nullptr);
        QTEST(m_format.read(lut, text), "reads");
        QCOMPARE(lut.size1D, 256);
        QTEST(samples::cell(lut.data1D[0]), "first");
        QTEST(samples::cell(lut.data1D[255]), "last");
    }

    void differingOrdersSwapChannels() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, entries(256), true, false));
        QCOMPARE(samples::cell(lut.data1D[128]), QVector<float>({0.125F, 0.25F, 0.5F}));
    }

    void probeReadsNothing() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "", true));
        QCOMPARE(lut.size1D, 256);
        QVERIFY(lut.data1D == nullptr);
        Read_LUTFile none(nullptr);
        QVERIFY(!none.ReadFile(samples::request(QStringLiteral("/no/such"), 7), true));
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        const QByteArray header = "Index\tRed\tGreen\tBlue\n";
        QCOMPARE(m_format.written(lut), header);
        samples::fill1D(lut, {0, 0.25F, 1, 0.00001F, 0.3333333F, -0.5F});
        QCOMPARE(m_format.written(lut), header + "0\t0\t0.25\t1\t\n1\t1e-05\t0.333333\t-0.5\t\n");
        QCOMPARE(m_format.writtenInOrders(lut, false, true),
                 header + "0\t1\t0.25\t0\t\n1\t-0.5\t0.333333\t1e-05\t\n");
        QCOMPARE(m_format.writtenInOrders(lut, false, false, 1000),
                 header + "0\t1000\t250\t0\t\n1\t-500\t333\t0\t\n");
    }

    void readsBackWhatItWrites() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, entries(256)));
        Read_LUTFile again(nullptr);
        QVERIFY(m_format.read(again, m_format.written(lut)));
        for (int n = 0; n < 256; ++n) {
            for (int c = 0; c < 3; ++c) {
                QVERIFY(std::fabs(again.data1D[n][c] - lut.data1D[n][c]) <= 1e-6F);
            }
        }
    }

    /// Longer tables are written whole, and read again as far as 256 entries go.
    void longerTables() {
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, QVector<float>(3 * 1024, 0.5F));
        const QByteArray text = m_format.written(lut);
        QCOMPARE(text.count('\n'), 1025);
        Read_LUTFile again(nullptr);
        QVERIFY(m_format.read(again, text));
        QCOMPARE(samples::curve(again), QVector<float>(3 * 256, 0.5F));
    }
};

QTEST_GUILESS_MAIN(TestPlain1D)
#include "test_plain_1d.moc"

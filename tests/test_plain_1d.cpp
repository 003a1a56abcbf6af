#include "one_format.h"

class TestPlain1D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{7};

    /// Lines of an index and the samples numbered by it.
    static QByteArray entries(int count) {
        QByteArray text;
        for (int n = 0; n < count; ++n) {
            text += QByteArray::number(n) + '\t' + QByteArray::number(n / 256.0, 'f', 8) +
                    "\t0.5\t0.25\n";
        }
        return text;
    }

private Q_SLOTS:
    /// The expected first and last entries.
    void reads_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVector<float>>("first");
        QTest::addColumn<int>("last");
        const QVector<float> first = {0, 0.5F, 0.25F};
        QTest::newRow("other lines between")
            << "Red 1 2\n#1 1 1 1\n\nIndex 1\n" + entries(256) << first << 255;
        QTest::newRow("in the order of lines")
            << "7.5 1 .5 .25\n" + entries(255) << QVector<float>({1, 0.5F, 0.25F}) << 254;
        QTest::newRow("clamped") << "0 1.5 -0.2 0.5\n" + entries(255)
                                 << QVector<float>({1, 0, 0.5F}) << 254;
        QTest::newRow("an index alone") << "0\n" + entries(255) << QVector<float>({0, 0, 0}) << 254;
        QTest::newRow("too many") << entries(300) << first << 255;
    }
    void reads() {
        QFETCH(QByteArray, text);
        QFETCH(int, last);
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, text));
        QTEST(samples::cell(lut.data1D[0]), "first");
        QCOMPARE(samples::cell(lut.data1D[255]), QVector<float>({float(last) / 256, 0.5F, 0.25F}));
    }

    void probeReadsNothing() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "", true));
        QCOMPARE(lut.size1D, 256);
        QVERIFY(!m_format.read(lut, ""));
    }

    /// Longer tables are written completely, but only the first 256 entries are read.
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

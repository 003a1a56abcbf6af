#include "one_format.h"

class TestCsv : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{14};

    static QByteArray ramp(int size) {
        QByteArray text;
        for (int n = 0; n < size; ++n) {
            text += QByteArray::number(n) + ",\t" + QByteArray::number(n) + '\n';
        }
        return text;
    }

    /// The first channel of each cell; the others must be the same.
    static QVector<float> grey(const Read_LUTFile& lut) {
        QVector<float> values;
        for (int n = 0; n < lut.size1D; ++n) {
            const float* const cell = lut.data1D[n];
            values += cell[0] == cell[1] && cell[1] == cell[2] ? cell[0] : -1;
        }
        return values;
    }

private Q_SLOTS:
    void reads_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVector<float>>("values");
        const auto row = [](const char* name, const QByteArray& text,
                            const QVector<float>& values) {
            QTest::newRow(name) << text << values;
        };
        const QVector<float> values = {0, 1.0F / 3, 1};
        row("plain", "0,\t0\n1,\t1\n2,\t3\n", values);
        row("as other systems write it",
            "\xEF\xBB\xBFIndex,Code\r\n\r\n0,0\r\n  1, \t 1 9\r\n\r\n2,\t+3.75", values);
        row("in any order", "2,3\n0,0\n1,1\n0,0\n2,3\n", {0, 1.0F / 3, 1, 0, 0});
        row("an index left out", "0,1\n2,0\n1", {1, 0, 0});
        row("an index alone carries the code before", "0,2\n1\n2 ,0\n3,x\n4,3\n",
            {2.0F / 3, 2.0F / 3, 2.0F / 3, 2.0F / 3, 1});
        row("an index alone at first carries the last code", "0\n1,1\n2,3\n", {1, 1.0F / 3, 1});
        row("the place after the last", "0,1\n2,1\n", {1, 0});
        row("places outside count, and their codes carry", "-1,0\n0,1\n9,3\n1\n",
            {1.0F / 3, 1, 0, 0});
        row("clamped", "0,-5\n1,9\n2,3\n", {0, 1, 1});
        row("no code anywhere", "0\n1\n", {0, 0});
        row("no line that counts", "Index\n,1\n#0,1\n", {});
        row("nothing", "", {});
    }
    void reads() {
        QFETCH(QByteArray, text);
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, text));
        QTEST(grey(lut), "values");
        QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>({1, 1, 1}));
    }

    /// A probe leaves full scale in the domain.
    void lastCodeGivesTheScale_data() {
        QTest::addColumn<QByteArray>("lastCode");
        QTest::addColumn<float>("scale");
        QTest::newRow("negative") << QByteArray("-7") << 1.0F;
        QTest::newRow("one") << QByteArray("1") << 1.0F;
        QTest::newRow("two") << QByteArray("2") << 1.0F;
        QTest::newRow("three") << QByteArray("3") << 3.0F;
        QTest::newRow("1023") << QByteArray("1023") << 1023.0F;
        QTest::newRow("a power of two") << QByteArray("1024") << 1023.0F;
        QTest::newRow("one above") << QByteArray("1025") << 2047.0F;
        QTest::newRow("4000") << QByteArray("4000") << 4095.0F;
        QTest::newRow("4095") << QByteArray("4095") << 4095.0F;
        QTest::newRow("largest") << QByteArray("2147483647") << 2147483648.0F;
        QTest::newRow("none on the last line") << QByteArray("63\n256") << 63.0F;
    }
    void lastCodeGivesTheScale() {
        QFETCH(QByteArray, lastCode);
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, ramp(255) + "255," + lastCode, true));
        QTEST(lut.domainMax1D[0], "scale");
        QTEST(lut.domainMax1D[2], "scale");
        QVERIFY(lut.data1D == nullptr);
    }

    void probeAsksFor256Lines() {
        Read_LUTFile few(nullptr);
        QVERIFY(!m_format.read(few, ramp(255) + "\nIndex\n", true));
        QCOMPARE(few.size1D, 255);
        Read_LUTFile enough(nullptr);
        QVERIFY(m_format.read(enough, ramp(256), true));
        QCOMPARE(enough.size1D, 256);
    }

    void refusesTooManyLines() {
        Read_LUTFile lut(nullptr);
        QVERIFY(!m_format.read(lut, QByteArray("0\n").repeated(Read_LUTFile::MaxSize1D + 1)));
        QVERIFY(lut.data1D == nullptr);
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        QCOMPARE(m_format.written(lut), QByteArray());
        samples::fill1D(lut, {0.5F, 0, 0, 0.00001F, 1, 1, 1, 0, 0, -0.3333333F, 0, 0});
        const QByteArray real = "0,\t0.5\n1,\t1e-05\n2,\t1\n3,\t-0.333333\n";
        QCOMPARE(m_format.written(lut), real);
        QCOMPARE(m_format.writtenInOrders(lut, false, true), real);
        QCOMPARE(m_format.writtenInOrders(lut, false, false, 1023),
                 QByteArray("0,\t511\n1,\t0\n2,\t1023\n3,\t-340\n"));
    }

    void readsBackWhatItWrites() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, ramp(256)));
        QCOMPARE(m_format.written(lut, 255), ramp(256));
        Read_LUTFile again(nullptr);
        QVERIFY(m_format.read(again, m_format.written(lut)));
        QCOMPARE(grey(again), QVector<float>(255, 0) + QVector<float>(1, 1)); // integer parts only
    }
};

QTEST_GUILESS_MAIN(TestCsv)
#include "test_csv.moc"

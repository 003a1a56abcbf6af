#include "one_format.h"

#include <limits>

namespace {

/// Samples numbered in file order by their first channel.
QByteArray numbered(int from, int to) {
    QByteArray text;
    for (int n = from; n < to; ++n) {
        text += QByteArray::number(n) + " 2 4\n";
    }
    return text;
}

QVector<float> second(float scale) {
    return {1 / scale, 2 / scale, 4 / scale};
}

} // namespace

class TestThreeDl : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{3};

private Q_SLOTS:
    void lattice_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray shaper = "0 1023\n";
        const QByteArray eight = numbered(0, 8);

        textRow("size by the shaper", shaper + eight, true, 2, second(7));
        textRow("size by Mesh", "3DMESH\nMesh 1 10\n0 512 600 1023\n" + numbered(0, 27), true, 3,
                second(1023));
        textRow("Mesh after the samples", shaper + numbered(0, 27) + "Mesh 1 12\n", true, 3,
                second(4095));
        textRow("the first shaper gives the size", shaper + eight + "0 1 2 3\n", true, 2,
                second(7));
        textRow("size after the samples", eight + shaper, true, 2, second(7));
        textRow("header lines between samples",
                shaper + "0 2 4\n1\n1 1\n1 1 1 1\nMesh 1 10\ngamma 1 1\n3DMESH\na b c\n" +
                    numbered(1, 27),
                true, 3, second(1023));
        textRow("other white space parts words, not numbers",
                shaper +
                    "7 2 4\n1\xE2\x80\x83"
                    "5 5\n" +
                    numbered(2, 8),
                true, 2, second(7));
        textRow("the first pass carries over", shaper + "0 x x\n1 x x\n" + numbered(2, 8), true, 2,
                second(7));
        textRow("a short line keeps the rest of the last",
                shaper + numbered(0, 1) + "1 x 9\n" + numbered(2, 8), true, 2, second(7));
        textRow("NaN discards the largest so far",
                shaper + numbered(4000, 4001) + "1 2 4\n2 2 nan\n" + numbered(3, 8), true, 2,
                second(7));
        textRow("a Mesh line ends the carrying over",
                "0 x x\n1 x x\n2 2 4\nMesh 0 10\n3 9 9\n4 9 9\n5 9 9\n6 9 9\n7 9 9\n", true, 2,
                second(1023));
        textRow("lines past the last sample", shaper + eight + "9 9 9\n", true, 2, second(15));
        textRow("the last sample is missing", shaper + numbered(0, 7), true, 2, second(7));
        textRow("no size", eight, false, 0);
        textRow("size of three words", "0 512 1023\n" + numbered(0, 27), false, 0);
        textRow("size too large", "Mesh 8 10\n" + eight, false, 257);
        textRow("size absurd", "Mesh 31 10\n" + eight, false, std::numeric_limits<int>::max());
        textRow("Mesh alone", shaper + eight + "Mesh\n", false, 2);
        textRow("Mesh without numbers", "Mesh x 10\n" + shaper + eight, false, 0);
        textRow("Mesh without its blank", "Mesh\t1 10\n" + shaper + eight, false, 0);
        textRow("Mesh without a scale", "Mesh 0\n" + eight, true, 2, second(7));
        textRow("Mesh of one bit", "Mesh 0 1\n" + eight, true, 2, second(7));
        textRow("a second Mesh keeps the bits", "Mesh 4 4\nMesh 0\n" + eight, true, 2, second(15));
        textRow("gamma without a number", shaper + "gamma x\n" + eight, false, 2);
    }
    void lattice() { samples::compareLattice(m_format); }

    /// How the largest sample of a file without Mesh is stored.
    void inferredScale_data() {
        QTest::addColumn<QByteArray>("largest");
        QTest::addColumn<float>("stored");
        const auto row = [](const QByteArray& largest, float stored) {
            QTest::newRow(largest.constData()) << largest << stored;
        };
        row("0.1", 0.1F);
        row("0.25", 0.25F / 3);
        row("3.9", 1);
        row("4", 4.0F / 7);
        row("1000", 1000.0F / 1023);
        row("1023.9", 1);
        row("1024", 1024.0F / 2047);
        row("65535", 1);
        row("70000", 1);
        row("1e300", 1);
    }
    void inferredScale() {
        QFETCH(QByteArray, largest);
        for (const QByteArray& line :
             {largest + " 0 0\n", "0 " + largest + " 0\n", "0 0 " + largest}) {
            Read_LUTFile lut(nullptr);
            QVERIFY(m_format.read(lut, "0 1\n" + QByteArray("0 0 0\n").repeated(7) + line));
            const float* const cell = lut.data3D[1][1][1];
            QTEST(cell[0] + cell[1] + cell[2], "stored");
            QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
        }
    }

    /// Lines of three codes have a path of their own; tabs keep them off it.
    void codesReadLikeOtherNumbers_data() {
        QTest::addColumn<QByteArray>("line");
        for (const char* const line :
             {"1 2", "1 2 3 4", "1  2 3", " 1 2 3", "1 2 3 ", "1\n2 3", "0000007 1 2",
              "12345678 1 2", "4294967297 1 2", "1: 2 3", "1 2 3/", "-1 2 3", "1 2 3.0", "",
              "1 2 x", "65536 1234567 0"}) {
            QTest::newRow(line) << QByteArray(line);
        }
        QTest::newRow("NUL") << QByteArray("1 2\0003", 5);
        QTest::newRow("returns") << QByteArray("1 2 3\r\r\r\r\r\r");
    }
    void codesReadLikeOtherNumbers() {
        QFETCH(QByteArray, line);
        const QByteArray before = "0 1\n" + numbered(0, 6);
        for (const char* const end : {"", "\n", "\n7 8 9\n"}) {
            Read_LUTFile codes(nullptr);
            Read_LUTFile others(nullptr);
            const QByteArray text = before + line + end;
            const bool reads = m_format.read(codes, text);
            QCOMPARE(m_format.read(others, QByteArray(text).replace(' ', '\t')), reads);
            QCOMPARE(codes.lastError.section(':', 0, 0), others.lastError.section(':', 0, 0));
            for (int k = 0; codes.data3D != nullptr && k < 4; ++k) {
                QCOMPARE(samples::cell(codes.data3D[1][k / 2][k % 2]),
                         samples::cell(others.data3D[1][k / 2][k % 2]));
            }
        }
    }

    void shortLineAfterCodes() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "0 1\n0 9 9\n1 2 4\n2 x x\n" + numbered(3, 8)));
        QCOMPARE(samples::cell(lut.data3D[0][1][0]),
                 QVector<float>({2.0F / 15, 2.0F / 15, 4.0F / 15}));
    }

    void shaperAndGamma() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "0 256 x 1024\ngamma 2.5\n0 512\n", true));
        QCOMPARE(lut.size3D, 4);
        QCOMPARE(lut.gamma, 2.5);
        QCOMPARE(lut.shaperIn[1], 0.5); // relative to the largest so far, on any line
        QCOMPARE(lut.shaperIn[2], 0.0);
        QCOMPARE(lut.shaperIn[3], 1.0);
        Read_LUTFile named(nullptr);
        QVERIFY(m_format.read(named, "3DMESH 7 7 7\n", true)); // a shaper line like any other
        QCOMPARE(named.size3D, 4);
        QCOMPARE(named.gamma, 1.0);
    }

    void longShaper() {
        QByteArray shaper;
        for (int n = 1; n <= 300; ++n) {
            shaper += QByteArray::number(n) + ' ';
        }
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, shaper, true));
        QCOMPARE(lut.size3D, 300);
        QCOMPARE(lut.shaperIn[255], 256.0 / 300);
        QCOMPARE(lut.gamma, 1.0); // the member after shaperIn
        Read_LUTFile full(nullptr);
        QVERIFY(!m_format.read(full, shaper + '\n' + numbered(0, 8)));
        Read_LUTFile meshed(nullptr);
        QVERIFY(m_format.read(meshed, shaper + "\nMesh 0 3\n" + numbered(0, 8)));
    }
};

QTEST_GUILESS_MAIN(TestThreeDl)
#include "test_three_dl.moc"

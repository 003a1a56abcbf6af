#include "samples.h"

namespace {

constexpr int threeDl = 3;

/// Samples that count the file's order in their first channel.
QByteArray numbered(int from, int to) {
    QByteArray text;
    for (int n = from; n < to; ++n) {
        text += QByteArray::number(n) + " 2 4\n";
    }
    return text;
}

} // namespace

class TestThreeDl : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    bool read(Read_LUTFile& lut, const QByteArray& text, bool probe = false) {
        return lut.ReadFile(
            samples::request(m_folder.file(QStringLiteral("in.3dl"), text), threeDl), probe);
    }

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    /// Whether the file \a text reads, its size, its sample (0, 0, 1), and the scale of that.
    void content_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::addColumn<float>("scale");
        QTest::addColumn<QVector<float>>("sample");
        const auto row = [](const char* name, const QByteArray& text, bool reads, int size,
                            float scale = 1, const QVector<float>& sample = {}) {
            QTest::newRow(name) << text << reads << size << scale << sample;
        };
        const QByteArray shaper = "0 1023\n";
        const QByteArray eight = numbered(0, 8);
        const QVector<float> second = {1, 2, 4};

        row("size by the shaper", shaper + eight, true, 2, 7, second);
        row("size by Mesh", "3DMESH\nMesh 1 10\n0 512 600 1023\n" + numbered(0, 27), true, 3, 1023,
            second);
        row("Mesh behind the samples", shaper + eight + numbered(8, 27) + "Mesh 1 12\n", true, 3,
            4095, second);
        row("the first shaper tells the size", shaper + eight + "0 1 2 3\n", true, 2, 7, second);
        row("size behind the samples", eight + shaper, true, 2, 7, second);
        row("as other systems write it",
            QByteArray("\xEF\xBB\xBF# c\n" + shaper + eight)
                .replace("\n", "\r\n")
                .replace(" ", " \t"),
            true, 2, 7, second);
        row("lines that take no place",
            shaper + "0 2 4\n\n# 1 1\n1\n1 1\n1 1 1 1\nMesh 1 10\ngamma 1 1\n3DMESH\na b c\n" +
                numbered(1, 27),
            true, 3, 1023, second);
        row("a partial line keeps the rest", shaper + "7 2 4\n1 x 9\n" + numbered(2, 8), true, 2, 7,
            second);
        row("other white space parts words, not numbers",
            shaper +
                "7 2 4\n1\xE2\x80\x83"
                "5 5\n" +
                numbered(2, 8),
            true, 2, 7, second);
        row("the first pass carries over", shaper + "0 x x\n1 x x\n" + numbered(2, 8), true, 2, 7,
            second);
        row("but not under a scale", "Mesh 0 3\n0 x x\n1 x x\n" + numbered(2, 8), true, 2, 7,
            {1, 0, 0});
        row("last sample lacks", shaper + numbered(0, 7), true, 2, 7, second);
        row("two samples lack", shaper + numbered(0, 6), false, 2);
        row("lines past the last sample", shaper + eight + "9 9 9\n", true, 2, 15, second);
        row("no size", eight, false, 0);
        row("size of three words", "0 512 1023\n" + numbered(0, 27), false, 0);
        row("size too large", "Mesh 8 10\n" + eight, false, 257);
        row("size absurd", "Mesh 31 10\n" + eight, false, std::numeric_limits<int>::max());
        row("Mesh alone", shaper + eight + "Mesh\n", false, 2);
        row("Mesh without numbers", "Mesh x 10\n" + shaper + eight, false, 0);
        row("Mesh without its blank", "Mesh\t1 10\n" + shaper + eight, false, 0);
        row("Mesh without a scale", "Mesh 0\n" + eight, true, 2, 7, second);
        row("Mesh of one bit", "Mesh 0 1\n" + eight, true, 2, 7, second);
        row("a second Mesh keeps the bits", "Mesh 4 4\nMesh 0\n" + eight, true, 2, 15, second);
        row("gamma without a number", shaper + "gamma x\n" + eight, false, 2);
    }
    void content() {
        QFETCH(QByteArray, text);
        QFETCH(float, scale);
        QFETCH(QVector<float>, sample);
        Read_LUTFile lut(nullptr);
        QTEST(read(lut, text), "reads");
        QTEST(lut.size3D, "size");
        if (!sample.isEmpty()) {
            const float* const cell = lut.data3D[0][0][1];
            QCOMPARE(samples::cell(cell),
                     QVector<float>({sample[0] / scale, sample[1] / scale, sample[2] / scale}));
            QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
        }
    }

    /// What the largest sample of a file without Mesh is stored as.
    void inferredScale_data() {
        QTest::addColumn<QByteArray>("largest");
        QTest::addColumn<float>("stored");
        const auto row = [](const QByteArray& largest, float stored) {
            QTest::newRow(largest.constData()) << largest << stored;
        };
        row("0.1", 0.1F);
        row("0.25", 0.25F / 3);
        row("1.0", 1.0F / 3);
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
            QVERIFY(read(lut, "0 1\n" + QByteArray("0 0 0\n").repeated(7) + line));
            const float* const cell = lut.data3D[1][1][1];
            QTEST(cell[0] + cell[1] + cell[2], "stored");
        }
    }

    void shaperAndGamma() {
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, "0 256 x 1024\ngamma 2.5\n0 512\n", true));
        QCOMPARE(lut.size3D, 4);
        QCOMPARE(lut.gamma, 2.5);
        QCOMPARE(lut.shaperIn[1], 0.5); // of the largest so far, on whichever line
        QCOMPARE(lut.shaperIn[2], 0.0);
        QCOMPARE(lut.shaperIn[3], 1.0);
        QVERIFY(lut.data3D == nullptr);
    }

    void longShaper() {
        QByteArray shaper;
        for (int n = 1; n <= 300; ++n) {
            shaper += QByteArray::number(n) + ' ';
        }
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, shaper, true));
        QCOMPARE(lut.size3D, 300);
        QCOMPARE(lut.shaperIn[255], 256.0 / 300);
        QCOMPARE(lut.gamma, 1.0);
        Read_LUTFile full(nullptr);
        QVERIFY(!read(full, shaper + '\n' + numbered(0, 8)));
        Read_LUTFile meshed(nullptr);
        QVERIFY(read(meshed, shaper + "\nMesh 0 3\n" + numbered(0, 8)));
    }

    void readsTheSample() {
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(
            samples::request(QStringLiteral(TINTWELL_TEST_DATA "/sample.3dl"), threeDl), false));
        QCOMPARE(lut.size3D, 3);
        QCOMPARE(samples::cell(lut.data3D[2][1][0]),
                 QVector<float>({1022.0F / 1023, 511.0F / 1023, 40.0F / 1023}));
    }
};

QTEST_GUILESS_MAIN(TestThreeDl)
#include "test_three_dl.moc"

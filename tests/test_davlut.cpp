#include "samples.h"

namespace {

constexpr int davLut = 8;

/// Samples that count the file's order in their first channel.
QByteArray numbered(int from, int to) {
    QByteArray text;
    for (int n = from; n < to; ++n) {
        text += QByteArray::number(n / 32.0) + " 0.5 0.25\n";
    }
    return text;
}

} // namespace

class TestDavLut : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    bool read(Read_LUTFile& lut, const QByteArray& text) {
        return lut.ReadFile(
            samples::request(m_folder.file(QStringLiteral("in.davlut"), text), davLut), false);
    }

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    /// Whether the file \a text reads, its size, and its sample (0, 0, 1).
    void content_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::addColumn<QVector<float>>("sample");
        const auto row = [](const char* name, const QByteArray& text, bool reads, int size,
                            const QVector<float>& sample = {}) {
            QTest::newRow(name) << text << reads << size << sample;
        };
        const QByteArray size2 = "3DLUTSIZE 2\n";
        const QByteArray eight = numbered(0, 8);
        const QVector<float> second = {0.03125F, 0.5F, 0.25F};

        row("two points", size2 + eight, true, 2, second);
        row("three points", "3DLUTSIZE 3\n" + numbered(0, 27), true, 3, second);
        row("as other systems write it",
            QByteArray("\xEF\xBB\xBF# c\n\t3DLUTSIZE\t2\n" + eight)
                .replace("\n", "\r\n")
                .replace(" ", " \t "),
            true, 2, second);
        row("lines before the size line",
            "3dlutsize 9\n3DLUT 9\n1 1 1\n# 3DLUTSIZE 9\n" + size2 + eight, true, 2, second);
        row("every keyword goes", "3DLUTSIZE 3DLUTSIZE2\n" + eight, true, 2, second);
        row("a later size line begins with a number",
            size2 + numbered(0, 1) + "3DLUTSIZE 9\n" + numbered(2, 8), true, 2, {1, 0.5F, 0.25F});
        row("lines that take no place",
            size2 + numbered(0, 1) + "\n# 1 1 1\nx 1 1\n" + numbered(1, 8), true, 2, second);
        row("a partial line keeps the rest", size2 + "0 0.75 0.5\n0.125 x 1\n" + numbered(2, 8),
            true, 2, {0.125F, 0.75F, 0.5F});
        row("a partial first line", size2 + "1\n0.5\n" + numbered(2, 8), true, 2, {0.5F, 0, 0});
        row("clamped", size2 + "0 0 0\n-1 1.5 1e9\n" + numbered(2, 8), true, 2, {0, 1, 1});
        row("last sample lacks", size2 + numbered(0, 7), true, 2, second);
        row("two samples lack", size2 + numbered(0, 6), false, 2);
        row("more samples than places", size2 + eight + "x\n" + eight, true, 2, second);
        row("other case only", "3dLutSize 2\n" + eight, false, 0);
        row("size without a number", "3DLUTSIZE\n" + size2 + eight, false, 0);
        row("size zero", "3DLUTSIZE 0\n" + eight, false, 0);
        row("size too large", "3DLUTSIZE 257\n" + eight, false, 257);
        row("empty", "", false, 0);
    }
    void content() {
        QFETCH(QByteArray, text);
        QFETCH(QVector<float>, sample);
        Read_LUTFile lut(nullptr);
        QTEST(read(lut, text), "reads");
        QTEST(lut.size3D, "size");
        if (!sample.isEmpty()) {
            QCOMPARE(samples::cell(lut.data3D[0][0][1]), sample);
        }
    }

    void everyPlaceIsFilled() {
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, "3DLUTSIZE 3\n" + numbered(0, 26)));
        for (int n = 0; n < 26; ++n) {
            QCOMPARE(lut.data3D[n / 9][n / 3 % 3][n % 3][0], float(n) / 32);
        }
        QCOMPARE(samples::cell(lut.data3D[2][2][2]), QVector<float>({0, 0, 0}));
    }

    void readsTheSample() {
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(
            samples::request(QStringLiteral(TINTWELL_TEST_DATA "/sample.davlut"), davLut), false));
        QCOMPARE(samples::cell(lut.data3D[0][1][1]), QVector<float>({0, 0.9F, 0.75F}));
    }

    /// Real numbers at every scale; the writer keeps the scale it has used.
    void writes_data() {
        QTest::addColumn<bool>("ordered");
        QTest::addColumn<int>("scale");
        QTest::addColumn<int>("scaleAfter");
        QTest::newRow("default orders") << true << 1 << 1;
        QTest::newRow("reversed, integers asked for") << false << 4096 << 1;
        QTest::newRow("scale of zero stays") << true << 0 << 0;
    }
    void writes() {
        QFETCH(bool, ordered);
        QFETCH(int, scale);
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i), float(j) / 2, float(k) / 4});
        });
        LUTFILE_ST st =
            samples::request(m_folder.path(QStringLiteral("out.davlut")), davLut, false, false);
        st.defaultOrder = ordered;
        st.outputScale = scale;
        Write_LUTFile writer(nullptr);
        QVERIFY(writer.WriteFile(st, lut));
        QTEST(int(writer.outputScale), "scaleAfter");

        const QByteArray header = "# Authors: norvane\n\n3DLUTSIZE 2\n";
        const QByteArray text = m_folder.content(QStringLiteral("out.davlut"));
        if (ordered) {
            QCOMPARE(text, header + "0.000000 0.000000 0.000000\n0.000000 0.000000 0.250000\n"
                                    "0.000000 0.500000 0.000000\n0.000000 0.500000 0.250000\n"
                                    "1.000000 0.000000 0.000000\n1.000000 0.000000 0.250000\n"
                                    "1.000000 0.500000 0.000000\n1.000000 0.500000 0.250000\n");
            Read_LUTFile again(nullptr);
            QVERIFY(read(again, text));
            QCOMPARE(samples::cell(again.data3D[1][0][1]), samples::cell(lut.data3D[1][0][1]));
        } else {
            QCOMPARE(text, header + "0.000000 0.000000 0.000000\n0.000000 0.000000 1.000000\n"
                                    "0.000000 0.500000 0.000000\n0.000000 0.500000 1.000000\n"
                                    "0.250000 0.000000 0.000000\n0.250000 0.000000 1.000000\n"
                                    "0.250000 0.500000 0.000000\n0.250000 0.500000 1.000000\n");
        }
    }

    void writesAnEmptyTable() {
        Read_LUTFile lut(nullptr);
        const QString path = m_folder.path(QStringLiteral("empty.davlut"));
        QVERIFY(Write_LUTFile(nullptr).WriteFile(samples::request(path, davLut), lut));
        QCOMPARE(m_folder.content(QStringLiteral("empty.davlut")),
                 QByteArray("# Authors: norvane\n\n3DLUTSIZE 0\n"));
    }
};

QTEST_GUILESS_MAIN(TestDavLut)
#include "test_davlut.moc"

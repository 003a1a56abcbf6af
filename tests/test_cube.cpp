#include "samples.h"

#include <cmath>

namespace {

QByteArray numbered(int count, const char* pattern = "%1 0.5 0.25\n") {
    QByteArray text;
    for (int n = 0; n < count; ++n) {
        text += QString::fromLatin1(pattern).arg(n).toLatin1();
    }
    return text;
}

/// Eight samples whose first channel counts the file's order.
const QByteArray eight = numbered(8);

} // namespace

class TestCube : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    bool read(Read_LUTFile& lut, const QByteArray& text, bool probe = false) {
        return lut.ReadFile(samples::request(m_folder.file(QStringLiteral("in.cube"), text), 0),
                            probe);
    }

    QByteArray written(Read_LUTFile& lut, bool dataOrder = true, bool tableOrder = true,
                       int scale = 1, bool defaultOrder = false) {
        LUTFILE_ST st =
            samples::request(m_folder.path(QStringLiteral("out.cube")), 0, dataOrder, tableOrder);
        st.outputScale = scale;
        st.defaultOrder = defaultOrder;
        if (!Write_LUTFile(nullptr).WriteFile(st, lut)) {
            return QByteArrayLiteral("(failed)");
        }
        return m_folder.content(QStringLiteral("out.cube"));
    }

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void ordersDecideTheCell_data() {
        QTest::addColumn<bool>("dataOrder");
        QTest::addColumn<bool>("tableOrder");
        QTest::addColumn<bool>("defaultOrder");
        QTest::newRow("default: RGB, kji") << true << false << true;
        QTest::newRow("RGB, ijk") << true << true << false;
        QTest::newRow("BGR, kji") << false << false << false;
    }
    void ordersDecideTheCell() {
        QFETCH(bool, dataOrder);
        QFETCH(bool, tableOrder);
        QFETCH(bool, defaultOrder);
        LUTFILE_ST st = samples::request(
            m_folder.file(QStringLiteral("o.cube"),
                          "DOMAIN_MAX 7 7 7\nLUT_3D_SIZE 2\n" + numbered(8, "%1 3.5 1.75\n")),
            0, dataOrder, tableOrder);
        st.defaultOrder = defaultOrder;
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(st, false));
        for (int n = 0; n < 8; ++n) { // sample n stands at (n / 4, n / 2 % 2, n % 2) in the file
            const float* const stored = tableOrder ? lut.data3D[n >> 2][(n >> 1) & 1][n & 1]
                                                   : lut.data3D[n & 1][(n >> 1) & 1][n >> 2];
            QCOMPARE(stored[dataOrder ? 0 : 2], float(n) / 7);
            QCOMPARE(stored[1], 0.5F);
            QCOMPARE(stored[dataOrder ? 2 : 0], 0.25F);
        }
        QCOMPARE(lut.domainMax3D[2], 1.0F);
    }

    /// What the file \a text makes of sample (0, 0, 1), of the size, and whether it reads at all.
    void content_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::addColumn<QVector<float>>("sample");
        const auto row = [](const char* name, const QByteArray& text, bool reads, int size,
                            const QVector<float>& sample = {}) {
            QTest::newRow(name) << text << reads << size << sample;
        };
        const QByteArray size2 = "LUT_3D_SIZE 2\n";
        const QVector<float> second = {1, 0.5F, 0.25F};
        const QByteArray first = "0 0 0\n";

        row("plain", size2 + eight, true, 2, second);
        row("size inferred", numbered(27), true, 3, second);
        row("size inferred, rounded", numbered(26), true, 3, second);
        row("as other systems write it",
            QByteArray("\xEF\xBB\xBF"
                       "TITLE \"a\"\r\n\r\n# c\r\n" +
                       size2 + eight)
                .replace("\n", "\r\n"),
            true, 2, second);
        row("keywords between samples",
            first + size2 + "1 0.5 0.25\nTITLE \"1\"\nDOMAIN_MIN 0 0 0\n# 1 1 1\nx 1 1 1\n" +
                numbered(6),
            true, 2, second);
        row("MESH takes no place", size2 + first + "1 1 1 MESH\n" + eight.mid(eight.indexOf("1 ")),
            true, 2, {1, 0.5F, 0.25F});
        row("last size wins", "LUT_3D_SIZE 250\n" + size2 + eight, true, 2, second);
        row("last sample lacks", size2 + numbered(7), true, 2, second);
        row("two samples lack", size2 + numbered(6), false, 2);
        row("last line without its feed", size2 + numbered(7) + "7 7", true, 2, second);
        row("partial line keeps the rest", size2 + "3 0.75 0.5\n1\n" + numbered(6), true, 2,
            {1, 0.75F, 0.5F});
        row("partial first line", size2 + "\n0.5\n" + "0.5\n" + numbered(6), true, 2, {0.5F, 0, 0});
        row("domain divides without subtracting",
            "DOMAIN_MIN 0.5 0 0\nDOMAIN_MAX 1 2 4\n" + size2 + first + "0.75 0.5 9\n" + numbered(6),
            true, 2, {1.5F, 0.25F, 1});
        row("partial domain", "DOMAIN_MAX 2\n" + size2 + numbered(8), true, 2, {0.5F, 0.5F, 0.25F});
        row("integers by a Mesh line",
            size2 + first + "1024 1023 0x10\n" + numbered(6, "%1 0 0\n") + "Mesh 8 10\n", true, 2,
            {1, 1023.0F / 1024, 0});
        row("integers stop at the point",
            "Mesh 4 1\n" + size2 + first + "1.9 2 2\n" + numbered(6, "%1 0 0\n"), true, 2,
            {0.5F, 0, 0});
        row("Mesh without numbers", "Mesh\n" + size2 + first + "1 0 1\n" + numbered(6, "%1 0 0\n"),
            true, 2, {1, 0, 1});
        row("nothing", "", true, 0);
        row("comments only", "# 1 2 3\nTITLE\n", true, 0);
        row("size zero", "LUT_3D_SIZE 0\n" + eight, false, 0);
        row("size negative", "LUT_3D_SIZE -2\n" + eight, false, -2);
        row("size no integer", "LUT_3D_SIZE 2.0\n" + eight, false, 0);
        row("size without its blank", "LUT_3D_SIZE\t2\n" + eight, false, 0);
        row("later bad size", size2 + eight + "LUT_3D_SIZE x\n", false, 0);
        row("size too large", "LUT_3D_SIZE 257\n" + eight, false, 257);
        row("size absurd", "LUT_3D_SIZE 2147483647\n" + eight, false, 2147483647);
        row("bad curve size", size2 + eight + "LUT_1D_SIZE 0\n", false, 2);
        row("noise", QByteArray("\x7f\x45LF\0\0\1\xff\n\xfe\n", 11).repeated(6), false, 2);
    }
    void content() {
        QFETCH(QByteArray, text);
        QFETCH(QVector<float>, sample);
        Read_LUTFile lut(nullptr);
        QTEST(read(lut, text), "reads");
        QTEST(lut.size3D, "size");
        if (!sample.isEmpty()) {
            QCOMPARE(samples::cell(lut.data3D[1][0][0]), sample); // kji: k is the first index
            QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
        }
    }

    void probeReadsTheHeaderOnly_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size3D");
        QTest::addColumn<int>("size1D");
        QTest::newRow("both") << QByteArray("LUT_3D_SIZE 65\nLUT_1D_SIZE 9\n") << true << 65 << 9;
        QTest::newRow("beyond a full read") << QByteArray("LUT_3D_SIZE 1000") << true << 1000 << 0;
        QTest::newRow("inferred") << numbered(125) << true << 5 << 0;
        QTest::newRow("bad") << QByteArray("LUT_1D_SIZE -1") << false << 0 << -1;
    }
    void probeReadsTheHeaderOnly() {
        QFETCH(QByteArray, text);
        Read_LUTFile lut(nullptr);
        QTEST(read(lut, text, true), "reads");
        QTEST(lut.size3D, "size3D");
        QTEST(lut.size1D, "size1D");
        QVERIFY(lut.data3D == nullptr && lut.data1D == nullptr);
    }

    void curves_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<QVector<float>>("last"); // BGR: cube's own orders differ
        const QByteArray header = "LUT_1D_SIZE 3\nLUT_1D_INPUT_RANGE 0 4\n";
        QTest::newRow("complete") << header + numbered(2) + "1 2 9\n"
                                  << true << QVector<float>({1, 0.5F, 0.25F});
        QTest::newRow("last lacks") << header + numbered(2) << true << QVector<float>({0, 0, 0});
        QTest::newRow("two lack") << header + numbered(1) << false << QVector<float>({0, 0, 0});
        QTest::newRow("behind a lattice, carrying its values")
            << header + "LUT_3D_SIZE 2\n" + numbered(8) + "#\n1 1 1 MESH\n" + numbered(2) + "2\n"
            << true << QVector<float>({0.0625F, 0.125F, 0.5F});
        QTest::newRow("real numbers behind an integer lattice")
            << header + "Mesh 1 2\nLUT_3D_SIZE 1\n4 4 4\n0 0 0\n0 0 0\n0.5 1 2\n"
            << true << QVector<float>({0.5F, 0.25F, 0.125F});
        QTest::newRow("lattice lacks its last, the curve all of it")
            << header + "LUT_3D_SIZE 2\n" + numbered(7) << true << QVector<float>({0, 0, 0});
        QTest::newRow("range with one number")
            << QByteArray("LUT_1D_INPUT_RANGE -1\nLUT_1D_SIZE 1\n1 0.5 0\n") << true
            << QVector<float>({0, 0.25F, 0.5F});
    }
    void curves() {
        QFETCH(QByteArray, text);
        QFETCH(QVector<float>, last);
        Read_LUTFile lut(nullptr);
        QTEST(read(lut, text), "reads");
        QCOMPARE(samples::cell(lut.data1D[lut.size1D - 1]), last);
    }

    void refusesWhatIsNoFile() {
        Read_LUTFile lut(nullptr);
        for (const QString& path :
             {m_folder.path(QString()), QString(), QStringLiteral("/no/such")}) {
            QVERIFY(!lut.ReadFile(samples::request(path, 0), false));
            QVERIFY(!Write_LUTFile(nullptr).WriteFile(samples::request(path + "/x", 0), lut) ||
                    !path.startsWith('/') || QFile::remove(path + "/x"));
        }
    }

    /// A table that the file can not fill is refused before it is allocated.
    void refusesQuickly() {
        Read_LUTFile lut(nullptr);
        QVERIFY(!read(lut, "LUT_3D_SIZE 256\n" + numbered(1000)));
        QVERIFY(lut.data3D == nullptr);
        QVERIFY(!read(lut, "LUT_3D_SIZE 2\n" + QByteArray("0.5 ").repeated(100'000)));
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        QCOMPARE(written(lut), QByteArray("TITLE \nLUT_3D_SIZE 0\n"));
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i) / 2, float(j) / 4, float(k) - 0.0078125F});
        });
        const QByteArray header = "TITLE \nLUT_3D_SIZE 2\n";
        QCOMPARE(written(lut), header +
                                   "0.000000 0.000000 -0.007813\n0.000000 0.000000 0.992188\n"
                                   "0.000000 0.250000 -0.007813\n0.000000 0.250000 0.992188\n"
                                   "0.500000 0.000000 -0.007813\n0.500000 0.000000 0.992188\n"
                                   "0.500000 0.250000 -0.007813\n0.500000 0.250000 0.992188\n");
        const QByteArray reversed = header + "-7 0 0 \n-7 0 500 \n-7 250 0 \n-7 250 500 \n"
                                             "992 0 0 \n992 0 500 \n992 250 0 \n992 250 500 \n";
        QCOMPARE(written(lut, false, false, 1000), reversed);
    }

    /// With both sides in the format's own orders a cube comes out as it went in.
    void roundTrip() {
        const QByteArray text =
            "TITLE \nLUT_3D_SIZE 3\n" + numbered(27, "0.0%1 0.500000 1.000000\n")
                                            .replace("0.00", "0.000")
                                            .replace("0.01", "0.010")
                                            .replace("0.02", "0.020");
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, text));
        Read_LUTFile again(nullptr);
        const QByteArray first = written(lut, false, true, 1, true);
        QVERIFY(read(again, first));
        QCOMPARE(written(again, false, true, 1, true), first);
        QCOMPARE(first.count('\n'), 29);
        QVERIFY(first.contains("\n0.010000 0.500000 1.000000\n0.010100 0.500000"));
    }
};

QTEST_GUILESS_MAIN(TestCube)
#include "test_cube.moc"

#include "one_format.h"

namespace {

QByteArray samplesText(int i, int j, int k) {
    const auto text = [](int n) { return QByteArray::number(n / 64.0, 'f', 6); };
    return text(i) + ' ' + text(j) + ' ' + text(k);
}

} // namespace

class TestCube : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{0};

private Q_SLOTS:
    void lattice_data() {
        samples::textColumns();
        using samples::numbered;
        using samples::textRow;
        const QByteArray size2 = "LUT_3D_SIZE 2\n";
        const QByteArray eight = numbered(0, 8);
        const QByteArray first = "0 0 0\n";
        const QVector<float> second = {1 / 32.0F, 0.5F, 0.25F};

        textRow("size inferred", numbered(0, 27), true, 3, second);
        textRow("size inferred, rounded", "TITLE 1\n" + numbered(0, 26) + "x 1 1 1\n#\n", true, 3,
                second);
        textRow("size inferred, rounded down", numbered(0, 15), true, 2, second);
        textRow("keywords between samples",
                first + size2 + "TITLE \"1\"\nDOMAIN_MIN 0 0 0\nLUT_1D_INPUT_RANGE 0 1\n" +
                    numbered(1, 8),
                true, 2, second);
        textRow("x is a comment", "xLUT_3D_SIZE 5\nxMesh 1 1\n" + size2 + eight, true, 2, second);
        textRow("a MESH line is skipped", size2 + first + "1 1 1 MESH\n" + numbered(1, 8), true, 2,
                second);
        textRow("the last size wins", "LUT_3D_SIZE 250\n" + size2 + eight, true, 2, second);
        textRow("keywords anywhere in their lines", "a 2LUT_3D_SIZE \n" + eight, false, 0);
        textRow("a size in a title", "TITLE \"LUT_3D_SIZE 4\"\n" + size2 + eight, false, 0);
        textRow("domain divides without subtracting",
                "DOMAIN_MIN 0.5 0 0\nDOMAIN_MAX 1 2 4\n" + size2 + first + "0.75 0.5 9\n" +
                    numbered(2, 8),
                true, 2, {1.5F, 0.25F, 1});
        textRow("partial domain", "DOMAIN_MAX 2\n" + size2 + eight, true, 2,
                {1 / 64.0F, 0.5F, 0.25F});
        textRow("integers by a Mesh line",
                size2 + first + "1024 1023 0x10\n" + QByteArray("1 0 0\n").repeated(6) +
                    "Mesh 8 10\n",
                true, 2, {1, 1023.0F / 1024, 0});
        textRow("integers stop at the point",
                "Mesh 4 1\n" + size2 + first + "1.9 2 2\n" + QByteArray("1 0 0\n").repeated(6),
                true, 2, {0.5F, 0, 0});
        textRow("Mesh without numbers",
                "Mesh\n" + size2 + first + "1 0 1\n" + QByteArray("1 0 0\n").repeated(6), true, 2,
                {1, 0, 1});
        textRow("nothing", "", true, 0);
        textRow("comments only", "# 1 2 3\nTITLE\n", true, 0);
        textRow("size not an integer", "LUT_3D_SIZE 2.0\n" + eight, false, 0);
        textRow("size without its blank", "LUT_3D_SIZE\t2\n" + eight, false, 0);
        textRow("later bad size", size2 + eight + "LUT_3D_SIZE x\n", false, 0);
        textRow("bad curve size", size2 + eight + "LUT_1D_SIZE 0\n", false, 2);
        textRow("noise", QByteArray("\x7f\x45LF\0\0\1\xff\n\xfe\n", 11).repeated(6), false, 2);
        textRow("one endless line", size2 + QByteArray("0.5 ").repeated(100'000), false, 2);
    }
    void lattice() { samples::compareLattice(m_format); }

    void curves_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray header = "LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE 0 4\n";
        const QVector<float> bgr = {0.75F, 0.5F, 0.25F, 1, 0.5F, 0.25F}; // its own orders differ
        textRow("alone", header + "1 2 3\n1 2 9\n", true, 2, bgr);
        textRow("after a lattice, carrying its values",
                header + "LUT_3D_SIZE 2\n" + samples::numbered(0, 8) + "#\n1 1 1 MESH\n2\n1 2 3\n",
                true, 2, {0.0625F, 0.125F, 0.5F, 0.75F, 0.5F, 0.25F});
        textRow("real numbers after an integer lattice",
                header + "Mesh 1 2\nLUT_3D_SIZE 1\n4 4 4\n1 2 3\n1 2 4.0\n", true, 2, bgr);
        textRow("range with one number", "LUT_1D_INPUT_RANGE -1\nLUT_1D_SIZE 1\n1 0.5 0\n", true, 1,
                {0, 0.25F, 0.5F});
    }
    void curves() { samples::compareCurve(m_format); }

    /// From the lattice, with the curve missing entirely, or from the curve.
    void lastSampleIsMissing() {
        const QByteArray header = "LUT_1D_SIZE 3\nLUT_3D_SIZE 2\nDOMAIN_MAX 2 2 2\n"
                                  "LUT_1D_INPUT_RANGE 0 4\n";
        for (const int count : {7, 10}) {
            Read_LUTFile lut(nullptr);
            QVERIFY(m_format.read(lut, header + samples::numbered(0, count)));
            QCOMPARE(samples::curve(lut).count(0), count == 7 ? 9 : 3);
            QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
            QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>({1, 1, 1}));
        }
    }

    /// Writers copy several planes of such a table at a time.
    void manyScatteredPlanes() {
        for (const int size : {16, 17, 33}) {
            Read_LUTFile lut(nullptr);
            samples::fill3D(lut, size, [](int i, int j, int k) {
                return QVector<float>{float(i) / 64, float(j) / 64, float(k) / 64};
            });
            const QByteArrayList lines = m_format.writtenInOrders(lut, true, false).split('\n');
            QByteArrayList expected;
            for (int n = 0; n < size * size * size; ++n) {
                expected << samplesText(n % size, n / size % size, n / size / size);
            }
            QCOMPARE(lines.mid(2, expected.size()), expected);
        }
    }

    void probeReportsAnySize() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "LUT_3D_SIZE 1000\nLUT_1D_SIZE 9\n", true));
        QCOMPARE(lut.size3D, 1000);
        QCOMPARE(lut.size1D, 9);
        Read_LUTFile inferred(nullptr);
        QVERIFY(m_format.read(inferred, samples::numbered(0, 125), true));
        QCOMPARE(inferred.size3D, 5);
        QVERIFY(!lut.meshHeader && m_format.read(lut, "Mesh 1 1\n", true) && lut.meshHeader);
        QVERIFY(m_format.read(lut, "", true) && !lut.meshHeader);
    }
};

QTEST_GUILESS_MAIN(TestCube)
#include "test_cube.moc"

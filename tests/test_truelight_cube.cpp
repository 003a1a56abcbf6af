#include "one_format.h"

namespace {

const QByteArray dims = "# Truelight Cube v2.0\n# iDims 3\n# oDims 3\n";
const QByteArray width2 = "# width 2 2 2\n";

QByteArray points(int from, int to) {
    QByteArray lines;
    for (int n = from; n < to; ++n) {
        lines += QByteArray::number(n / 32.0) + " 0.5 0.25\n";
    }
    return lines;
}

} // namespace

class TestTruelightCube : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{10};

private Q_SLOTS:
    /// What a text makes of the size and of sample (0, 1, 1), which is number 1 + size.
    void lattice_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::addColumn<QVector<float>>("sample");
        const auto row = [](const char* name, const QByteArray& text, bool reads, int size,
                            const QVector<float>& sample = {}) {
            QTest::newRow(name) << text << reads << size << sample;
        };
        const QByteArray cube = "# Cube\n" + points(0, 8);
        const QByteArray plain = dims + width2 + cube + "# End\n";
        const QVector<float> third = {3 / 32.0F, 0.5F, 0.25F};
        const QVector<float> none = {0, 0, 0};

        row("two points", plain, true, 2, third);
        row("three points", dims + "# width 3 3 3\n# Cube\n" + points(0, 27), true, 3,
            {4 / 32.0F, 0.5F, 0.25F});
        row("as other systems write it",
            "\xEF\xBB\xBF" + QByteArray(plain)
                                 .replace("# ", " #\t ")
                                 .replace(" 2 2 2", "\t2  2 2 ")
                                 .replace("\n", "\r\n\r\n"),
            true, 2, third);
        row("no End", dims + width2 + cube, true, 2, third);
        row("what follows End", dims + width2 + "# End\n" + cube, true, 2, none);
        row("no samples", dims + width2, true, 2, none);
        row("cube before its width", dims + cube + width2, true, 2, none);
        row("last width wins", dims + width2 + cube + "# width 3 3 3\n", true, 3, none);
        row("last width wins, before the samples", dims + "# width 250 250 250\n" + plain, true, 2,
            third);
        row("other lines take no place",
            dims + "width 9\n#\n# note 4\n#Cube\n" + width2 + "# Cube\n\n# width 5 5 5\n" +
                points(0, 8),
            true, 2, third);
        row("a partial line keeps the rest",
            dims + width2 + "# Cube\n" + points(0, 3) + "0.75\n" + points(4, 8), true, 2,
            {0.75F, 0.5F, 0.25F});
        row("values beyond 1 are clamped",
            dims + width2 + "# Cube\n" + points(0, 3) + "-1 3 0.25\n" + points(4, 8), true, 2,
            {0, 1, 0.25F});
        row("last sample lacks", dims + width2 + "# Cube\n" + points(0, 7), true, 2, third);
        row("two samples lack", dims + width2 + "# Cube\n" + points(0, 6), false, 2);
        row("two input dimensions", "# iDims 2\n" + plain, false, 0);
        row("dimensions are compared as text", "# oDims 03\n" + plain, false, 0);
        row("dimensions behind the width", width2 + "# oDims\n" + cube, true, 2, none);
        row("unequal widths", dims + "# width 17 17 16\n" + cube, false, 0);
        row("two widths", dims + "# width 2 2\n" + cube, false, 0);
        row("the second word is the keyword", dims + "#width width 2 2 2\n" + cube, true, 2, third);
        row("too wide", dims + "# width 257 257 257\n" + cube, false, 257);
        row("more than the file holds", dims + "# width 200 200 200\n", false, 200);
        row("nothing", "", false, 0);
    }
    void lattice() {
        QFETCH(QByteArray, text);
        QFETCH(QVector<float>, sample);
        Read_LUTFile lut(nullptr);
        QTEST(m_format.read(lut, text), "reads");
        QTEST(lut.size3D, "size");
        if (!sample.isEmpty()) {
            QCOMPARE(samples::cell(lut.data3D[1][1][0]), sample); // stored as [k][j][i]
            QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
        }
    }

    void shaper_data() {
        samples::curveColumns();
        const QByteArray length2 = "# lutLength 2\n";
        const QByteArray input = "# InputLUT\n";
        const QVector<float> none = {0, 0, 0, 0, 0, 0};

        samples::curveRow("divided by the width, not by the last point; stored as BGR",
                          dims + "# width 4 4 4\n" + length2 + input + "0 1 2\n\n#\n3 4 5\n# End\n",
                          true, 2, {0.5F, 0.25F, 0, 1, 1, 0.75F});
        samples::curveRow("before the width", dims + length2 + input + "1 1 1\n1 1 1\n" + width2,
                          true, 2, none);
        samples::curveRow("without a cube", dims + length2 + input + "1 1 1\n1 1 1\n", true, 2,
                          none);
        samples::curveRow("last length wins",
                          dims + width2 + length2 + input + "1 1 1\n1 1 1\n# lutLength 1\n", true,
                          1, {0, 0, 0});
        samples::curveRow("length without a number",
                          dims + length2 + width2 + "# lutLength x\n" + input + "2 1 0\n1\n", true,
                          2, {0, 0.5F, 1, 0, 0.5F, 0.5F});
        samples::curveRow("last entry lacks", dims + width2 + length2 + input + "2 1 0\n", true, 2,
                          {0, 0.5F, 1, 0, 0, 0});
        samples::curveRow("two entries lack", dims + width2 + length2 + input, false, 2);
        samples::curveRow("no length", dims + width2 + input + "1 1 1\n", true, 0);
        samples::curveRow("too long", dims + width2 + "# lutLength 9999999\n", false, 9999999);
    }
    void shaper() { samples::compareCurve(m_format); }

    /// A cube that begins with a partial line takes the rest from the shaper's last entry.
    void bothSections() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut,
                                      dims + width2 +
                                          "# lutLength 1\n# InputLUT\n2 1 0.5\n# Cube\n0.25\n" +
                                          points(1, 8) + "# End\n",
                                      true, true));
        QCOMPARE(samples::curve(lut), QVector<float>({1, 0.5F, 0.25F}));
        QCOMPARE(samples::cell(lut.data3D[0][0][0]), QVector<float>({0.25F, 1, 0.5F}));
        QCOMPARE(samples::cell(lut.data3D[1][1][0]), QVector<float>({6 / 32.0F, 0.5F, 0.25F}));
        QCOMPARE(lut.domainMax1D[0], 1.0F);
    }
};

QTEST_GUILESS_MAIN(TestTruelightCube)
#include "test_truelight_cube.moc"

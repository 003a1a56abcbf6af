#include "one_format.h"

namespace {

const QByteArray dims = "# Truelight Cube v2.0\n# iDims 3\n# oDims 3\n";
const QByteArray width2 = "# width 2 2 2\n";
const QByteArray input = "# InputLUT\n";

} // namespace

class TestTruelightCube : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{10};

private Q_SLOTS:
    void lattice_data() {
        samples::textColumns();
        using samples::numbered;
        using samples::textRow;
        const QByteArray cube = "# Cube\n" + numbered(0, 8);
        const QByteArray plain = dims + width2 + cube + "# End\n";
        const QVector<float> second = {1 / 32.0F, 0.5F, 0.25F};
        const QVector<float> none = {0, 0, 0};

        textRow("blanks around the keywords",
                QByteArray(plain).replace("# ", " #\t ").replace(" 2 2 2", "\t2  2 2 "), true, 2,
                second);
        textRow("no End", dims + width2 + cube, true, 2, second);
        textRow("what follows End", dims + width2 + "# End\n" + cube, true, 2, none);
        textRow("no samples", dims + width2, true, 2, none);
        textRow("cube before its width", dims + cube + width2, true, 2, none);
        textRow("last width wins", dims + width2 + cube + "# width 3 3 3\n", true, 3, none);
        textRow("last width wins, before the samples", dims + "# width 250 250 250\n" + plain, true,
                2, second);
        textRow("other lines",
                dims + "width 9\nx width 3 3 3\nx End\n#\n# note 4\n#Cube\n" + width2 +
                    "# Cube\n\n# width 5 5 5\n" + numbered(0, 8),
                true, 2, second);
        textRow("values beyond 1 are clamped",
                dims + width2 + "# Cube\n0 0 0\n-1 3 0.25\n" + numbered(2, 8), true, 2,
                {0, 1, 0.25F});
        textRow("two input dimensions", "# iDims 2\n" + plain, false, 0);
        textRow("dimensions are compared as text", "# oDims 03\n" + plain, false, 0);
        textRow("dimensions after the width", width2 + "# oDims\n" + cube, true, 2, none);
        textRow("unequal widths", dims + "# width 17 17 16\n" + cube, false, 0);
        textRow("first width differs", dims + "# width 16 17 17\n" + cube, false, 0);
        textRow("two widths", dims + "# width 2 2\n" + cube, false, 0);
        textRow("the second word is the keyword", dims + "#width width 2 2 2\n" + cube, true, 2,
                second);
        textRow("more than the file holds", dims + "# width 200 200 200\n", false, 200);
        textRow("nothing", "", false, 0);
    }
    void lattice() { samples::compareLattice(m_format); }

    /// The shaper is kept as the 1D table. Its sections end like those of other formats.
    void shaper_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray length2 = "# lutLength 2\n";
        const QVector<float> none = {0, 0, 0, 0, 0, 0};

        textRow("divided by the width, not by the last point; stored as BGR",
                dims + "# width 4 4 4\n" + length2 + input + "0 1 2\n\n#\n3 4 5\n# End\n", true, 2,
                {0.5F, 0.25F, 0, 1, 1, 0.75F});
        textRow("before the width", dims + length2 + input + "1 1 1\n1 1 1\n" + width2, true, 2,
                none);
        textRow("without a cube", dims + length2 + input + "1 1 1\n1 1 1\n", true, 2, none);
        textRow("last length wins",
                dims + width2 + length2 + input + "1 1 1\n1 1 1\n# lutLength 1\n", true, 1,
                {0, 0, 0});
        textRow("length without a number",
                dims + length2 + width2 + "# lutLength x\n" + input + "2 1 0\n1\n", true, 2,
                {0, 0.5F, 1, 0, 0.5F, 0.5F});
        textRow("the last entry is missing", dims + width2 + length2 + input + "2 1 0\n", true, 2,
                {0, 0.5F, 1, 0, 0, 0});
        textRow("two entries are missing", dims + width2 + length2 + input, false, 2);
        textRow("no length", dims + width2 + input + "1 1 1\n", true, 0);
        textRow("too long", dims + width2 + "# lutLength 9999999\n", false, 9999999);
    }
    void shaper() { samples::compareCurve(m_format); }

    /// A cube that begins with a partial line is completed from the shaper's last entry. If its
    /// last sample is missing, the shaper's domain is kept.
    void bothSections() {
        const QByteArray text = dims + width2 + "# lutLength 1\n" + input +
                                "2 1 0.5\n# Cube\n0.25\n" + samples::numbered(1, 8);
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, text + "# End\n", true, true));
        QCOMPARE(samples::curve(lut), QVector<float>({1, 0.5F, 0.25F}));
        QCOMPARE(samples::cell(lut.data3D[0][0][0]), QVector<float>({0.25F, 1, 0.5F}));
        QCOMPARE(samples::cell(lut.data3D[1][1][1]), QVector<float>({7 / 32.0F, 0.5F, 0.25F}));
        QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>({1, 1, 1}));
        Read_LUTFile incomplete(nullptr);
        QVERIFY(m_format.read(incomplete, text.left(text.lastIndexOf('\n', -2) + 1)));
        QCOMPARE(samples::cell(incomplete.domainMax1D), QVector<float>({2, 2, 2}));
        QCOMPARE(samples::cell(incomplete.domainMax3D), QVector<float>({1, 1, 1}));
    }
};

QTEST_GUILESS_MAIN(TestTruelightCube)
#include "test_truelight_cube.moc"

#include "one_format.h"

namespace {

const QByteArray metadata = "BEGIN METADATA\nany text\nEND METADATA\n";
const QByteArray shaper = "2\n0 1\n0 1\n";

QByteArray csp(const QByteArray& kind, const QByteArray& shapers, const QByteArray& rest) {
    return "CSPLUTV100\n" + kind + '\n' + metadata + shapers + rest;
}

} // namespace

class TestCsp : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{9};

private Q_SLOTS:
    void lattice_data() {
        samples::textColumns();
        using samples::numbered;
        using samples::textRow;
        const QByteArray shapers = shaper.repeated(3);
        const QByteArray eight = numbered(0, 8);
        const QByteArray plain = csp("3D", shapers, "2 2 2\n" + eight);
        const QVector<float> second = {1 / 32.0F, 0.5F, 0.25F};

        textRow("text around the metadata",
                QByteArray(plain).replace(metadata, "a b c\nBEGIN METADATA x\n2 2 2\n" + metadata),
                true, 2, second);
        textRow("metadata end with their whole line",
                QByteArray(plain).replace("any", "1 2\nEND METADATA y\n9 9\n9 9\n9 9 9\nany"), true,
                2, second);
        textRow("blank lines between", QByteArray(plain).replace("1\n", "1 \n\n"), true, 2, second);
        textRow("domain of the outputs' ends",
                csp("3D", "2\n9 9\n0 2\n" + shaper + "3\n7 8 9\n0.125 9 1.125\n",
                    "2 2 2\n0 0 0\n3 0.5 0\n" + numbered(2, 8)),
                true, 2, {1, 0.5F, 0.125F});
        textRow("a maximum below 1",
                csp("3D", "2\n0 1\n0 0.5\n" + shaper.repeated(2), "2 2 2\n" + eight), true, 2,
                {1 / 16.0F, 0.5F, 0.25F});
        textRow("a shaper word that is not a number counts as 0",
                csp("3D", "2\n0 1\nlow 4\n" + shaper.repeated(2), "2 2 2\n" + eight), true, 2,
                {1 / 128.0F, 0.5F, 0.25F});
        textRow("lines of other counts before the size",
                csp("3D", shapers, "\n2\n3 3\n4 4 4 4\n2 2 2\n" + eight), true, 2, second);
        textRow("unequal sizes", csp("3D", shapers, "2 2 3\n" + eight + eight), false, 0);
        textRow("the first three words are the size", csp("3D", shapers, "a b c\n2 2 2\n" + eight),
                false, 0);
        textRow("no metadata", "CSPLUTV100\n3D\n" + shapers + "2 2 2\n" + eight, false, 0);
        textRow("blank line first", '\n' + plain, false, 0);
        textRow("other version", QByteArray(plain).replace("V100", "V200"), false, 0);
        textRow("other kind", QByteArray(plain).replace("3D", "2D"), false, 0);
        textRow("nothing", "", false, 0);
    }
    void lattice() { samples::compareLattice(m_format); }

    void curves_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray shapers = "2\n0 1\n0 2\n" + shaper.repeated(2);
        textRow("stored as BGR", csp("1D", shapers, "2\n0 .5 .25\n9 9 9\n"), true, 2,
                {0.25F, 0.5F, 0, 1, 1, 1});
        textRow("other counts before the size", csp("1D", shapers, "\n1 2\n1 2 3\n1\n1 0 1\n"),
                true, 1, {1, 0, 0.5F});
        textRow("no size", csp("1D", shapers, "three\n2 1 1\n"), false, 0);
    }
    void curves() { samples::compareCurve(m_format); }

    /// The shapers' minima are kept, and with a complete lattice their maxima too.
    void domainsOfTheShapers() {
        const QByteArray shapers = "2\n0 1\n0.5 2.5\n" + shaper.repeated(2);
        Read_LUTFile lattice(nullptr);
        QVERIFY(m_format.read(lattice, csp("3D", shapers, "1 1 1\n1 1 1\n")));
        QCOMPARE(samples::cell(lattice.domainMin3D), QVector<float>({0.5F, 0, 0}));
        QCOMPARE(samples::cell(lattice.domainMax3D), QVector<float>({2.5F, 1, 1}));
        QCOMPARE(lattice.data3D[0][0][0][0], 0.5F);
        Read_LUTFile curve(nullptr);
        QVERIFY(m_format.read(curve, csp("1D", shapers, "1\n1 1 1\n")));
        QCOMPARE(samples::cell(curve.domainMin1D), QVector<float>({0.5F, 0, 0}));
        QCOMPARE(samples::curve(curve), QVector<float>({1, 1, 0.5F}));
    }
};

QTEST_GUILESS_MAIN(TestCsp)
#include "test_csp.moc"

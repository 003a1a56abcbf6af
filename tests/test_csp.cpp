#include "one_format.h"

namespace {

const QByteArray metadata = "BEGIN METADATA\nany text\nEND METADATA\n";
const QByteArray shaper = "2\n0 1\n0 1\n";

QByteArray points(int from, int to) {
    QByteArray lines;
    for (int n = from; n < to; ++n) {
        lines += QByteArray::number(n / 32.0) + " 0.5 0.25\n";
    }
    return lines;
}

QByteArray csp(const QByteArray& kind, const QByteArray& shapers, const QByteArray& rest) {
    return "CSPLUTV100\n" + kind + '\n' + metadata + shapers + rest;
}

} // namespace

class TestCsp : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{9};

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
        const QByteArray shapers = shaper.repeated(3);
        const QByteArray size2 = "2 2 2\n";
        const QByteArray plain = csp("3D", shapers, size2 + points(0, 8));
        const QVector<float> third = {3 / 32.0F, 0.5F, 0.25F};

        row("two points", plain, true, 2, third);
        row("three points", csp("3D", shapers, "3 3 3\n" + points(0, 27)), true, 3,
            {4 / 32.0F, 0.5F, 0.25F});
        row("as other systems write it",
            "\xEF\xBB\xBF" + QByteArray(plain)
                                 .replace("0 1\n", "\t0.0   0.3\t1.0 \n\n")
                                 .replace("\n", "\r\n")
                                 .replace("END", " END"),
            true, 2, third);
        row("text before and behind the metadata",
            QByteArray(plain).replace("BEGIN", "a b c\n2 2 2\nBEGIN"), true, 2, third);
        row("domain of the outputs' ends",
            csp("3D", "2\n9 9\n0 2\n" + shaper + "3\n7 8 9\n0.125 9 1.125\n",
                size2 + points(0, 3) + "3 0.5 0\n" + points(4, 8)),
            true, 2, {1, 0.5F, 0.125F});
        row("a shaper word that is no number counts as 0",
            csp("3D", "2\n0 1\nlow 4\n" + shaper.repeated(2), size2 + points(0, 8)), true, 2,
            {3 / 128.0F, 0.5F, 0.25F});
        row("lines of other counts before the size",
            csp("3D", shapers, "\n2\n3 3\n4 4 4 4\n" + size2 + points(0, 8)), true, 2, third);
        row("lines without numbers take no place",
            csp("3D", shapers, size2 + points(0, 3) + "\n# 1 1 1\n" + points(3, 8)), true, 2,
            third);
        row("a partial line keeps the rest",
            csp("3D", shapers, size2 + points(0, 3) + "0.75\n" + points(4, 8)), true, 2,
            {0.75F, 0.5F, 0.25F});
        row("last sample lacks", csp("3D", shapers, size2 + points(0, 7)), true, 2, third);
        row("two samples lack", csp("3D", shapers, size2 + points(0, 6)), false, 2);
        row("unequal sizes", csp("3D", shapers, "2 2 3\n" + points(0, 12)), false, 0);
        row("the first three words are the size",
            csp("3D", shapers, "a b c\n" + size2 + points(0, 8)), false, 0);
        row("size too large", csp("3D", shapers, "257 257 257\n" + points(0, 8)), false, 257);
        row("more than the file holds", csp("3D", shapers, "200 200 200\n" + points(0, 8)), false,
            200);
        row("no metadata", "CSPLUTV100\n3D\n" + shapers + size2 + points(0, 8), false, 0);
        row("blank line first", '\n' + plain, false, 0);
        row("other version", QByteArray(plain).replace("V100", "V200"), false, 0);
        row("other kind", QByteArray(plain).replace("3D", "2D"), false, 0);
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
        }
    }

    void ordersAndDomain() {
        const QByteArray text =
            csp("3D", "2\n0 1\n0.5 2.5\n" + shaper.repeated(2), "2 2 2\n" + points(0, 8));
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, text, false, true));
        QCOMPARE(samples::cell(lut.data3D[0][1][1]), QVector<float>({0.25F, 0.5F, 0.25F}));
        QCOMPARE(lut.domainMin3D[0], 0.5F);
        QCOMPARE(lut.domainMax3D[0], 2.5F); // stays with a complete table
        Read_LUTFile shortOne(nullptr);
        QVERIFY(m_format.read(shortOne, text.chopped(17)));
        QCOMPARE(shortOne.domainMax3D[0], 1.0F);
    }

    void curves_data() {
        samples::curveColumns();
        const QByteArray shapers = "2\n0 1\n0 2\n" + shaper.repeated(2);
        const QVector<float> three = {0.25F, 0.5F, 0, 0.25F, 0.5F, 0.5F, 1, 1, 1};
        samples::curveRow("three entries, stored as BGR",
                          csp("1D", shapers, "3\n0 .5 .25\n1 .5 .25\n9 9 9\n"), true, 3, three);
        samples::curveRow("other counts before the size",
                          csp("1D", shapers, "\n1 2\n1 2 3\n1\n1 0 1\n"), true, 1, {1, 0, 0.5F});
        samples::curveRow("last entry lacks", csp("1D", shapers, "2\n2 1 1\n"), true, 2,
                          {1, 1, 1, 0, 0, 0});
        samples::curveRow("two entries lack", csp("1D", shapers, "3\n2 1 1\n"), false, 3);
        samples::curveRow("no size", csp("1D", shapers, "three\n2 1 1\n"), false, 0);
        samples::curveRow("too long", csp("1D", shapers, "99999999\n2 1 1\n"), false, 99999999);
    }
    void curves() { samples::compareCurve(m_format); }
};

QTEST_GUILESS_MAIN(TestCsp)
#include "test_csp.moc"

#include "lut/lattice.h"
#include "one_format.h"

class TestNvx : public QObject {
    Q_OBJECT

    const samples::OneFormat m_curve{15};
    const samples::OneFormat m_lattice{16};

    /// The red of each point in the file's order, in 32nds.
    static QVector<float> reds(const Read_LUTFile& lut) {
        QVector<float> values;
        tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
            values += lut.data3D[i][j][k][0] * 32;
            return true;
        });
        return values;
    }

private Q_SLOTS:
    void curves_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray header = "From 0.0 1.0\nLength 2\n";
        textRow("header lines in any order",
                "# From 0 9\n\nfrom 0 7\nFrom 0 4\nLength 1\nFrom 0 9\n# c\n4 2 1\nend 1", true, 1,
                {1, 0.5F, 0.25F});
        textRow("no domain", "Length 1\n1 0.5 0", true, 1, {1, 0.5F, 0});
        textRow("domain divides without subtracting", "From 0.5 1\nLength 1\n0.75 9 -9\n", true, 1,
                {1.5F, 2, 1});
        textRow("last domain wins", "From 0 9\nFrom 0 4\nLength 1\n4 2 1\n", true, 1,
                {1, 0.5F, 0.25F});
        textRow("an unreadable domain is ignored",
                "From 0 4\nFrom x\nFrom\t0 9\nFrom\nLength 1\n4 2 1\n", true, 1, {1, 0.5F, 0.25F});
        textRow("a domain of one number keeps the other end",
                "From 0 4\nFrom 1\nLength 1\n3 4 1.5\n", true, 1, {1, 4.0F / 3, 0.5F});
        textRow("also where there was none", "From -1\nLength 1\n1 0.5 0\n", true, 1,
                {0.5F, 0.25F, 0});
        textRow("keyword removed wherever it is",
                "FromFrom 0 4\nFrom From 0 From 4\nLength Length 1\n4 2 1\n", true, 1,
                {1, 0.5F, 0.25F});
        textRow("one line fewer", header + "0 0 0\n", false, 2);
        textRow("one line more", header + "0 0 0\n1 1 1\n0\n", false, 2);
        textRow("many lines more", header + QByteArray("1 1 1\n").repeated(99), false, 2);
        textRow("no length", "From 0 1\n0 0 0\n", false, 0);
        textRow("the first length counts", "Length 0\nLength 1\n0 0 0\n", false, 0);
        textRow("length without its blank", "Length\t1\n0 0 0\n", false, 0);
    }
    void curves() { samples::compareCurve(m_curve); }

    /// A probe reads only the domain and the length.
    void probes() {
        for (const samples::OneFormat* format : {&m_curve, &m_lattice}) {
            Read_LUTFile lut(nullptr);
            QVERIFY(format->read(lut, "From 0.5 4\nLength 65\n", true));
            const bool is3D = format == &m_lattice;
            QCOMPARE(is3D ? lut.size3D : lut.size1D, 65);
            QCOMPARE(samples::cell(is3D ? lut.domainMin3D : lut.domainMin1D),
                     QVector<float>(3, 0.5F));
            Read_LUTFile none(nullptr);
            QVERIFY(!format->read(none, "From 0 1\n", true));
        }
    }

    void everyLineIsAPoint_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVector<float>>("values");
        using samples::numbered;
        const QByteArray header = "# c\n\n Length  2\n";
        QTest::newRow("blank line") << header + numbered(0, 2) + '\n' + numbered(3, 8)
                                    << QVector<float>({0, 1, 0, 3, 4, 5, 6, 7});
        QTest::newRow("text and comment") << header + "From 0 9\n#1\n" + numbered(2, 20)
                                          << QVector<float>({0, 0, 2, 3, 4, 5, 6, 7});
        QTest::newRow("no body") << QByteArray("Length 2") << QVector<float>(8, 0);
        QTest::newRow("clamped") << "From 0 4\n" + header + "2\n9\n-1"
                                 << QVector<float>({16, 32, 0, 0, 0, 0, 0, 0});
    }
    void everyLineIsAPoint() {
        QFETCH(QByteArray, text);
        Read_LUTFile lut(nullptr);
        QVERIFY(m_lattice.read(lut, text));
        QTEST(reds(lut), "values");
    }

    void aBlankLineKeepsTheValuesBefore() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_lattice.read(lut, "From 0 1023\nLength 2\n1023 0 511.5\n\n0 1023\n"));
        QCOMPARE(samples::cell(lut.data3D[0][0][1]), QVector<float>({0, 0, 0}));
        QCOMPARE(samples::cell(lut.data3D[0][1][0]), QVector<float>({0, 1, 0.5F}));
    }
};

QTEST_GUILESS_MAIN(TestNvx)
#include "test_nvx.moc"

#include "one_format.h"

class TestSpi3D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{13};

private Q_SLOTS:
    void lattice_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray header = "SPILUT 1.0\n3 3\n2 2 2\n";
        const QVector<float> sample = {1, 0.5F, 0.25F};
        textRow("lines before the signature",
                "# c\n3 1\n\nx SPILUT\n" + QByteArray(header).replace(".0", ".0\n# 2 1\nx") +
                    "# 0 0 1 0 0 0\n0 0 1 1 .5 .25",
                true, 2, sample);
        textRow("headers that match in part", "SPILUTx\n3\n3 3 3\n2 2\n2 2 2 9\n0 0 1 1 .5 .25\n",
                true, 2, sample);
        textRow("a later line wins", header + "0 0 1 0 0 0\n0 0 1 1 .5 .25\n", true, 2, sample);
        textRow("clamped", header + "0 0 1 7 .5 -1\n", true, 2, {1, 0.5F, 0});
        textRow("a place in part", header + "1\n0 0 1 0 .5 .25\n0\n0 0\n0 0 1 1\n", true, 2,
                sample);
        textRow("places outside are skipped, their values carry",
                header + "2 0 0 1 .5 .25\n0 -1 0 1 .5 .25\n0 0 2147483647 1 .5 .25\n0 0 1\n", true,
                2, sample);
        textRow("samples cut off", header, true, 2, {0, 0, 0});
        textRow("more of them", "SPILUT 1.0\n3 3\n33 33 33\n", true, 33, {0, 0, 0});
        textRow("channels differ", "SPILUT 1.0\n3 1\n2 2 2\n", false, 0);
        textRow("first two sizes alone are the same", "SPILUT 1.0\n3 3\n32 32 16\n", false, 0);
        textRow("first and last size alone", "SPILUT 1.0\n3 3\n32 16 32\n", false, 0);
        textRow("no signature", "spilut\n3 3\n2 2 2\n", false, 0);
        textRow("signature inside a line", "x SPILUT 1.0\n3 3\n2 2 2\n", false, 0);
        textRow("no size", "SPILUT 1.0\n3 3\n2 2\n", false, 0);
        textRow("nothing", "", false, 0);
    }
    void lattice() { samples::compareLattice(m_format); }

    void linesComeInAnyOrder() {
        QByteArray lines;
        for (int n = 0; n < 27; ++n) {
            const int m = n * 7 % 27;
            const int place[] = {m / 9, m / 3 % 3, m % 3};
            for (const int index : place) {
                lines += QByteArray::number(index) + ' ';
            }
            lines += QByteArray::number(m / 32.0) + " 0.5 0.25\n";
        }
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "SPILUT 1.0\n3 3\n3 3 3\n" + lines));
        for (int n = 0; n < 27; ++n) {
            QCOMPARE(lut.data3D[n / 9][n / 3 % 3][n % 3][0], float(n) / 32);
        }
    }
};

QTEST_GUILESS_MAIN(TestSpi3D)
#include "test_spi3d.moc"

#include "one_format.h"

/// Two formats that differ only in their keyword: what is tested for the first holds for both.
class TestSizedLattice : public QObject {
    Q_OBJECT

    const samples::OneFormat m_davLut{8};
    const samples::OneFormat m_itx{11};

private Q_SLOTS:
    void davLut_data() {
        samples::textColumns();
        using samples::numbered;
        using samples::textRow;
        const QByteArray size2 = "3DLUTSIZE 2\n";
        const QByteArray eight = numbered(0, 8);
        const QVector<float> second = {1 / 32.0F, 0.5F, 0.25F};

        textRow("lines before the size line",
                "3dlutsize 9\n3DLUT 9\n1 1 1\n# 3DLUTSIZE 9\n\n" + size2 + eight, true, 2, second);
        textRow("every keyword is removed", "3DLUTSIZE 3DLUTSIZE2\n" + eight, true, 2, second);
        textRow("a later size line begins with a number",
                size2 + numbered(0, 1) + "3DLUTSIZE 9\n" + numbered(2, 8), true, 2,
                {1, 0.5F, 0.25F});
        textRow("clamped", size2 + "0 0 0\n-1 1.5 1e9\n" + numbered(2, 8), true, 2, {0, 1, 1});
        textRow("more samples than places", size2 + eight + "x\n" + eight, true, 2, second);
        textRow("other case only", "3dLutSize 2\n" + eight, false, 0);
        textRow("size without a number", "3DLUTSIZE\n" + size2 + eight, false, 0);
        textRow("empty", "", false, 0);
    }
    void davLut() { samples::compareLattice(m_davLut); }

    void itx_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray eight = samples::numbered(0, 8);
        const QVector<float> second = {1 / 32.0F, 0.5F, 0.25F};
        textRow("no keyword but the size",
                "# c\nTITLE \"a\"\nDOMAIN_MAX 2 2 2\nLUT_1D_SIZE 9\nLUT_3D_SIZE 2\n" + eight, true,
                2, second);
        textRow("size line without its blank", "LUT_3D_SIZE2LUT_3D_SIZE\n" + eight, true, 2,
                second);
        textRow("size in lower case", "lut_3d_size 2\n" + eight, false, 0);
        textRow("keyword inside a line", "A LUT_3D_SIZE 2\n" + eight, false, 0);
        textRow("the other keyword", "3DLUTSIZE 2\n" + eight, false, 0);
        textRow("size inferred from nothing", eight, false, 0);
    }
    void itx() { samples::compareLattice(m_itx); }
};

QTEST_GUILESS_MAIN(TestSizedLattice)
#include "test_sized_lattice.moc"

#include "one_format.h"

class TestSpi1D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{12};

private Q_SLOTS:
    /// The reader's own orders store cells as blue, green, red.
    void reads_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray length2 = "Version 1\nFrom 0.0 1.0\nLength 2\n";
        const QByteArray three = length2 + "Components 3\n{\n";
        const QVector<float> cells = {0.5F, 0.25F, 0, 0.75F, 0.5F, 1};
        textRow("three components", three + "  0 0.25 0.5\n  1 0.5 0.75\n}\n", true, 2, cells);
        textRow("two components", length2 + "Components 2\n{\n0 0.25\n1 0.5 0.75\n}\n", true, 2,
                {0, 0.25F, 0, 0, 0.5F, 1});
        textRow("one component", "Length 3\nComponents 1\n{\n0\n0.5 1\n1\n}\n", true, 3,
                {0, 0, 0, 0.5F, 0.5F, 0.5F, 1, 1, 1});
        textRow("integer samples", "From 0.0 4095\nLength 1\nComponents 3\n{\n4095 5000 -3\n}",
                true, 1, {0, 1, 1});
        textRow("domain divides without subtracting",
                "From -0.125 1.125\nLength 1\nComponents 3\n{\n0.5 -1 2\n}", true, 1,
                {0.9F, -0.1F, 0.4F});
        textRow("a range of one number is a minimum",
                "From 0.5\nLength 1\nComponents 1\n{\n0.25\n}", true, 1, {1, 1, 1});
        textRow("keywords without blanks", "Length1\nComponents1\n{\n1\n", true, 1, {1, 1, 1});
        textRow("last keyword wins", "Length 3\nComponents 1\n" + three + "0 .25 .5\n1 .5 .75\n",
                true, 2, cells);
        textRow("too many", three + "0 0.25 0.5\n}\n1 0.5 0.75\n1 1 1\n", true, 2, cells);
        textRow("no components", length2 + "{\n1 1 1\n", true, 2, {0, 0, 0, 0, 0, 0});
        textRow("components below 1", "Length 2\nComponents -1\n{\n1\n", true, 2,
                {0, 0, 0, 0, 0, 0});
        textRow("too many components", length2 + "Components 4\n{\n1 1 1 1\n1 1 1 1\n", false, 2);
        textRow("header ends at a bad range", "Length 1\nComponents 1\nFrom x\nLength 2\n0.5\n",
                true, 1, {0.5F, 0.5F, 0.5F});
        textRow("header ends at bad components",
                "Length 1\nComponents 1\nComponents x\nLength 2\n0.5\n", true, 1,
                {0.5F, 0.5F, 0.5F});
        textRow("header ends at a bad length", "Length {\nLength 1\n", false, 0);
        textRow("no length", "Components 3\n{\n1 1 1\n", false, 0);
        textRow("nothing", "", false, 0);
    }
    void reads() { samples::compareCurve(m_format); }

    void minimumOfTheRangeStays() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "From 0.5 4\nLength 65\n", true));
        QCOMPARE(samples::cell(lut.domainMin1D), QVector<float>(3, 0.5F));
    }
};

QTEST_GUILESS_MAIN(TestSpi1D)
#include "test_spi1d.moc"

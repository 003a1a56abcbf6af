#include "one_format.h"

namespace {

/// Samples numbered in file order by their first channel and their running number.
QByteArray numbered(int from, int to) {
    QByteArray text;
    for (int n = from; n < to; ++n) {
        text += QByteArray::number(n) + '\t' + QByteArray::number(n) + "\t2\t3\n";
    }
    return text;
}

} // namespace

class TestMga : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{4};

private Q_SLOTS:
    void lattice_data() {
        samples::textColumns();
        using samples::textRow;
        const QByteArray header = "channel 3d\nin 8\nout 9\nformat lut\nvalues red green blue\n";
        const QByteArray eight = numbered(0, 8);
        const QVector<float> second = {0.125F, 0.25F, 0.375F};
        const QByteArray reals = "values\n0 0 0 0\n1 0.5 0.25 2\n" + numbered(2, 8);

        textRow("integers", header + eight, true, 2, second);
        textRow("real numbers", "in 8\nout 1\n" + reals, true, 2, {0.5F, 0.25F, 1});
        textRow("no scale given", "in 8\n" + reals, true, 2, {0.5F, 0.25F, 1});
        textRow("two codes", "in 8\nout 2\n" + reals, true, 2, {0.5F, 0.25F, 1});
        textRow("size rounded down", "out 9\nin 9\nvalues\n" + eight, true, 2, second);
        textRow("size rounded up", "out 9\nin 4 \nvalues\n" + eight, true, 2, second);
        textRow("count with blanks", "out 9\nin 2 7\nvalues\n" + numbered(0, 27), true, 3, second);
        textRow("scale ends at a blank", "in 8\nout 9 6\nvalues\n" + eight, true, 2, second);
        textRow("last header lines win", "out 3\nin 99999999999\n" + header + eight, true, 2,
                second);
        textRow("running numbers are ignored", header + "7 0 0 0\n-3 1 2 3\n" + numbered(0, 6),
                true, 2, second);
        textRow("lines of other counts are skipped",
                header + "0 0 0 0\n1 1 1\n1 1 1 1 1\n" + numbered(1, 8), true, 2, second);
        textRow("a running number only", header + "0 1 2 3\n1 x 9 9\n" + numbered(2, 8), true, 2,
                second);
        textRow("other white space parts words, not numbers",
                header +
                    "0 4 2 3\n1 1\xC2\xA0"
                    "5 5\n" +
                    numbered(2, 8),
                true, 2, second);
        textRow("unknown header lines", "whatever 3\n0 1 1 1\n#channel 1d\n\n" + header + eight,
                true, 2, second);
        textRow("no values line", "in 8\n" + eight, false, 2);
        textRow("channel with blanks", "channel \t 3 d\n" + header + eight, true, 2, second);
        textRow("one channel", "channel 1d\n" + header + eight, false, 0);
        textRow("no channel kind", "channel\n" + header + eight, false, 0);
        textRow("count without a number", "in\n" + header + eight, false, 0);
        textRow("another word that begins with in", "index 8\n" + header + eight, false, 0);
        textRow("scale without a number", "output 9\n" + header + eight, false, 0);
        textRow("no count", "out 9\nvalues\n" + eight, false, 0);
        textRow("count below zero", "in -8\nvalues\n" + eight, false, 0);
        textRow("too many", "in 16974593\nvalues\n" + eight, false, 257);
        textRow("count absurd", "in 9223372036854775807\nvalues\n" + eight, false, 2097152);
    }
    void lattice() { samples::compareLattice(m_format); }

    void largestScale() {
        Read_LUTFile empty(nullptr);
        const QByteArray text = m_format.written(empty, std::numeric_limits<std::int64_t>::max());
        QVERIFY(text.contains("\nout 9223372036854775808\n"));
    }

    /// A full scale below 2 is used as it is, and samples are divided by it.
    void oddScales() {
        Read_LUTFile none(nullptr);
        QVERIFY(m_format.read(none, "in 1\nout 0\nvalues\n0 0 1 -1\n"));
        QVERIFY(qIsNaN(none.data3D[0][0][0][0]) && qIsNaN(none.data3D[0][0][0][1]));
        Read_LUTFile negative(nullptr);
        QVERIFY(m_format.read(negative, "in 1\nout -4\nvalues\n0 0 1 -1\n"));
        QCOMPARE(samples::cell(negative.data3D[0][0][0]), QVector<float>({1, 1, 0}));
    }
};

QTEST_GUILESS_MAIN(TestMga)
#include "test_mga.moc"

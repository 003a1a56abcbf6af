#include "samples.h"

namespace {

constexpr int mga = 4;

/// Samples that count the file's order in their first channel and in their running number.
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

    samples::Folder m_folder;

    bool read(Read_LUTFile& lut, const QByteArray& text) {
        return lut.ReadFile(samples::request(m_folder.file(QStringLiteral("in.mga"), text), mga),
                            false);
    }

    /// The samples of what is written, behind the header that is checked here.
    QByteArray writtenSamples(Read_LUTFile& lut, LUTFILE_ST st, const QByteArray& sizeAndScale) {
        const QByteArray header = "#HEADER\n#type: 3D cube file\n#format: 1.00\n#created:\n"
                                  "#owner: norvane\n#END\n\nchannel\t3d\n" +
                                  sizeAndScale + "\n\nformat lut\n\nvalues\tred\tgreen\tblue\n";
        st.path = m_folder.path(QStringLiteral("out.mga"));
        if (!Write_LUTFile(nullptr).WriteFile(st, lut)) {
            return QByteArrayLiteral("(failed)");
        }
        const QByteArray text = m_folder.content(QStringLiteral("out.mga"));
        return text.startsWith(header) ? text.mid(header.size()) : "(header) " + text;
    }

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    /// Whether the file \a text reads, its size, and its sample (0, 0, 1).
    void content_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::addColumn<QVector<float>>("sample");
        const auto row = [](const char* name, const QByteArray& text, bool reads, int size,
                            const QVector<float>& sample = {}) {
            QTest::newRow(name) << text << reads << size << sample;
        };
        const QByteArray header = "channel 3d\nin 8\nout 9\nformat lut\nvalues\n";
        const QByteArray eight = numbered(0, 8);
        const QVector<float> second = {0.125F, 0.25F, 0.375F};

        row("two points", header + eight, true, 2, second);
        row("three points", "out 33\nin 27\nvalues red green blue\n" + numbered(0, 27), true, 3,
            {0.03125F, 0.0625F, 0.09375F});
        row("as other systems write it",
            QByteArray("\xEF\xBB\xBF#HEADER\n" + header + eight)
                .replace("\n", "\r\n")
                .replace(" ", " \t "),
            true, 2, second);
        row("real numbers", "in 8\nout 1\nvalues\n0 0 0 0\n1 0.5 0.25 2\n" + numbered(2, 8), true,
            2, {0.5F, 0.25F, 1});
        row("no scale given", "in 8\nvalues\n0 0 0 0\n1 0.5 0.25 2\n" + numbered(2, 8), true, 2,
            {0.5F, 0.25F, 1});
        row("size rounded down", "out 9\nin 9\nvalues\n" + eight, true, 2, second);
        row("size rounded up", "out 9\nin 4 \nvalues\n" + eight, true, 2, second);
        row("count with blanks", "out 9\nin 2 7\nvalues\n" + numbered(0, 27), true, 3, second);
        row("scale ends at a blank", "in 8\nout 9 6\nvalues\n" + eight, true, 2, second);
        row("last header lines win", "out 3\nin 99999999999\n" + header + eight, true, 2, second);
        row("running numbers place nothing", header + "7 0 0 0\n-3 1 2 3\n" + numbered(0, 6), true,
            2, second);
        row("lines that take no place",
            header + "0 0 0 0\n\n# 1 1 1\n1 1 1\n1 1 1 1 1\na b c d\n" + numbered(1, 8), true, 2,
            second);
        row("a partial line keeps the rest", header + "0 4 2 3\n1 1 x 9\n" + numbered(2, 8), true,
            2, second);
        row("other white space parts words, not numbers",
            header +
                "0 4 2 3\n1 1\xC2\xA0"
                "5 5\n" +
                numbered(2, 8),
            true, 2, second);
        row("a running number only", header + "0 1 2 3\n1 x 9 9\n" + numbered(2, 8), true, 2,
            second);
        row("unknown header lines", "whatever 3\n0 1 1 1\n" + header + eight, true, 2, second);
        row("last sample lacks", header + numbered(0, 7), true, 2, second);
        row("two samples lack", header + numbered(0, 6), false, 2);
        row("no values line", "in 8\n" + eight, false, 2);
        row("channel with blanks", "channel \t 3 d\n" + header + eight, true, 2, second);
        row("one channel", "channel 1d\n" + header + eight, false, 0);
        row("no channel kind", "channel\n" + header + eight, false, 0);
        row("count without a number", "in\n" + header + eight, false, 0);
        row("another word that begins so", "index 8\n" + header + eight, false, 0);
        row("scale without a number", "output 9\n" + header + eight, false, 0);
        row("no count", "out 9\nvalues\n" + eight, false, 0);
        row("count below zero", "in -8\nvalues\n" + eight, false, 0);
        row("count absurd", "in 9223372036854775807\nvalues\n" + eight, false, 2097152);
    }
    void content() {
        QFETCH(QByteArray, text);
        QFETCH(QVector<float>, sample);
        Read_LUTFile lut(nullptr);
        QTEST(read(lut, text), "reads");
        QTEST(lut.size3D, "size");
        if (!sample.isEmpty()) {
            QCOMPARE(samples::cell(lut.data3D[0][0][1]), sample);
            QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
        }
    }

    /// A full scale below 2 is the value itself, and is divided by whatever it is.
    void oddScales() {
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, "in 1\nout 0\nvalues\n0 0 1 -1\n"));
        QVERIFY(qIsNaN(lut.data3D[0][0][0][0]) && qIsNaN(lut.data3D[0][0][0][1]));
        QVERIFY(read(lut, "in 1\nout -4\nvalues\n0 0 1 -1\n"));
        QCOMPARE(samples::cell(lut.data3D[0][0][0]), QVector<float>({1, 1, 0}));
    }

    void readsTheSample() {
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(
            samples::request(QStringLiteral(TINTWELL_TEST_DATA "/sample.mga"), mga), false));
        QCOMPARE(samples::cell(lut.data3D[0][1][1]), QVector<float>({0, 4000.0F / 4095, 1}));
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        LUTFILE_ST st = samples::request(QString(), mga, false, false);
        QCOMPARE(writtenSamples(lut, st, "in 0\nout\t1"), QByteArray());
        st.outputScale = 0;
        QCOMPARE(writtenSamples(lut, st, "in 0\nout 1"), QByteArray());

        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i), float(j) / 2, float(k) / 4});
        });
        st.outputScale = 4095;
        QCOMPARE(writtenSamples(lut, st, "in 8\nout 4096"),
                 QByteArray("0\t0\t0\t0\t\n1\t0\t0\t4095\t\n2\t0\t2047\t0\t\n3\t0\t2047\t4095\t\n"
                            "4\t1023\t0\t0\t\n5\t1023\t0\t4095\t\n6\t1023\t2047\t0\t\n"
                            "7\t1023\t2047\t4095\t\n"));
        st.outputScale = 1;
        st.defaultOrder = true;
        QCOMPARE(writtenSamples(lut, st, "in 8\nout\t1"),
                 QByteArray("0\t0.000000\t0.000000\t0.000000\n1\t0.000000\t0.000000\t0.250000\n"
                            "2\t0.000000\t0.500000\t0.000000\n3\t0.000000\t0.500000\t0.250000\n"
                            "4\t1.000000\t0.000000\t0.000000\n5\t1.000000\t0.000000\t0.250000\n"
                            "6\t1.000000\t0.500000\t0.000000\n7\t1.000000\t0.500000\t0.250000\n"));
        Read_LUTFile again(nullptr);
        QVERIFY(read(again, m_folder.content(QStringLiteral("out.mga"))));
        QCOMPARE(samples::cell(again.data3D[1][0][1]), samples::cell(lut.data3D[1][0][1]));
    }
};

QTEST_GUILESS_MAIN(TestMga)
#include "test_mga.moc"

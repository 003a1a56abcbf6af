#include "one_format.h"

#include <cmath>
#include <memory>

// What each text reader makes of lines that only its format has. What all of them share is in
// test_all_formats.

using tintwell::FormatCode;
using tintwell::TableKind;

namespace {

/// Sample lines numbered by their first value, in steps of 1/32 from 0.
QByteArray numbered(int from, int to) {
    QByteArray lines;
    for (int n = from; n < to; ++n) {
        lines += QByteArray::number(n / 32.0) + " 0.5 0.25\n";
    }
    return lines;
}

/// How a format states a size and lays out a line of one sample.
struct Lines {
    QByteArray (*header)(const QByteArray& size);
    QByteArray (*place)(int n) = [](int) { return QByteArray(); };
    const char* rest = ""; ///< completes a line with only one number of its sample
    bool narrows = false;  ///< numbers are read in double precision first
    int mayBeMissing = 1;  ///< samples at the end
    bool hasSize = true;   ///< in its header, as it is
    float scale = 1;       ///< what samples are divided by
};

using Size = const QByteArray&;

QByteArray runningNumber(int n) {
    return QByteArray::number(n) + ' ';
}

/// The same in integer codes, in steps of 1; with \a index, after their running number.
QByteArray codes(int from, int to, bool index = false) {
    QByteArray lines;
    for (int n = from; n < to; ++n) {
        lines += (index ? QByteArray::number(n) + '\t' : "") + QByteArray::number(n) + "\t2\t4\n";
    }
    return lines;
}

const QByteArray eight = numbered(0, 8);
const char* const second = "2: 0.03125 0.5 0.25"; ///< the outcome of two points per axis
const char* const secondOf3 = "3: 0.03125 0.5 0.25";

} // namespace

class TestReaders : public QObject {
    Q_OBJECT

    std::unique_ptr<samples::OneFormat> m_format;
    TableKind m_kind = TableKind::ThreeD;

    void begin(FormatCode code, TableKind kind) {
        m_format = std::make_unique<samples::OneFormat>(code);
        m_kind = kind;
    }

    void expect(const char* outcome, const QByteArrayList& texts) const {
        m_format->expect(m_kind, outcome, texts);
    }

    QString outcomeOf(const QByteArray& text) const { return m_format->outcomeOf(text, m_kind); }

    /// What all formats do with lines of samples.
    void expectLines(const Lines& format, int count = 8) const {
        const bool is3D = m_kind == TableKind::ThreeD;
        const QByteArray header = format.header(QByteArray::number(is3D ? 2 : count));
        QByteArrayList lines;
        for (int n = 0; n < count; ++n) {
            lines += format.place(n) + QByteArray::number(n / 8.0) + " 0.5 0.25";
        }
        const auto with = [&](int at, QByteArray values, int copies = 1) {
            QByteArrayList changed = lines;
            for (int n = at; n < at + copies; ++n) {
                changed[n] = format.place(n) + values;
            }
            return header + changed.join('\n') + '\n';
        };
        const QByteArray plain = header + lines.join('\n');
        const QString outcome = outcomeOf(plain);
        QCOMPARE(outcomeOf("\xEF\xBB\xBF" + QByteArray(plain).replace("\n", " \r\n\t")), outcome);
        QCOMPARE(outcomeOf(QByteArray(plain).replace(" 0.5 ", " \t 0.5  ")), outcome);
        QCOMPARE(outcomeOf(with(0, QByteArray("0.75") + format.rest, 2)),
                 outcomeOf(with(0, "0.75 0 0", 2)));
        QCOMPARE(outcomeOf(with(1, QByteArray("0.75") + format.rest)),
                 outcomeOf(with(1, "0.75 0.5 0.25")));
        if (m_format->code() != FormatCode::Nvx3D) { // where every line is a sample
            lines.insert(1, "\n# 1 1 1\nword 1 1 1\nword 1 1");
            QCOMPARE(outcomeOf(header + lines.join('\n')), outcome);
            lines.removeAt(1);
        }

        Read_LUTFile lut(nullptr); // just above the midpoint of two floats
        QVERIFY(m_format->read(lut, with(1, "0.5 0.500000029802322387695312501 0.5")));
        QCOMPARE((is3D ? samples::sampleAt(lut, 0, 0, 1) : samples::curve(lut).mid(3))[1],
                 (format.narrows ? 0.5F : 0.50000006F) / format.scale);
        for (const int missing : {1, 2}) {
            lines.removeLast();
            QCOMPARE(m_format->read(lut, header + lines.join('\n')),
                     missing <= format.mayBeMissing);
            QCOMPARE(is3D ? lut.data3D[1][1][1][1] : lut.data1D[count - 1][1], 0.0F);
        }
        const int tooLarge = 1 + (is3D ? Read_LUTFile::MaxSize3D : Read_LUTFile::MaxSize1D);
        for (const int size : {0, tooLarge, -100, -101}) { // negative: too few lines
            const QByteArray text = format.header(QByteArray::number(std::abs(size)));
            for (const bool probe : {true, false}) {
                Read_LUTFile sized(nullptr);
                const bool reads =
                    (probe && size != 0) || (size == -100 && format.mayBeMissing > 1);
                QVERIFY(!format.hasSize || m_format->read(sized, text, probe) == reads);
                QVERIFY(!format.hasSize || sized.size3D + sized.size1D == std::abs(size));
                QCOMPARE(sized.hasTable3D(), reads && !probe && format.hasSize);
            }
        }
    }

private Q_SLOTS:
    void cube() {
        begin(FormatCode::Cube, TableKind::ThreeD);
        expectLines({.header = [](Size n) { return "LUT_3D_SIZE " + n + '\n'; }});
        const QByteArray size2 = "LUT_3D_SIZE 2\n";
        const QByteArray start = size2 + "0 0 0\n";
        const QByteArray six = QByteArray("1 0 0\n").repeated(6);
        const QByteArray header1D = "LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE 0 4\n";
        expect(secondOf3, {numbered(0, 27), "TITLE 1\n" + numbered(0, 26) + "x 1 1 1\n#\n"});
        expect(second,
               {"LUT_3D_SIZE 250\nxLUT_3D_SIZE 5\nxMesh 1 1\n" + start +
                    "TITLE \"1\"\nDOMAIN_MIN 0 0 0\nLUT_1D_INPUT_RANGE 0 1\n" + numbered(1, 8),
                start + "1 1 1 MESH\n" + numbered(1, 8)});
        expect("2: 0.015625 0.5 0.25", {"DOMAIN_MAX 2\n" + size2 + eight});
        expect("2: 1.5 0.25 1", {"DOMAIN_MIN 0.5 0 0\nDOMAIN_MAX 1 2 4\n" + start + "0.75 0.5 9\n" +
                                 numbered(2, 8)}); // the minimum only clamps
        expect("2: 1 0.99902 0", {start + "1024 1023 0x10\n" + six + "Mesh 8 10\n"});
        expect("2: 0.5 0 0", {"Mesh 4 1\n" + start + "1.9 2 2\n" + six}); // integers
        expect("2: 1 0 1", {"Mesh\n" + start + "1 0 1\n" + six});
        expect("0:", {"# 1 2 3\nTITLE\n"});
        expect("fails, 0",
               {"TITLE \"LUT_3D_SIZE 4\"\n" + size2 + eight, "LUT_3D_SIZE 2.0\n" + eight,
                "LUT_3D_SIZE\t2\n" + eight, size2 + eight + "LUT_3D_SIZE x\n"});
        expect("fails, 2", {size2 + eight + "LUT_1D_SIZE 0\n"});
        expect("2: 0.015625 0.25 0.125", // the last entry of the curve is missing
               {header1D + "DOMAIN_MAX 2 2 2\n" + size2 + eight + "4 4 4\n"});
        m_kind = TableKind::OneD; // stored as B, G, R
        expect(
            "2: 0.0625 0.125 0.5 0.75 0.5 0.25", // a partial line takes the lattice's last values
            {header1D + size2 + eight + "#\n1 1 1 MESH\n2\n1 2 3\n"});
        expect("2: 0.75 0.5 0.25 1 0.5 0.25", // real numbers after integers
               {header1D + "Mesh 1 2\nLUT_3D_SIZE 1\n4 4 4\n1 2 3\n1 2 4.5\n"});
        expect("1: 0 0.25 0.5", {"LUT_1D_INPUT_RANGE -1\nLUT_1D_SIZE 1\n1 0.5 0\n"});
        expect("2: 0 0 0 0 0 0", {header1D + "DOMAIN_MAX 2 2 2\n" + size2 + numbered(0, 7)});

        Read_LUTFile lut(nullptr);
        QVERIFY(m_format->read(lut, "Mesh 1 1\n" + numbered(0, 125), true) && lut.meshHeader);
        QCOMPARE(lut.size3D, 5);
        QVERIFY(m_format->read(lut, size2, true) && !lut.meshHeader);
    }

    void threeDl() {
        begin(FormatCode::ThreeDl, TableKind::ThreeD);
        expectLines({.header = [](Size) { return QByteArray("Mesh 0 3\n"); },
                     .rest = " x x",
                     .narrows = true,
                     .hasSize = false,
                     .scale = 7});
        const QByteArray shaper = "0 1023\n";
        const QByteArray eightCodes = codes(0, 8);
        QByteArray longShaper;
        for (int n = 1; n <= 300; ++n) {
            longShaper += QByteArray::number(n) + ' ';
        }
        expect("2: 0.14286 0.28571 0.57143", // a scale of 7
               {shaper + eightCodes, shaper + eightCodes + "0 1 2 3\n",
                shaper +
                    "7 2 4\n1\xE2\x80\x83"
                    "5 5\n" +
                    codes(2, 8),                         // it parts words, but not numbers
                shaper + "0 x x\n1 x x\n" + codes(2, 8), // the rest is from the first pass
                shaper + codes(0, 1) + "1 x 9\n" + codes(2, 8),
                shaper + codes(4000, 4001) + "1 2 4\n2 2 nan\n" + codes(3, 8), // forgets 4000
                "Mesh 0\n" + eightCodes, "Mesh 0 1\n" + eightCodes,
                longShaper + "\nMesh 0 3\n" + eightCodes});
        expect("2: 0.066667 0.13333 0.26667",
               {shaper + eightCodes + "9 9 9\n", "Mesh 4 4\nMesh 0\n" + eightCodes});
        expect("2: 0.00097752 0.001955 0.0039101", // the first pass ends where the scale is known
               {"0 x x\n1 x x\n2 2 4\nMesh 0 10\n3 9 9\n4 9 9\n5 9 9\n6 9 9\n7 9 9\n"});
        expect("3: 0.00097752 0.001955 0.0039101",
               {"3DMESH\nMesh 1 10\n0 512 600 1023\n" + codes(0, 27),
                shaper + codes(0, 27) + "Mesh 1 10\n",
                shaper + "0 2 4\n1\n1 1\n1 1 1 1\nMesh 1 10\ngamma 1 1\n3DMESH\na b c\n" +
                    codes(1, 27)});
        expect("fails, 0", {eightCodes, "0 512 1023\n" + codes(0, 27), // no shaper of three words
                            "Mesh\t1 10\n" + shaper + eightCodes});
        expect("fails, 2", {shaper + "gamma x\n" + eightCodes});
        expect("fails, 257", {"Mesh 8 10\n" + eightCodes});
        expect("fails, 300", {longShaper + '\n' + eightCodes});

        Read_LUTFile lut(nullptr);
        lut.domainMin3D[0] = 0.5F; // of an earlier read
        QVERIFY(m_format->read(lut, "Mesh 1 10\n", true));
        QCOMPARE(lut.domainMin3D[0], 0.0F);
        lut.setSize3D(0);
        QVERIFY(m_format->read(lut, "0 256 x 1024\ngamma 2.5\n0 512\n", true));
        QCOMPARE(lut.size3D, 4);
        QCOMPARE(lut.gamma, 2.5);
        QCOMPARE(lut.shaperIn[1], 0.5); // relative to the largest so far, on any line
        QCOMPARE(lut.shaperIn[2], 0.0);
        QCOMPARE(lut.shaperIn[3], 1.0);
        Read_LUTFile bounded(nullptr);
        QVERIFY(m_format->read(bounded, longShaper, true));
        QCOMPARE(bounded.shaperIn[255], 256.0 / 300);
        QCOMPARE(bounded.gamma, 1.0); // the member after shaperIn
    }

    /// Without Mesh, the largest number gives the scale, in whichever channel it is.
    void threeDlScales() {
        begin(FormatCode::ThreeDl, TableKind::ThreeD);
        const std::pair<const char*, const char*> rows[] = {
            {"0.1", "0.1"},      {"0.25", "0.083333"}, {"3.9", "1"},
            {"4", "0.57143"},    {"1000", "0.97752"},  {"1023.9", "1"},
            {"1024", "0.50024"}, {"65535", "1"},       {"70000", "1"}};
        const QByteArray start = "0 1\n0 0 0\n";
        const QByteArray rest = QByteArray("0 0 0\n").repeated(6);
        for (const auto& [largest, stored] : rows) {
            const QByteArray number = largest;
            const QByteArray outcome = stored;
            expect("2: " + outcome + " 0 0", {start + number + " 0 0\n" + rest});
            expect("2: 0 " + outcome + " 0", {start + "0 " + number + " 0\n" + rest});
            expect("2: 0 0 " + outcome, {start + "0 0 " + number + '\n' + rest});
        }
    }

    /// Lines of three codes have a path of their own; tabs keep them off it.
    void threeDlCodesReadLikeOtherNumbers() {
        begin(FormatCode::ThreeDl, TableKind::ThreeD);
        QByteArrayList lines =
            QByteArray("1 2|1 2 3 4|1  2 3| 1 2 3|1 2 3 |1\n2 3|0000007 1 2|12345678 1 2|"
                       "4294967297 1 2|1: 2 3|1 2 3/|-1 2 3|1 2 3.0||1 2 x|65536 1234567 0|"
                       "1 2 3\r\r\r\r\r\r")
                .split('|');
        lines += QByteArray("1 2\0003", 5);
        for (const QByteArray& line : lines) {
            for (const char* const end : {"", "\n", "\n7 8 9\n", "\n7 x x\n"}) {
                const QByteArray text =
                    "0 1\n0 9 9\n" + codes(1, 6).replace('\t', ' ') + line + end;
                Read_LUTFile byCodes(nullptr);
                Read_LUTFile others(nullptr);
                const bool reads = m_format->read(byCodes, text);
                QCOMPARE(m_format->read(others, QByteArray(text).replace(' ', '\t')), reads);
                QCOMPARE(byCodes.lastError.section(':', 0, 0), others.lastError.section(':', 0, 0));
                for (int n = 0; reads && n < 8; ++n) {
                    QCOMPARE(samples::sampleAt(byCodes, n / 4, n / 2 % 2, n % 2),
                             samples::sampleAt(others, n / 4, n / 2 % 2, n % 2));
                }
            }
        }
    }

    void mga() {
        begin(FormatCode::Mga, TableKind::ThreeD);
        expectLines({.header =
                         [](Size n) {
                             return "in " + QByteArray::number(std::pow(n.toInt(), 3), 'f', 0) +
                                    "\nvalues\n";
                         },
                     .place = runningNumber,
                     .rest = " x x",
                     .narrows = true});
        const QByteArray header = "channel 3d\nin 8\nout 9\nformat lut\nvalues red green blue\n";
        const QByteArray eightCodes = codes(0, 8, true);
        const QByteArray reals = "values\n0 0 0 0\n1 0.5 0.25 2\n" + codes(2, 8, true);
        expect("2: 0.125 0.25 0.5",
               {"out 3\nin 99999999999\nwhatever 3\n0 1 1 1\n#channel 1d\n\n" + header + eightCodes,
                "out 9 6\nin 4 \nvalues\n" + eightCodes, "channel \t 3 d\n" + header + eightCodes,
                header + "7 0 0 0\n-3 1 2 4\n" + codes(0, 6, true), // running numbers are ignored
                header + "0 0 0 0\n1 1 1\n1 1 1 1 1\n" + codes(1, 8, true),
                header + "0 1 2 4\n1 x 9 9\n" + codes(2, 8, true),
                header +
                    "0 4 2 4\n1 1\xC2\xA0"
                    "5 5\n" +
                    codes(2, 8, true)}); // it parts words, but not numbers
        expect("3: 0.125 0.25 0.5", {"out 9\nin 2 7\nvalues\n" + codes(0, 27, true)});
        expect("2: 0.5 0.25 1",
               {"in 8\n" + reals, "in 8\nout 1\n" + reals, "in 8\nout 2\n" + reals});
        expect("1: nan nan nan", {"in 1\nout 0\nvalues\n0 0 1 -1\n"});
        expect("1: 1 1 0", {"in 1\nout -4\nvalues\n0 0 1 -1\n"});
        expect("fails, 0", {"channel 1 d\n" + header + eightCodes, "out 9\nvalues\n" + eightCodes,
                            "index 8\n" + header + eightCodes, "output 9\n" + header + eightCodes});
        expect("fails, 257", {"in 16974593\nvalues\n" + eightCodes});
        Read_LUTFile lut(nullptr);
        lut.domainMin3D[0] = 0.5F; // of an earlier read
        QVERIFY(m_format->read(lut, "in 8\nout 9\n", true));
        QCOMPARE(lut.domainMin3D[0], 0.0F);
    }

    void discreet() {
        begin(FormatCode::Discreet1D, TableKind::OneD);
        expect("2: 0 0.25 0.5 1 0.75 0.125",
               {"9\n# c\n\nLUT:\t3\t2\n# red\n\t0\n8\n\nend 9\n2 \n#7\n6\n4\n1"});
        expect("1: 1 0.5 0.25", {"LUT: 3 1\n1 000\n5\t00\n2\xC2\xA0"
                                 "50 \n"}); // blanks do not end numbers
        expect("1: 1 0.2 0", {"LUT: 3 1\n.5\n1e-1x\n-0.25\n"});
        expect("1: 0.25 0.5 1", {"LUT: 3 1\n1\n2\n4\n8\n16\n"});
        expect("1: 1 0.5 0", {"LUT: 3 1\n1\n0.500000029802322387695312501\n0\n"});
        expect("2: 0 0.5 0 1 0 0", {"LUT: 3 2\n0\n2\n1\n"});
        expect("1: 1 1 1", {"LUT: 3 1\n1\nLUT: 1 5\n1\n1\n", "LUT:LUT: 3 LUT: 1\n1\n1\n1\n"});
        expect("1: nan nan nan", {"LUT: 3 1\n0\n0\n0\n"}); // no scale
        expect("fails, 0", {"LUT: 1 2\n0\n1\nLUT: 3 2\n", "LUT:\nLUT: 3 1\n1\n", "LUT: 3 0\n1\n",
                            "lut: 3 1\n1\n1\n1\n"});
        expect("fails, 1048577", {"LUT: 3 1048577\n1\n"});
    }

    void plain() {
        begin(FormatCode::Plain1D, TableKind::OneD);
        expectLines({.header = [](Size) { return QByteArray("Index\tRed\tGreen\tBlue\n"); },
                     .place = runningNumber,
                     .narrows = true,
                     .hasSize = false},
                    256);
        const std::pair<const char*, QVector<float>> rows[] = {
            {"7.5 1 .5 .25\n", {1, 0.5F, 0.25F}}, // the index is ignored
            {"0\n", {0, 0, 0}},
            {"0 1.5 -0.2 0.5\n", {1, 0, 0.5F}}};
        for (const auto& [first, cell] : rows) {
            Read_LUTFile lut(nullptr);
            QVERIFY(m_format->read(lut, first + QByteArray("1 .5 .5 .5\n").repeated(254) +
                                            QByteArray("1 1 .5 .5\n").repeated(9)));
            QCOMPARE(samples::cell(lut.data1D[0]), cell);
            QCOMPARE(lut.data1D[254][0] + lut.data1D[255][0], 1.5F);
        }
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format->read(lut, "", true));
        QCOMPARE(lut.size1D, 256);
        QVERIFY(!m_format->read(lut, ""));
    }

    void csp() {
        begin(FormatCode::Csp, TableKind::ThreeD);
        const QByteArray metadata = "BEGIN METADATA\nany text\nEND METADATA\n";
        const QByteArray shaper = "2\n0 1\n0 1\n";
        const QByteArray start3D = "CSPLUTV100\n3D\n" + metadata;
        const QByteArray start = start3D + shaper.repeated(3);
        const QByteArray plain = start + "2 2 2\n" + eight;
        expectLines({.header = [](Size n) {
            return "CSPLUTV100\n3D\nBEGIN METADATA\nEND METADATA\n" +
                   QByteArray("2\n0 1\n0 1\n").repeated(3) + (n + ' ').repeated(3) + '\n';
        }});
        const QByteArray plainRest = shaper.repeated(2) + "2 2 2\n" + eight;
        expect(second,
               {QByteArray(plain).replace(metadata, "a b c\nBEGIN METADATA x\n2 2 2\n" + metadata),
                QByteArray(plain).replace("any", "1 2\nEND METADATA y\n9 9\n9 9\n9 9 9\nany"),
                QByteArray(plain).replace("1\n", "1 \n\n"),
                start + "\n2\n3 3\n4 4 4 4\n2 2 2\n" + eight});
        expect("2: 1.3333 0.5 0.125 to 2 1 1.125", // from the ends of the shapers' outputs
               {start3D + "2\n9 9\n0.5 2\n" + shaper + "3\n7 8 9\n0.125 9 1.125\n" +
                "2 2 2\n0 0 0\n3 0.5 0\n" + numbered(2, 8)});
        expect("2: 0.0625 0.5 0.25 to 0.5 1 1", {start3D + "2\n0 1\n0 0.5\n" + plainRest});
        expect("2: 0.0078125 0.5 0.25 to 4 1 1", {start3D + "2\n0 1\nlow 4\n" + plainRest});
        expect("fails, 0", {start + "2 2 3\n" + eight + eight, start + "2 3 3\n" + eight + eight,
                            start + "a b c\n2 2 2\n" + eight, '\n' + plain,
                            QByteArray(plain).replace("3D", "2D")});
        m_kind = TableKind::OneD; // stored as B, G, R
        const QByteArray start1D =
            "CSPLUTV100\n1D\n" + metadata + "2\n0 1\n0.5 2\n" + shaper.repeated(2);
        expectLines({.header = [](Size n) {
            return "CSPLUTV100\n1D\nBEGIN METADATA\nEND METADATA\n" +
                   QByteArray("2\n0 1\n0 1\n").repeated(3) + n + '\n';
        }});
        expect("2: 0.25 0.5 0.33333 1 1 1.3333", {start1D + "2\n0 .5 .25\n9 9 9\n"});
        expect("1: 1 0 0.66667", {start1D + "\n1 2\n1 2 3\n1\n1 0 1\n"});
        expect("fails, 0", {start1D + "three\n2 1 1\n"});
    }

    void truelightCube() {
        begin(FormatCode::TruelightCube, TableKind::ThreeD);
        expectLines(
            {.header = [](Size n) { return "# width" + (' ' + n).repeated(3) + "\n# Cube\n"; }});
        const QByteArray dims = "# Truelight Cube v2.0\n# iDims 3\n# oDims 3\n";
        const QByteArray width2 = "# width 2 2 2\n";
        const QByteArray start = dims + width2;
        const QByteArray cube = "# Cube\n" + eight;
        const QByteArray plain = start + cube + "# End\n";
        const QByteArray length2 = "# lutLength 2\n";
        const QByteArray input = "# InputLUT\n";
        expect(second,
               {QByteArray(plain).replace("# ", " #\t ").replace(" 2 2 2", "\t2  2 2 "),
                dims + "# width 250 250 250\n" + plain,
                dims + "width 9\nx width 3 3 3\nx End\n#\n# note 4\n#Cube\n#width width 2 2 2\n" +
                    "# Cube\n\n# width 5 5 5\n" + eight});
        expect("2: 0 1 0.25", {start + "# Cube\n0 0 0\n-1 3 0.25\n" + numbered(2, 8)});
        expect("2: 0 0 0", {start, start + "# End\n" + cube, dims + cube + width2,
                            width2 + "# oDims\n" + cube});
        expect("3: 0 0 0", {start + cube + "# width 3 3 3\n"});
        expect("fails, 0", {"# iDims 2\n" + plain, "# oDims 03\n" + plain, "",
                            dims + "# width 17 17 16\n" + cube, dims + "# width 16 17 17\n" + cube,
                            dims + "# width 2 2\n" + cube});
        expect("fails, 200", {dims + "# width 200 200 200\n"}); // the file is too short

        m_kind = TableKind::OneD;        // the shaper, stored as B, G, R
        expect("2: 0.5 0.25 0 1 1 0.75", // divided by the width, not by the last point
               {dims + "# width 4 4 4\n" + length2 + input + "0 1 2\n\n#\n3 4 5\n# End\n"});
        expect("2: 0 0 0 0 0 0", {dims + length2 + input + "1 1 1\n1 1 1\n" + width2,
                                  dims + length2 + input + "1 1 1\n1 1 1\n"});
        expect("1: 0 0 0", {start + length2 + input + "1 1 1\n1 1 1\n# lutLength 1\n"});
        expect("2: 0 0.5 1 0 0.5 0.5",
               {start + length2 + "# lutLength x\n" + input + "2 1 0\n1\n"});
        expect("2: 0 0.5 1 0 0 0", {start + length2 + input + "2 1 0\n"});
        expect("0:", {start + input + "1 1 1\n"});
        expect("fails, 2", {start + length2 + input});
        const QByteArray both =
            start + "# lutLength 1\n" + input + "2 1 0.5\n# Cube\n0.25\n" + numbered(1, 8);
        expect("1: 0.25 0.5 1", {both + "# End\n"});
        expect("1: 0.25 0.5 1 to 2 2 2", {both.left(both.lastIndexOf('\n', -2) + 1)});
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format->read(lut, both)); // its first sample is completed from the shaper's entry
        QCOMPARE(samples::sampleAt(lut, 0, 0, 0), QVector<float>({0.25F, 1, 0.5F}));
    }

    /// Two formats that differ in their keyword.
    void sizedLattices() {
        begin(FormatCode::DavLut, TableKind::ThreeD);
        expectLines({.header = [](Size n) { return "3DLUTSIZE " + n + '\n'; }});
        const QByteArray size2 = "3DLUTSIZE 2\n";
        expect(second, {"3dlutsize 9\n3DLUT 9\n1 1 1\n# 3DLUTSIZE 9\n\n" + size2 + eight,
                        "3DLUTSIZE 3DLUTSIZE2\n" + eight + "x\n" + eight});
        expect("2: 1 0.5 0.25", {size2 + numbered(0, 1) + "3DLUTSIZE 9\n" + numbered(2, 8)});
        expect("2: 0 1 1", {size2 + "0 0 0\n-1 1.5 1e9\n" + numbered(2, 8)});
        expect("fails, 0", {"3DLUTSIZE\n" + size2 + eight, ""});
        begin(FormatCode::Itx, TableKind::ThreeD);
        expectLines({.header = [](Size n) { return "LUT_3D_SIZE " + n + '\n'; }});
        expect(second,
               {"# c\nTITLE \"a\"\nDOMAIN_MAX 2 2 2\nLUT_1D_SIZE 9\nLUT_3D_SIZE 2\n" + eight});
        expect("fails, 0", {"A LUT_3D_SIZE 2\n" + eight, size2 + eight});
    }

    void spi1D() {
        begin(FormatCode::Spi1D, TableKind::OneD); // stored as B, G, R
        expectLines({.header = [](Size n) { return "Length " + n + "\nComponents 3\n{\n"; },
                     .narrows = true});
        const QByteArray length2 = "Version 1\nFrom 0.0 1.0\nLength 2\n";
        const QByteArray three = "Length2\nComponents3\n{\n";
        expect("2: 0.5 0.25 0 0.75 0.5 1",
               {"Length 3\nComponents 1\n" + three + "  0 .25 .5\n  1 .5 .75\n}\n",
                three + "0 0.25 0.5\n}\n1 0.5 0.75\n1 1 1\n"});
        expect("2: 0 0.25 0 0 0.5 1", {length2 + "Components 2\n{\n0 0.25\n1 0.5 0.75\n}\n"});
        expect("2: 0.25 0.25 0.25 0.5 0.5 0.5", {length2 + "Components 1\n{\n0.25\n0.5 1\n}\n"});
        expect("2: 0 0 0 0 0 0", {length2 + "{\n1 1 1\n"});
        expect("fails, 2", {length2 + "Components 4\n{\n1 1 1 1\n1 1 1 1\n"});
        expect("1: 0.9 -0.1 0.45", // the minimum is not subtracted
               {"From -0.125 1.125\nLength 1\nComponents 3\n{\n0.5625 -1 2\n}"});
        expect("1: 1 1 1", {"From 0.5\nLength 1\nComponents 1\n{\n0.25\n}"});
        expect("1: 0.5 0.5 0.5", // the header ends there
               {"Length 1\nComponents 1\nFrom x\nLength 2\n0.5\n",
                "Length 1\nComponents 1\nComponents x\nLength 2\n0.5\n"});
        expect("fails, 0", {"Length {\nLength 1\n", "Components 3\n{\n1 1 1\n"});
    }

    void spi3D() {
        begin(FormatCode::Spi3D, TableKind::ThreeD);
        expectLines(
            {.header = [](Size n) { return "SPILUT 1.0\n3 3\n" + (n + ' ').repeated(3) + '\n'; },
             .place =
                 [](int n) {
                     return runningNumber(n / 4) + runningNumber(n / 2 % 2) + runningNumber(n % 2);
                 },
             .mayBeMissing = 8});
        const QByteArray header = "SPILUT 1.0\n3 3\n2 2 2\n";
        expect("2: 1 0.5 0.25",
               {"# c\n3 1\n\nx SPILUT\n" + QByteArray(header).replace(".0", ".0\n# 2 1\nx") +
                    "# 0 0 1 0 0 0\n0 0 1 1 .5 .25",
                "SPILUTx\n3\n3 3 3\n2 2\n2 2 2 9\n0 0 1 1 .5 .25\n",
                header + "0 0 1 0 0 0\n0 0 1 1 .5 .25\n", // a later line wins
                header + "1\n0 0 1 0 .5 .25\n0\n0 0\n0 0 1 1\n",
                // Lines of places outside are skipped, but partial lines take values from them.
                header + "2 0 0 1 .5 .25\n0 -1 0 1 .5 .25\n0 0 2147483647 1 .5 .25\n0 0 1\n"});
        expect("2: 1 0.5 0", {header + "0 0 1 7 .5 -1\n"});
        expect("2: 0 0 0", {header});
        expect("fails, 0", {"SPILUT 1.0\n3 1\n2 2 2\n", "SPILUT 1.0\n3 3\n32 32 16\n",
                            "SPILUT 1.0\n3 3\n32 16 32\n", "spilut\n3 3\n2 2 2\n",
                            "x SPILUT 1.0\n3 3\n2 2 2\n", "SPILUT 1.0\n3 3\n2 2\n"});
    }

    void nvx() {
        begin(FormatCode::Nvx1D, TableKind::OneD);
        expectLines({.header = [](Size n) { return "Length " + n + '\n'; }, .mayBeMissing = 0});
        const QByteArray header = "From 0.0 1.0\nLength 2\n";
        expect("1: 1 0.5 0.25",
               {"# From 0 9\n\nfrom 0 7\nFrom 0 4\nLength 1\nFrom 0 9\n# c\n4 2 1\nend 1",
                "From 0 4\nFrom x\nFrom\t0 9\nFrom\nLength 1\n4 2 1\n",
                "FromFrom 0 4\nFrom From 0 From 4\nLength Length 1\n4 2 1\n"});
        expect("1: 1.5 2 1", {"From 0.5 1\nLength 1\n0.75 9 -9\n"}); // the minimum only clamps
        expect("1: 1 1.3333 0.5", {"From 0 4\nFrom 1\nLength 1\n3 4 1.5\n"});
        expect("fails, 2", {header + "0 0 0\n", header + "0 0 0\n1 1 1\n0\n"});
        expect("fails, 0",
               {"From 0 1\n0 0 0\n", "Length 0\nLength 1\n0 0 0\n", "Length\t1\n0 0 0\n"});
        begin(FormatCode::Nvx3D, TableKind::ThreeD);
        expectLines({.header = [](Size n) { return "Length " + n + '\n'; }, .mayBeMissing = 8});
        const QByteArray length2 = "# c\n\n Length  2\n";
        expect("2: 0 0 0", {length2, length2 + "0 0 0\nFrom 0 9\n#1\n" + numbered(3, 20)});
        expect("2: 1 0.25 1", {"From 0 4\n" + length2 + "2 1 4\n9\n"});
        for (const FormatCode code : {FormatCode::Nvx1D, FormatCode::Nvx3D}) {
            begin(code, m_kind);
            Read_LUTFile lut(nullptr);
            QVERIFY(m_format->read(lut, "From 0.5 4\nLength 65\n", true));
            QCOMPARE(lut.size3D + lut.size1D, 65);
            QCOMPARE(lut.domainMin3D[2] + lut.domainMin1D[2], 0.5F);
            QVERIFY(!m_format->read(lut, "From 0 1\n", true));
        }
    }

    void csv() {
        begin(FormatCode::Csv, TableKind::OneD);
        const auto grey = [this](const char* outcome, const char* text) {
            Read_LUTFile lut(nullptr);
            QVERIFY(m_format->read(lut, text));
            QString found;
            for (int n = 0; n < lut.size1D; ++n) {
                const float* const cell = lut.data1D[n];
                const bool isGrey = cell[0] == cell[1] && cell[1] == cell[2];
                found += QString::number(isGrey ? double(3 * cell[0]) : -1) + ' ';
            }
            QCOMPARE(found.trimmed(), QString(outcome));
            QCOMPARE(lut.domainMax1D[2], 1.0F);
        };
        grey("0 1 3", "Index,Code\n0,0\n  1, \t 1 9\n\n2,\t+3.75");
        grey("0 1 3 0 0", "2,3\n0,0\n1,1\n0,0\n2,3\n"); // in any order
        grey("2 2 2 2 3", "0,2\n1\n2 ,0\n3,x\n4,3\n");  // carries the code before
        grey("3 1 3", "0\n1,1\n2,3\n");                 // at first, the last code
        grey("1 3 0 0", "-1,0\n0,1\n9,3\n1\n");         // places outside count
        grey("3 0", "0,1\n2,1\n");
        grey("0 3 3", "0,-5\n1,9\n2,3\n");
        grey("0 0", "0\n1\n");
        grey("", "Index\n,1\n#0,1\n");

        QByteArray ramp;
        for (int n = 0; n < 255; ++n) {
            ramp += QByteArray::number(n) + ",\t" + QByteArray::number(n) + '\n';
        }
        const std::pair<const char*, float> scales[] = {
            {"-7", 1},      {"2", 1},       {"3", 3},        {"1023", 1023},
            {"1024", 1023}, {"1025", 2047}, {"63\n256", 63}, {"2147483647", 2147483648.0F}};
        for (const auto& [last, scale] : scales) { // a probe leaves full scale in the domain
            Read_LUTFile lut(nullptr);
            QVERIFY(m_format->read(lut, ramp + "255," + last, true));
            QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>(3, scale));
        }
        Read_LUTFile lut(nullptr);
        QVERIFY(!m_format->read(lut, ramp + "\nIndex\n", true)); // too few for a probe
        QCOMPARE(lut.size1D, 255);
        QVERIFY(!m_format->read(lut, QByteArray("0\n").repeated(Read_LUTFile::MaxSize1D + 1)));
    }
};

QTEST_GUILESS_MAIN(TestReaders)
#include "test_readers.moc"

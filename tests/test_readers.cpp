#include "one_format.h"

// What each text reader makes of its lines.

namespace {

using enum tintwell::FormatCode;

/// Outcomes as OneFormat states them.
constexpr struct {
    tintwell::FormatCode code;
    const char* outcome;
    const char* text;
} rows[] = {
    // Sizes are inferred by rounding. Keywords, comments and titles may be anywhere.
    {Cube, "2^3: 0.25 0.5 1", "0 0 0\n.25 .5 1\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n"},
    {Cube, "1^3: 1 0.5 0", "TITLE 1\n1 .5 0\n0 0 0\n0 0 0\nx 1 1 1\n#\n"},
    {Cube, "2^3: 0.25 0.5 1",
     "LUT_3D_SIZE 250\nxLUT_3D_SIZE 5\nxMesh 1 1\nLUT_3D_SIZE 2\n0 0 0\nTITLE \"1\"\n"
     "DOMAIN_MIN 0 0 0\nLUT_1D_INPUT_RANGE 0 1\n1 1 1 MESH\n.25 .5 1\n0 0 0\n0 0 0\n0 0 0\n"
     "0 0 0\n0 0 0\n0 0 0\n"},
    {Cube, "1^3: 0.5 0.5 0.25", "DOMAIN_MAX 2\nLUT_3D_SIZE 1\n1 .5 .25\n"},
    {Cube, "1^3: 1.5 0.25 1", // the minimum only clamps
     "DOMAIN_MIN .5 0 0\nDOMAIN_MAX 1 2 4\nLUT_3D_SIZE 1\n.75 .5 9\n"},
    {Cube, "1^3: 1 0.99902 0", "LUT_3D_SIZE 1\n1024 1023 0x10\nMesh 8 10\n"},
    {Cube, "1^3: 0.5 0 0", "Mesh 4 1\nLUT_3D_SIZE 1\n1.9 2 2\n"}, // codes stop at the point
    {Cube, "1^3: 1 0 1", "Mesh\nLUT_3D_SIZE 1\n1 0 1\n"},
    {Cube, "nothing", "# 1 2 3\nTITLE\n"},
    {Cube, "fails", "TITLE \"LUT_3D_SIZE 4\"\nLUT_3D_SIZE 1\n1 1 1\n"},
    {Cube, "fails", "LUT_3D_SIZE 1.0\n1 1 1\n"},
    {Cube, "fails", "LUT_3D_SIZE\t1\n1 1 1\n"},
    {Cube, "fails", "LUT_3D_SIZE 1\n1 1 1\nLUT_3D_SIZE x\n"},
    {Cube, "fails, 1^3", "LUT_3D_SIZE 1\n1 1 1\nLUT_1D_SIZE 0\n"},
    // A curve comes after the lattice, stored as B, G, R, of real numbers, and takes the rest of a
    // partial line from the lattice.
    {Cube, "1^3: 0 0.5 1, 2: 0.25 0.125 0.5 0.75 0.5 0.25",
     "LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE 0 4\nLUT_3D_SIZE 1\n0 .5 1\n#\n1 1 1 MESH\n2\n1 2 3\n"},
    {Cube, "1^3: 1 1 1, 1: 1 0.625 0.25",
     "LUT_1D_SIZE 1\nLUT_1D_INPUT_RANGE 0 4\nMesh 1 2\nLUT_3D_SIZE 1\n4 4 4\n1 2.5 9\n"},
    {Cube, "1: 0 0.25 0.5", "LUT_1D_INPUT_RANGE -1\nLUT_1D_SIZE 1\n1 0.5 0\n"},
    {Cube, "1^3: 0 0 0, 1: 0 0 0",
     "LUT_1D_SIZE 1\nLUT_3D_SIZE 1\nDOMAIN_MAX 2 2 2\nLUT_1D_INPUT_RANGE 0 4\n"},
    {Cube, "1^3: 0.5 0.25 0.125, 2: 1 1 1 0 0 0",
     "LUT_1D_SIZE 2\nDOMAIN_MAX 2 2 2\nLUT_3D_SIZE 1\n1 .5 .25\n4 4 4\n"},

    // Any white space separates words; only ASCII white space separates numbers.
    {Mga, "1^3: 0.125 0.25 0.5",
     "out 3\nin 99999999999\nwhatever 3\n0 1 1 1\n#channel 1d\n\nchannel \t 3 d\nin 0 1\n"
     "out 9 6\nformat lut\nvalues red green blue\n1 1 1\n1 1 1 1 1\n-7 1 2 4\n"},
    {Mga, "1^3: 0.125 0 0", "in 3\nout 9\nvalues\n0 1\xC2\xA0\x35 5\n"},
    {Mga, "1^3: 0 0 0", "in 1\nvalues\n7 x 9 9\n1 1 1 1\n"}, // a running number alone counts
    {Mga, "1^3: 0.5 0.25 1", "in 1\nvalues\n0 .5 .25 2\n"},
    {Mga, "1^3: 0.5 0.25 1", "in 1\nout 1\nvalues\n0 .5 .25 2\n"},
    {Mga, "1^3: nan nan nan", "in 1\nout 0\nvalues\n0 0 1 -1\n"},
    {Mga, "1^3: 1 1 0", "in 1\nout -4\nvalues\n0 0 1 -1\n"},
    {Mga, "fails", "channel 1 d\nin 1\nvalues\n0 1 1 1\n"},
    {Mga, "fails", "out 9\nvalues\n0 1 1 1\n"},
    {Mga, "fails", "index 8\nin 1\nvalues\n0 1 1 1\n"},
    {Mga, "fails", "output 9\nin 1\nvalues\n0 1 1 1\n"},
    {Mga, "fails", "in -8\nvalues\n0 1 1 1\n"},
    {Mga, "fails, 257^3", "in 16974593\nvalues\n"},

    // The largest value is full scale.
    {Discreet1D, "2: 0 0.25 0.5 1 0.75 0.125",
     "9\n# c\n\nLUT:\t3\t2\n# red\n\t0\n8\n\nend 9\n2 \n#7\n6\n4\n1"},
    {Discreet1D, "1: 1 0.5 0.25", "LUT: 3 1\n1 000\n5\t00\n2\xC2\xA0\x35\x30 \n"},
    {Discreet1D, "1: 1 0.2 0", "LUT: 3 1\n.5\n1e-1x\n-0.25\n"},
    {Discreet1D, "1: 0.25 0.5 1", "LUT: 3 1\n1\n2\n4\n8\n16\n"},
    {Discreet1D, "2: 0 0.5 0 1 0 0", "LUT: 3 2\n0\n2\n1\n"},
    {Discreet1D, "1: 1 1 1", "LUT:LUT: 3 LUT: 1\n1\nLUT: 1 5\n1\n1\n"},
    {Discreet1D, "1: nan nan nan", "LUT: 3 1\n0\n0\n0\n"},
    {Discreet1D, "fails", "LUT: 1 2\n0\n1\nLUT: 3 2\n"},
    {Discreet1D, "fails", "LUT:\nLUT: 3 1\n1\n"},
    {Discreet1D, "fails", "lut: 3 1\n1\n1\n1\n"},

    // Nothing counts before the width; the shaper, stored as B, G, R, is divided by it.
    {TruelightCube, "1^3: 0 1 0.25",
     " #\t Truelight\n #\t iDims 3\n#\toDims 3\n #\t width\t1  1 1 \n #\t Cube\n-1 3 .25\n"},
    {TruelightCube, "1^3: 0 1 0.25", "# width 250 250 250\n# width 1 1 1\n# Cube\n0 1 .25\n"},
    {TruelightCube, "1^3: 0 1 0.25",
     "width 9\nx width 3 3 3\nx End\n#\n# note 4\n#Cube\n#width width 1 1 1\n# Cube\n\n"
     "# width 5 5 5\n0 1 .25\n"},
    {TruelightCube, "1^3: 0 0 0", "# width 1 1 1\n# End\n# Cube\n1 1 1\n"},
    {TruelightCube, "1^3: 0 0 0", "# Cube\n1 1 1\n# width 1 1 1\n"},
    {TruelightCube, "1^3: 0 0 0", "# width 1 1 1\n# oDims\n# Cube\n1 1 1\n"},
    {TruelightCube, "2^3: 0 0 0", "# width 1 1 1\n# Cube\n1 1 1\n# width 2 2 2\n"},
    {TruelightCube, "fails", "# iDims 2\n# width 1 1 1\n"},
    {TruelightCube, "fails", "# oDims 03\n# width 1 1 1\n"},
    {TruelightCube, "fails", "# width 17 17 16\n"},
    {TruelightCube, "fails", "# width 16 17 17\n"},
    {TruelightCube, "fails", "# width 2 2\n"},
    {TruelightCube, "fails", ""},
    {TruelightCube, "fails, 101^3", "# width 101 101 101\n"},
    {TruelightCube, "4^3: 0 0 0, 2: 0.5 0.25 0 1 1 0.75",
     "# width 4 4 4\n# lutLength 2\n# InputLUT\n0 1 2\n\n#\n3 4 5\n# End\n"},
    {TruelightCube, "1^3: 0 0 0, 2: 0 0 0 0 0 0",
     "# lutLength 2\n# InputLUT\n1 1 1\n1 1 1\n# width 1 1 1\n"},
    {TruelightCube, "2: 0 0 0 0 0 0", "# lutLength 2\n# InputLUT\n1 1 1\n1 1 1\n"},
    {TruelightCube, "1^3: 0 0 0, 1: 0 0 0",
     "# width 1 1 1\n# lutLength 2\n# InputLUT\n1 1 1\n1 1 1\n# lutLength 1\n"},
    {TruelightCube, "2^3: 0 0 0, 2: 0 0.5 1 0 0.5 0.5",
     "# width 2 2 2\n# lutLength 2\n# lutLength x\n# InputLUT\n2 1 0\n1\n"},
    {TruelightCube, "2^3: 0 0 0, 2: 0 0.5 1 0 0 0",
     "# width 2 2 2\n# lutLength 2\n# InputLUT\n2 1 0\n"},
    {TruelightCube, "1^3: 0 0 0", "# width 1 1 1\n# InputLUT\n1 1 1\n"},
    {TruelightCube, "fails, 1^3, 2: 0 0 0 0 0 0", "# width 1 1 1\n# lutLength 2\n# InputLUT\n"},
    {TruelightCube, "1^3: 0.25 1 0.5, 1: 0.5 1 1",
     "# width 1 1 1\n# lutLength 1\n# InputLUT\n1 1 .5\n# Cube\n.25\n# End\n"},
    {TruelightCube, "2^3: 0 0 0, 1: 0.25 0.5 1 to 2 2 2", // whose last sample is missing
     "# width 2 2 2\n# lutLength 1\n# InputLUT\n2 1 .5\n# Cube\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n"
     "0 0 0\n0 0 0\n0 0 0\n"},

    {DavLut, "1^3: 0 1 1",
     "3dlutsize 9\n3DLUT 9\n1 1 1\n# 3DLUTSIZE 9\n\n3DLUTSIZE 3DLUTSIZE1\n-1 1.5 1e9\nx\n1 1 1\n"},
    {DavLut, "fails", "3DLUTSIZE\n3DLUTSIZE 1\n1 1 1\n"},
    {Itx, "1^3: 0 0.5 1",
     "# c\nTITLE \"a\"\nDOMAIN_MAX 2 2 2\nLUT_1D_SIZE 9\nLUT_3D_SIZE 1\n0 .5 1\n"},
    {Itx, "fails", "A LUT_3D_SIZE 1\n0 0 0\n"},
    {Itx, "fails", "3DLUTSIZE 1\n0 0 0\n"},

    // Cells are stored as B, G, R. The header ends at a keyword without its number.
    {Spi1D, "2: 0.5 0.25 0 0.75 0.5 1",
     "Length 3\nComponents 1\nLength2\nComponents3\n{\n  0 .25 .5\n}\n 1 .5 .75\n1 1 1\n"},
    {Spi1D, "2: 0 0.25 0 0 0.5 1", "Length 2\nComponents 2\n{\n0 0.25\n1 0.5 0.75\n}\n"},
    {Spi1D, "2: 0.25 0.25 0.25 0.5 0.5 0.5", "Length 2\nComponents 1\n{\n0.25\n0.5 1\n}\n"},
    {Spi1D, "2: 0 0 0 0 0 0", "Version 1\nLength 2\n{\n1 1 1\n"},
    {Spi1D, "2: 0 0 0 0 0 0", "Length 2\nComponents -1\n{\n1\n"},
    {Spi1D, "fails, 2: 0 0 0 0 0 0", "Length 2\nComponents 4\n{\n1 1 1 1\n1 1 1 1\n"},
    {Spi1D, "1: 0.9 -0.1 0.45", "From -0.125 1.125\nLength 1\nComponents 3\n{\n0.5625 -1 2\n}"},
    {Spi1D, "1: 1 1 1", "From 0.5\nLength 1\nComponents 1\n{\n0.25\n}"},
    {Spi1D, "1: 0.5 0.5 0.5", "Length 1\nComponents 1\nFrom x\nLength 2\n0.5\n"},
    {Spi1D, "1: 0.5 0.5 0.5", "Length 1\nComponents 1\nComponents x\nLength 2\n0.5\n"},
    {Spi1D, "fails", "Length {\nLength 1\n"},
    {Spi1D, "fails", "Components 3\n{\n1 1 1\n"},

    // Later lines win. Lines of places outside are skipped, but partial lines take values from
    // them.
    {Spi3D, "2^3: 1 0.5 0.25",
     "# c\n3 1\n\nx SPILUT\nSPILUT 1.0\n# 2 1\nx\n3 3\n2 2 2\n# 0 0 1 0 0 0\n0 0 1 1 .5 .25"},
    {Spi3D, "2^3: 1 0.5 0.25", "SPILUTx\n3\n3 3 3\n2 2\n2 2 2 9\n0 0 1 0 0 0\n0 0 1 1 .5 .25\n"},
    {Spi3D, "2^3: 1 0.5 0.25", "SPILUT\n3 3\n2 2 2\n1\n0 0 1 0 .5 .25\n0\n0 0\n0 0 1 1\n"},
    {Spi3D, "2^3: 1 0.5 0.25",
     "SPILUT\n3 3\n2 2 2\n2 0 0 1 .5 .25\n0 -1 0 1 .5 .25\n0 0 2147483647 1 .5 .25\n0 0 1\n"},
    {Spi3D, "2^3: 0 0 0", "SPILUT\n3 3\n2 2 2\n"},
    {Spi3D, "fails", "SPILUT\n3 1\n2 2 2\n"},
    {Spi3D, "fails", "SPILUT\n3 3\n32 32 16\n"},
    {Spi3D, "fails", "SPILUT\n3 3\n32 16 32\n"},
    {Spi3D, "fails", "spilut\n3 3\n2 2 2\n"},
    {Spi3D, "fails", "x SPILUT\n3 3\n2 2 2\n"},

    {Nvx1D, "1: 1 0.5 0.25",
     "# From 0 9\n\nfrom 0 7\nFrom 0 4\nLength 1\nFrom 0 9\n# c\n4 2 1\nend 1"},
    {Nvx1D, "1: 1 0.5 0.25", "From 0 4\nFrom x\nFrom\t0 9\nFrom\nLength 1\n4 2 1\n"},
    {Nvx1D, "1: 1.5 2 1", "From 0.5 1\nLength 1\n0.75 9 -9\n"},
    {Nvx1D, "1: 1 1.3333 0.5", "From 0 4\nFrom 1\nLength 1\n3 4 1.5\n"},
    {Nvx1D, "fails, 2: 0 0 0 0 0 0", "Length 2\n0 0 0\n"},
    {Nvx1D, "fails, 2: 0 0 0 1 1 1", "Length 2\n0 0 0\n1 1 1\n0\n"},
    {Nvx1D, "fails", "From 0 1\n0 0 0\n"},
    {Nvx1D, "fails", "Length\t1\n1 1 1\n"},
    {Nvx1D, "fails", "Length 0\nLength 1\n0 0 0\n"},
    {Nvx3D, "2^3: 0 0 0", "# c\n\n Length  2\n"},
    {Nvx3D, "2^3: 0 0 0", "Length 2\n0 0 0\nFrom 0 9\n1 1 1\n"}, // every line takes a place
    {Nvx3D, "2^3: 1 0.25 1", "From 0 4\nLength 2\n2 1 4\n9\n"},

    // In any order; an index alone carries the code before, at first the last one of all.
    {Csv, "3: 0 0 0 0.33333 0.33333 0.33333 1 1 1", "Index,Code\n0,0\n  1, \t 1 9\n\n2,\t+3.75"},
    {Csv, "3: 0 0 0 1 1 1 0 0 0", "1,1\n0,0\n1,1\n"},
    {Csv, "3: 1 1 1 1 1 1 1 1 1", "0,1\n1\n2 ,0\n"},
    {Csv, "2: 1 1 1 1 1 1", "0\n1,1\n"},
    {Csv, "4: 0.33333 0.33333 0.33333 1 1 1 0 0 0 0 0 0", "-1,0\n0,1\n9,3\n1\n"},
    {Csv, "2: 1 1 1 0 0 0", "0,1\n2,1\n"},
    {Csv, "3: 0 0 0 1 1 1 1 1 1", "0,-5\n1,9\n2,3\n"},
    // The last code gives the scale; a power of two is one too many.
    {Csv, "2: 1 1 1 0 0 0", "0,1\n1,-7\n"},
    {Csv, "2: 0 0 0 1 1 1", "0,0\n1,2147483647\n"},
    {Csv, "nothing", "Index\n,1\n#0,1\n"},
    {Csv, "2: 1 1 1 1 1 1", "0,1\n1,2\n"},
    {Csv, "2: 0.33333 0.33333 0.33333 1 1 1", "0,1\n1,4\n"},
    {Csv, "2: 0.14286 0.14286 0.14286 0.71429 0.71429 0.71429", "0,1\n1,5\n"},
};

/// Samples numbered by their first code. Tabs keep them off the path for three codes.
QByteArray numbered(int from, int to) {
    QByteArray lines;
    for (int n = from; n < to; ++n) {
        lines += QByteArray::number(n) + "\t2\t4\n";
    }
    return lines;
}

/// A format whose lines have a sample each.
struct Lines {
    tintwell::FormatCode code;
    QByteArray (*header)(const QByteArray& size);
    int curve = 0; ///< entries; 0: a lattice
    QByteArray (*place)(int n) = [](int) { return QByteArray(); };
    const char* rest = ""; ///< completes a line with only one number of its sample
    bool narrows = false;  ///< numbers are read in double precision first
    int mayBeMissing = 1;  ///< samples at the end
    bool hasSize = true;   ///< its header states the size itself
    float scale = 1;       ///< what samples are divided by
};

using Size = const QByteArray&;

QByteArray runningNumber(int n) {
    return QByteArray::number(n) + ' ';
}

QByteArray cspHeader(const char* kind, const QByteArray& shaper = "2\n0 1\n0 1\n") {
    return "CSPLUTV100\n" + QByteArray(kind) + "\nBEGIN METADATA\nany text\nEND METADATA\n" +
           shaper + QByteArray("2\n0 1\n0 1\n").repeated(2);
}

const Lines lineFormats[] = {
    {.code = Cube, .header = [](Size n) { return "LUT_3D_SIZE " + n + '\n'; }},
    {.code = Cube, .header = [](Size n) { return "LUT_1D_SIZE " + n + '\n'; }, .curve = 4},
    {.code = ThreeDl,
     .header = [](Size) { return QByteArray("Mesh 0 3\n"); },
     .rest = " x x",
     .narrows = true,
     .hasSize = false,
     .scale = 7},
    {.code = Mga,
     .header = [](Size n) { return "in " + n + "\nvalues\n"; },
     .place = runningNumber,
     .rest = " x x",
     .narrows = true,
     .hasSize = false},
    {.code = Plain1D,
     .header = [](Size) { return QByteArray("Index\tRed\tGreen\tBlue\n"); },
     .curve = 256,
     .place = [](int n) { return runningNumber(1000 - n); }, // ignored
     .narrows = true,
     .hasSize = false},
    {.code = DavLut, .header = [](Size n) { return "3DLUTSIZE " + n + '\n'; }},
    {.code = Csp, .header = [](Size n) { return cspHeader("3D") + (n + ' ').repeated(3) + '\n'; }},
    {.code = Csp, .header = [](Size n) { return cspHeader("1D") + n + '\n'; }, .curve = 4},
    {.code = TruelightCube,
     .header = [](Size n) { return "# width" + (' ' + n).repeated(3) + "\n# Cube\n"; }},
    {.code = Itx, .header = [](Size n) { return "LUT_3D_SIZE " + n + '\n'; }},
    {.code = Spi1D,
     .header = [](Size n) { return "Length " + n + "\nComponents 3\n{\n"; },
     .curve = 4,
     .narrows = true},
    {.code = Spi3D,
     .header = [](Size n) { return "SPILUT\n3 3\n" + (n + ' ').repeated(3) + '\n'; },
     .place =
         [](int n) {
             return QByteArray(n < 4 ? "0 " : "1 ") + (n / 2 % 2 ? "1 " : "0 ") +
                    (n % 2 ? "1 " : "0 ");
         },
     .mayBeMissing = 8},
    {.code = Nvx1D,
     .header = [](Size n) { return "Length " + n + '\n'; },
     .curve = 4,
     .mayBeMissing = 0},
    {.code = Nvx3D, .header = [](Size n) { return "Length " + n + '\n'; }, .mayBeMissing = 8},
};

} // namespace

class TestReaders : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void outcomes() {
        for (const auto& row : rows) {
            samples::OneFormat(row.code).expect(row.outcome, {row.text});
        }
    }

    void linesOfSamples_data() {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(lineFormats)); ++row) {
            const auto label = Read_LUTFile::formatStr(int(lineFormats[row].code));
            QTest::addRow("%s %d", qPrintable(label), lineFormats[row].curve) << row;
        }
    }
    void linesOfSamples() {
        QFETCH(int, row);
        const Lines& format = lineFormats[row];
        const samples::OneFormat file(format.code);
        const int count = format.curve > 0 ? format.curve : 8;
        const bool countsSamples = format.code == Mga;
        const QByteArray header =
            format.header(QByteArray::number(format.curve > 0 || countsSamples ? count : 2));
        QByteArrayList lines;
        for (int n = 0; n < count; ++n) {
            lines += format.place(n) + QByteArray::number(n / 8.0) + " 0.5 0.25";
        }
        const auto with = [&](int from, int to, const QByteArray& values) {
            QByteArrayList changed = lines;
            for (int n = from; n <= to; ++n) {
                changed[n] = format.place(n) + values;
            }
            return header + changed.join('\n') + '\n';
        };
        const QByteArray plain = header + lines.join('\n');
        const QString outcome = file.outcomeOf(plain);
        const auto same = [&](const QByteArray& text) { QCOMPARE(file.outcomeOf(text), outcome); };
        same("\xEF\xBB\xBF" + QByteArray(plain).replace("\n", " \r\n\t"));
        same(QByteArray(plain).replace(" 0.5 ", " \t 0.5  "));
        if (format.code != Nvx3D) { // where every line is a sample
            lines.insert(1, "\n# 1 1 1\nword 1 1 1\nword 1 1");
            same(header + lines.join('\n'));
            lines.removeAt(1);
        }
        QCOMPARE(file.outcomeOf(with(0, 1, QByteArray("0.75") + format.rest)),
                 file.outcomeOf(with(0, 1, "0.75 0 0")));
        QCOMPARE(file.outcomeOf(with(1, 1, QByteArray("0.75") + format.rest)),
                 file.outcomeOf(with(1, 1, "0.75 0.5 0.25")));

        Read_LUTFile lut(nullptr); // just above the midpoint of two floats
        QVERIFY(file.read(lut, with(1, 1, "0.5 0.500000029802322387695312501 0.5")));
        QCOMPARE(
            (format.curve > 0 ? samples::cell(lut.data1D[1]) : samples::sampleAt(lut, 0, 0, 1))[1],
            (format.narrows ? 0.5F : 0.50000006F) / format.scale);
        for (const int missing : {1, 2}) {
            lines.removeLast();
            QCOMPARE(file.read(lut, header + lines.join('\n')), missing <= format.mayBeMissing);
            QCOMPARE(format.curve > 0 ? lut.data1D[count - 1][1] : lut.data3D[1][1][1][1], 0.0F);
        }
    }

    void sizesOutOfRange() {
        for (const Lines& format : lineFormats) {
            const int most = format.curve > 0 ? Read_LUTFile::MaxSize1D : Read_LUTFile::MaxSize3D;
            for (const int size : {0, most + 1, 100, 101}) { // which the file could not fill
                const QByteArray text = format.header(QByteArray::number(size));
                Read_LUTFile lut(nullptr);
                const samples::OneFormat file(format.code);
                if (format.hasSize) {
                    QCOMPARE(file.read(lut, text, true), size > 0);
                    QCOMPARE(lut.size3D + lut.size1D, size);
                    QCOMPARE(file.read(lut, text), size == 100 && format.mayBeMissing > 1);
                    QCOMPARE(lut.hasTable3D(), size == 100 && format.mayBeMissing > 1);
                }
            }
        }
    }

    void threeDl() {
        const samples::OneFormat file(ThreeDl);
        const QByteArray shaper = "0 1023\n";
        const QByteArray eightCodes = numbered(0, 8);
        QByteArray longShaper;
        for (int n = 1; n <= 300; ++n) {
            longShaper += QByteArray::number(n) + ' ';
        }
        file.expect(
            "2^3: 0.14286 0.28571 0.57143", // a scale of 7
            {shaper + eightCodes, shaper + eightCodes + "0 1 2 3\n",
             shaper +
                 "7 2 4\n1\xE2\x80\x83"
                 "5 5\n" +
                 numbered(2, 8),                         // it separates words, not numbers
             shaper + "0 x x\n1 x x\n" + numbered(2, 8), // the rest is from the first pass
             shaper + numbered(0, 1) + "1 x 9\n" + numbered(2, 8),
             shaper + numbered(4000, 4001) + "1 2 4\n2 2 nan\n" + numbered(3, 8), // forgets 4000
             "Mesh 0\n" + eightCodes, "Mesh 0 1\n" + eightCodes,
             longShaper + "\nMesh 0 3\n" + eightCodes});
        file.expect("2^3: 0.066667 0.13333 0.26667",
                    {shaper + eightCodes + "9 9 9\n", "Mesh 4 4\nMesh 0\n" + eightCodes});
        file.expect("2^3: 0.14286 0.42857 0.57143", // also where its last line is partial
                    {shaper + "0 x x\n1 x x\n" + numbered(2, 7) + "7 3 x\n"});
        file.expect(
            "2^3: 0.00097752 0.001955 0.0039101", // carries nothing over once the scale is known
            {"0 x x\n1 x x\n2 2 4\nMesh 0 10\n3 9 9\n4 9 9\n5 9 9\n6 9 9\n7 9 9\n"});
        file.expect("3^3: 0.00097752 0.001955 0.0039101",
                    {"3DMESH\nMesh 1 10\n0 512 600 1023\n" + numbered(0, 27),
                     shaper + numbered(0, 27) + "Mesh 1 10\n",
                     shaper + "0 2 4\n1\n1 1\n1 1 1 1\nMesh 1 10\ngamma 1 1\n3DMESH\na b c\n" +
                         numbered(1, 27)});
        file.expect("fails",
                    {eightCodes, "0 512 1023\n" + numbered(0, 27), // no shaper of three words
                     "Mesh\t1 10\n" + shaper + eightCodes});
        file.expect("fails, 2^3", {shaper + "gamma x\n" + eightCodes});
        file.expect("fails, 257^3", {"Mesh 8 10\n" + eightCodes});
        file.expect("fails, 4^3", {"3DMESH 7 7 7\n" + eightCodes}); // a shaper line
        file.expect("fails, 300^3", {longShaper + '\n' + eightCodes});

        Read_LUTFile lut(nullptr);
        QVERIFY(file.read(lut, "0 256 x 1024\ngamma 2.5\n0 512\n", true));
        QCOMPARE(lut.size3D, 4);
        QCOMPARE(lut.gamma, 2.5);
        QCOMPARE(lut.shaperIn[1], 0.5); // relative to the largest so far, on any line
        QCOMPARE(lut.shaperIn[2], 0.0);
        QCOMPARE(lut.shaperIn[3], 1.0);
        Read_LUTFile bounded(nullptr);
        QVERIFY(file.read(bounded, longShaper, true));
        QCOMPARE(bounded.shaperIn[255], 256.0 / 300);
        QCOMPARE(bounded.gamma, 1.0); // the member after shaperIn
    }

    /// Without Mesh, the largest number gives the scale, in whichever channel it is.
    void threeDlScales() {
        const char* const scales[][2] = {{"0.1 0 0", "0.1 0 0"},      {"0 0.25 0", "0 0.083333 0"},
                                         {"0 0 3.9", "0 0 1"},        {"4 0 0", "0.57143 0 0"},
                                         {"0 1000 0", "0 0.97752 0"}, {"0 0 1023.9", "0 0 1"},
                                         {"1024 0 0", "0.50024 0 0"}, {"0 65535 0", "0 1 0"},
                                         {"0 0 70000", "0 0 1"},      {"1e300 0 0", "1 0 0"}};
        for (const auto& [largest, stored] : scales) {
            samples::OneFormat(ThreeDl).expect(
                QByteArray("2^3: ") + stored,
                {QByteArray("0 1\n0 0 0\n") + largest + QByteArray("\n0 0 0").repeated(6)});
        }
    }

    /// Lines of three codes have a path of their own; tabs keep them off it.
    void threeDlCodesReadLikeOtherNumbers() {
        const samples::OneFormat file(ThreeDl);
        QByteArrayList lines =
            QByteArray("1 2|1 2 3 4|1  2 3| 1 2 3|1 2 3 |1\n2 3|0000007 1 2|12345678 1 2|"
                       "4294967297 1 2|1: 2 3|1 2 3/|-1 2 3|1 2 3.0||1 2 x|65536 1234567 0|"
                       "1 2 3\r\r\r\r\r\r")
                .split('|');
        lines += QByteArray("1 2\0003", 5);
        for (const QByteArray& line : lines) {
            for (const QByteArray rest : {"", "\n", "\n7 8 9\n", "\n7 x x\n"}) {
                for (const QByteArray& text :
                     {"0 1\n0 9 9\n" + line + '\n' + rest.trimmed() +
                          QByteArray("\n1 2 3").repeated(6),
                      "0 1\n0 9 9\n" + QByteArray("1 2 3\n").repeated(6) + line + rest}) {
                    QCOMPARE(file.outcomeOf(text),
                             file.outcomeOf(QByteArray(text).replace(' ', '\t')));
                }
            }
        }
    }

    void csp() {
        const samples::OneFormat file(Csp);
        const QByteArray plain = cspHeader("3D") + "1 1 1\n.25 .5 .75\n";
        const auto with = [&](const char* text, const char* other) {
            return QByteArray(plain).replace(text, other);
        };
        file.expect("1^3: 0.25 0.5 0.75",
                    {with("BEGIN", "a b c\nBEGIN METADATA x\n2 2 2\nBEGIN"),
                     with("any", "1 2\nEND METADATA y\n9 9\n9 9\n9 9 9\nany"),
                     with("1\n", "1 \n\n"), with("1 1 1\n", "\n2\n3 3\n4 4 4 4\n1 1 1\n")});
        file.expect("fails", {with("1 1 1\n", "1 1 2\n"), with("1 1 1\n", "1 2 2\n"),
                              with("1 1 1\n", "a b c\n1 1 1\n"), '\n' + plain, with("3D", "2D"),
                              with("BEGIN METADATA", ""), with("V100", "V101")});
        const QByteArray rest = "1 1 1\n.25 .5 .75\n";
        // The domain is that of the ends of the shapers' outputs.
        file.expect("1^3: 0.33333 0.5 0.75 to 2 1 1",
                    {cspHeader("3D", "3\n9 9 9\n0.5 7 2\n") + rest});
        file.expect("1^3: 0.5 0.5 0.75 to 0.5 1 1", {cspHeader("3D", "2\n0 1\n0 0.5\n") + rest});
        file.expect("1^3: 0 0 0", {cspHeader("3D", "2\n0 1\n0 2\n") + "1 1 1\n"});
        file.expect("1^3: 0.0625 0.5 0.75 to 4 1 1", {cspHeader("3D", "2\n0 1\nlow 4\n") + rest});
        const QByteArray start = cspHeader("1D", "2\n0 1\n0.5 2\n"); // stored as B, G, R
        file.expect("2: 0.25 0.5 0.33333 1 1 1.3333", {start + "2\n0 .5 .25\n9 9 9\n"});
        file.expect("1: 1 0 0.66667", {start + "\n1 2\n1 2 3\n1\n1 0 1\n"});
        file.expect("fails", {start + "three\n2 1 1\n"});
    }

    /// What a read of a header leaves in the container, and what an earlier one left there.
    void probes() {
        const struct {
            tintwell::FormatCode code;
            const char* text;
            float from, to;
        } headers[] = {{Nvx1D, "From 0.5 8\nLength 65\n", 0.5F, 8},
                       {ThreeDl, "Mesh 6 10\n", 0, 1},
                       {Mga, "in 274625\nout 9\n", 0, 1},
                       {DavLut, "3DLUTSIZE 65\n", 0.25F, 1},
                       {TruelightCube, "# width 65 65 65\n", 0.25F, 1},
                       {Spi3D, "SPILUT\n3 3\n65 65 65\n", 0.25F, 1},
                       {Discreet1D, "LUT: 3 65\n", 0.25F, 1}};
        for (const auto& header : headers) {
            Read_LUTFile lut(nullptr);
            lut.domainMin3D[2] = lut.domainMin1D[2] = 0.25F;
            lut.domainMax3D[2] = lut.domainMax1D[2] = 4;
            QVERIFY(samples::OneFormat(header.code).read(lut, header.text, true));
            QCOMPARE(lut.size3D + lut.size1D, 65);
            QCOMPARE((lut.size3D > 0 ? lut.domainMin3D : lut.domainMin1D)[2], header.from);
            QCOMPARE((lut.size3D > 0 ? lut.domainMax3D : lut.domainMax1D)[2], header.to);
        }
        const samples::OneFormat cube(Cube);
        Read_LUTFile lut(nullptr);
        QVERIFY(cube.read(lut, "Mesh 1 1\n" + numbered(0, 125), true) && lut.meshHeader);
        QCOMPARE(lut.size3D, 5);
        QVERIFY(cube.read(lut, "LUT_3D_SIZE 2\n", true) && !lut.meshHeader);
        const auto read = [](auto code, const QByteArray& text, bool probe) {
            Read_LUTFile table(nullptr);
            return samples::OneFormat(code).read(table, text, probe) ? table.size1D : -1;
        };
        QCOMPARE(read(Plain1D, "", true), 256);
        QCOMPARE(read(Plain1D, "", false), -1);
        QCOMPARE(read(Plain1D, QByteArray("0\n").repeated(255), false), 256);
        QCOMPARE(read(Csv, QByteArray("0\n").repeated(255), true), -1);
        QCOMPARE(read(Csv, QByteArray("0\n").repeated(256), true), 256);
        QCOMPARE(read(Csv, QByteArray("0\n").repeated(Read_LUTFile::MaxSize1D + 1), false), -1);
    }
};

QTEST_GUILESS_MAIN(TestReaders)
#include "test_readers.moc"

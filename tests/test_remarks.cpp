#include "format_samples.h"
#include "one_format.h"

#include <QImage>

// What readers tell of the files that they accept: one loss, one remark.

namespace {

using enum tintwell::FormatCode;

constexpr const char* sevenOthers =
    "1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n"; // after "0 0 0" an identity

/// The text of a file, where "@" stands for the lines above, and all that is told of it.
constexpr struct {
    tintwell::FormatCode code;
    const char* text;
    const char* remark;
} rows[] = {
    // Nothing is lost.
    {Cube, "LUT_3D_SIZE 2\n0 0 0\n@", ""},
    {Cube, "#\nTITLE \"A\"\nLUT_3D_SIZE 2\r\nLUT_3D_INPUT_RANGE 0.0 1.0\n\n0 0 0\n@\n#\n", ""},
    {Cube, "LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE 0 1\nDOMAIN_MAX 1 1 1\n0 0 0\n1 1 1\n", ""},
    {ThreeDl, "Mesh 0 2\n0 3\n0 0 0\n1 0 0\n0 1 0\n0 0 1\n2 0 0\n3 0 0\n0 3 0\n3 3 3\nLUT8\n", ""},
    {Csp,
     "CSPLUTV100\n1D\nBEGIN METADATA\nEND METADATA\n2\n0 1\n0 1\n2\n0 1\n0 1\n2\n0 1\n0 1\n"
     "2\n0 0 0\n1 1 1\n",
     ""},
    {Spi1D, "Version 1\nFrom 0 1\nLength 2\nComponents 1\n{\n0\n1\n}\n", ""},
    {Csv, "0,0\n1,255\n", ""},

    // Numbers.
    {Cube, "LUT_3D_SIZE 2\n-.5 2 0\n@",
     "2 values of the 3D table are outside 0 to 1 and clamped: the least is -0.5, the largest 2"},
    {Cube, "LUT_1D_SIZE 2\n0 0 0\n1 1 1.5\n",
     "1 value of the 1D table is outside 0 to 1 and clamped: it is 1.5"},
    {Itx, "LUT_3D_SIZE 2\n0 nan 0\n@", "1 number of the 3D table is not finite"},
    {DavLut, "3DLUTSIZE 2\n-inf inf 0\n@", "2 numbers of the 3D table are not finite"},
    {Mga, "in 1\nout 4\nvalues\n0 1 2 9\n",
     "1 value of the 3D table is outside 0 to 3 and clamped: it is 9|"
     "the 3D table has a single point: it maps all colours to one"},
    {Discreet1D, "LUT: 3 2\n0\n255\n0\n255\n-9\n255\n",
     "1 value of the 1D table is outside 0 to 255 and clamped: it is -9"},
    {Itx, "LUT_3D_SIZE 2\n0,5 0,5 0,5\n@",
     "2: found \"0,5 0,5 0,5\", expected 3 numbers: the rest is that of the sample before"},
    {Itx, "LUT_3D_SIZE 2\n0 0 0 1\n@", ""}, // the first of these lines is as good as the last
    {Spi1D, "Length 2\nComponents 1\n{\n0 0 0\n1 1 1\n}\n",
     "5: found \"1 1 1\", expected 1 number: the others are not read"},
    {Csv, "0,0\n1,127.9\n", "2: found \"1,127.9\", of which only the integer part is read"},
    {Csv, "0,0,0\n1,3,2\n",
     "1: found \"0,0,0\", of which only the first code is read (2 such lines)"},
    {Discreet1D, "LUT: 3 2\n0\n1,5\n0\n1\n0\n1\n",
     "3: found \"1,5\", which is read up to the comma"},
    {Discreet1D, "LUT: 3 1\n2 55\n255\n255\n",
     "2: found \"2 55\", which is read as one number|"
     "the 1D table has a single point: it maps all colours to one"},

    {Cube, "LUT_3D_SIZE 1\nMesh 1 1\n.5 1 1\n1.9 0 0\n",
     "3: found \".5 1 1\", which is neither a sample nor a keyword|"
     "4: found \"1.9 0 0\", expected 3 numbers: the rest is that of the sample before|"
     "4: found \"1.9 0 0\", expected integers, as the Mesh line says: a number ends at its point|"
     "the 3D table has a single point: it maps all colours to one"},
    {Csv, "0,0\n1,1e2\n2,127\n", "2: found \"1,1e2\", of which only the integer part is read"},
    {Csv, "0,0\n1,256\n", "1 value of the 1D table is outside 0 to 255 and clamped: it is 256"},

    // Lines.
    {Cube, "LUT_3D_SIZE 2\nLUT_SIZE 5\n\"A\"\n0 0 0\n@",
     "2: found \"LUT_SIZE 5\", which is neither a sample nor a keyword (2 such lines)"},
    {Cube, "LUT_3D_SIZE 2\n0 0 0\n@1 1 1\n.5 1\n",
     "10: found \"1 1 1\", which is not read: the table is full (2 such lines)"},
    {Cube, "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n",
     "found 7 of 8 samples; the rest is black"},
    {Itx, "TITLE A\nLUT_3D_SIZE 2\n0 0 0\n@",
     "1: found \"TITLE A\", which comes before the size and is ignored"},
    {Mga,
     "shape 1\nin 8\nvalues\n0 0 0 0\n1 1 0 0\n2 0 1 0\n3 1 1 0\n4 0 0 1\n5 1 0 1\n6 0 1 1\n"
     "7 1 1 1\n",
     "1: found \"shape 1\", which is not a keyword of the header"},
    {Mga, "in 8\nvalues\n0 0 0 0\n1 1 0 0\n2 0 1 0\n4 1 1 0\n5 0 0 1\n6 1 0 1\n7 0 1 1\n8 1 1 1\n",
     "6: found \"4 1 1 0\", out of order: samples are placed by their lines"},
    {Spi3D, "SPILUT 1.0\n3 3\n1 1 1\n0 0 0 .5 .5 .5\n0 0 1 .5 .5 .5\n",
     "5: found \"0 0 1 .5 .5 .5\", which is outside the lattice and is ignored|"
     "the 3D table has a single point: it maps all colours to one"},
    {Spi3D, "SPILUT 1.0\n3 3\n2 2 2\n0 0 0 1 1 1\n0 1 0 .5 .5 .5\n0 1 0 .5 .5 0\n",
     "6: found \"0 1 0 .5 .5 0\", whose point has had a line before: the last one counts|"
     "found 2 of 8 samples; the rest is black"},
    {Csv, "0,0\n5,1\n1,3\n",
     "2: found \"5,1\", whose index is outside the table; 1 entry without "
     "a line is black"},
    {Csv, "0,0\n0,1\n2,3\n",
     "2: found \"0,1\", whose index has had a line before; 1 entry without a line is black"},
    {Csv, "0,2900\n",
     "the last code, 2900, is not full scale: 4095 is taken|"
     "the 1D table has a single point: it maps all colours to one"},
    {Spi3D, "SPILUT 1.0\n3 3\n1 1 1\n0 0\n",
     "4: found \"0 0\", expected 6 numbers: the rest is that of the sample before|"
     "the 3D table has a single point: it maps all colours to one"},
    {Csv, "0,0\n1\n2,3\n", "2: found \"1\", without a code: that of the line before is taken"},
    {Csv, "index,code\n0,0\n1,3\n",
     "1: found \"index,code\", which is neither a sample nor a keyword"},
    {Csv, "0,0\n1,2900\n", "the last code, 2900, is not full scale: 4095 is taken"},
    {Nvx3D, "Length 2\n\n@",
     "2: found \"\", which is not a sample: its point stays black, and those "
     "after it are late"},
    {Nvx1D, "Range 0 1\nLength 2\n0 0 0\n1 1 1\n",
     "1: found \"Range 0 1\", which is not a keyword of the header"},
    {TruelightCube, "# width 2 2 2\n# Cube\n0 0 0\n@# End\n9 9 9\n",
     "12: found \"9 9 9\", which is not in a section and is ignored"},
    {TruelightCube, "# width 2 2 2\n1 1 1\n# Cube\n0 0 0\n@# End\n",
     "2: found \"1 1 1\", which is not in a section and is ignored"},
    {ThreeDl, "Mesh 0 1\na new look\n0 0 0\n@",
     "2: found \"a new look\", which is neither a sample nor a keyword|"
     "the scale 0 to 3 is inferred from the largest sample, 1"},

    {Look,
     "<l><LUT1D><size>1</size><data>0000003F0000003F0000003F</data><size>1</size>"
     "<data>0000003F0000003F0000003F</data></LUT1D></l>",
     "1: found another table of the same kind, which replaces the one before|"
     "the 1D table has a single point: it maps all colours to one"},

    {Look,
     "<l><LUT><size>2.5</size></LUT><LUT1D><size>2</size>"
     "<data>0000000000000000000000000000803F0000803F0000803F</data></LUT1D></l>",
     "1: found no whole number from 1 on as a size: the table is ignored"},
    {TruelightCube,
     "# lutLength 2\n# InputLUT\n0 0 0\n1 1 1\n# width 2 2 2\n# Cube\n0 0 0\n@# End\n",
     "2: found \"# InputLUT\", expected its size before it: the section is skipped|"
     "no samples for the shaper: the table is black"},
    {Mga, "in 1\nvalues blue green red\n7 0 .5 1\n",
     "2: found \"values blue green red\", but columns are taken as red, green, blue|"
     "the 3D table has a single point: it maps all colours to one"},

    // Sizes.
    {Cube, "0 0 0\n@", "no line states the size: 2 is inferred from 8 lines"},
    {Cube, "1 0 .5\n", "no line states the size: 1 is inferred from 1 line"},
    {Cube, "LUT_3D_SIZE 3\nLUT_3D_SIZE 2\n0 0 0\n@",
     "2: found \"LUT_3D_SIZE 2\", which replaces the size before"},
    {Cube, "LUT_3D_SIZE 1\n1 0 .5\n",
     "the 3D table has a single point: it maps all colours to one"},
    {Mga, "in 7\nvalues\n0 0 0 0\n1 1 0 0\n2 0 1 0\n3 1 1 0\n4 0 0 1\n5 1 0 1\n6 0 1 1\n7 1 1 1\n",
     "1: found \"in 7\", which is not the cube of a size: 2 is taken"},
    {ThreeDl, "a look\n0 0 0\n3 0 0\n0 3 0\n3 3 0\n0 0 3\n3 0 3\n0 3 3\n3 3 3\n",
     "1: found \"a look\", which is taken for a shaper"},

    // Domains, ranges and scales.
    {Cube, "LUT_3D_SIZE 2\nDOMAIN_MAX 4 4 4\n0 0 0\n@",
     "the domain of the 3D table is 0 to 4: the samples are divided by 4"},
    {Cube, "LUT_3D_SIZE 2\nDOMAIN_MIN .5 .5 .5\n0 .5 1\n@",
     "the domain of the 3D table is 0.5 to 1: the samples are divided by its width, 0.5, and its "
     "lower end is not subtracted; 10 values of the 3D table are outside 0.5 to 1 and clamped: "
     "each is 0"},
    {Cube, "LUT_3D_SIZE 2\nDOMAIN_MIN 1 1 1\n1 1 1\n@",
     "the domain of the 3D table is 1 to 1: it has no width, and the samples are divided by zero"},
    {Cube, "LUT_3D_SIZE 2\nDOMAIN_MAX\t2 2 2\n0 0 0\n@",
     "2: found \"DOMAIN_MAX\t2 2 2\", expected DOMAIN_MAX, one blank and 3 numbers: the rest is "
     "not "
     "set"},
    {Cube, "LUT_3D_SIZE 2\nLUT_3D_INPUT_RANGE 0 4\n0 0 0\n@",
     "2: found \"LUT_3D_INPUT_RANGE 0 4\", which is ignored"},
    {Cube, "LUT_3D_SIZE 2\nLUT_1D_INPUT_RANGE 0 4\n0 0 0\n@",
     "LUT_1D_INPUT_RANGE does not apply to a 3D table and is ignored"},
    {Cube, "LUT_1D_SIZE 2\nDOMAIN_MAX 4 4 4\n0 0 0\n1 1 1\n",
     "DOMAIN_MIN and DOMAIN_MAX do not apply to a 1D table and are ignored"},
    {Spi1D, "From -.125 1.125\nLength 2\nComponents 1\n{\n0\n1\n}\n",
     "the range of the 1D table is -0.125 to 1.125: the samples are divided by its width, 1.25, "
     "and "
     "its lower end is not subtracted"},
    {Discreet1D, "LUT: 3 2\n0\n1000\n0\n1000\n0\n1000\n", "the largest value, 1000, is read as 1"},
    {Discreet1D, "LUT: 3 2 16f\n0\n255\n0\n255\n0\n255\n",
     "1: found \"LUT: 3 2 16f\", half floats, which are taken for evenly spaced numbers"},

    // Parts that are not applied.
    {Cube, "LUT_1D_SIZE 2\nLUT_3D_SIZE 2\n0 0 0\n@0 0 0\n1 1 1\n",
     "the file has both tables: its first 8 lines are taken for the lattice, the next 2 for the "
     "curve"},
    {Cube, "LUT_1D_SIZE 2\nLUT_3D_SIZE 2\n0 0 0\n1 1 1\n0 0 0\n@",
     "the file has both tables: its first 8 lines are taken for the lattice, the next 2 for the "
     "curve; but the first lines are grey and rising, as if the curve came first"},
    {Csp,
     "CSPLUTV100\n1D\nBEGIN METADATA\nEND METADATA\n2\n0 1\n0 1\n3\n0 .5 1\n0 .6 1\n2\n0 1\n"
     "0 1\n2\n0 0 0\n1 1 1\n",
     "shapers that are not the identity are ignored: green"},
    {TruelightCube,
     "# width 2 2 2\n# lutLength 3\n# InputLUT\n0 0 0\n.6 .6 .6\n1 1 1\n# Cube\n0 0 0\n@",
     "the shaper is not the identity, and is not applied to the lattice"},
    {TruelightCube, "# width 2 2 2\n# lutLength 2\n# InputLUT\n0 0 0\n1 1 1\n",
     "no samples for the lattice: the table is black"},
    {ThreeDl, "0 9\n0 0 0\n3 0 0\n0 3 0\n3 3 0\n0 0 3\n3 0 3\n0 3 3\n3 3 3\ngamma 2.2\n",
     "10: found \"gamma 2.2\", which is not applied"},
    {ThreeDl,
     "Mesh 0 2\n0 9 9 9\ngamma 2\ngamma 3\n0 0 0\n3 0 0\n0 3 0\n3 3 0\n0 0 3\n3 0 3\n0 3 3\n3 3 "
     "3\n",
     "2: found \"0 9 9 9\", a shaper of uneven steps, which is not applied|"
     "3: found \"gamma 2\", which is not applied"},
    {Cube, "LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE\t0 1\n0 0 0\n1 1 1\n", ""},
    {Spi1D, "Length 2\nComponents 2\n{\n0 0\n1 1\n}\n", "with two components blue is 0"},
    {Spi1D, "Length 2\n{\n0\n1\n}\n", "no Components line: the table is black"},
    {Look, "<l><ASC><a/></ASC><shaders/><LUT><size>1</size></LUT></l>",
     "1: found corrections in ASC, which are ignored|no data for a size of 1: the table is black|"
     "the 3D table has a single point: it maps all colours to one"},
    {Look,
     "<LUT1D><size>2</size><data>0000000000000000000000000000004000000040000000400</data>"
     "</LUT1D>",
     "1: found more than 2 samples; the rest is not read|"
     "channels of the 1D table with samples above 1 are divided by their largest: red, green, blue "
     "by 2, 2, 2"},

    // Tables that can hardly be meant.
    {Itx, "LUT_3D_SIZE 2\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n",
     "all samples of the 3D table are black"},
    {Nvx1D, "Length 2\n1 .5 0\n1 .5 0\n", "all samples of the 1D table are the same, 1 0.5 0"},
};

} // namespace

class TestRemarks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneLossOneRemark() {
        QString wrong;
        for (const auto& row : rows) {
            Read_LUTFile lut(nullptr);
            const QByteArray text = QByteArray(row.text).replace('@', sevenOthers);
            const bool accepted = samples::OneFormat(row.code).read(lut, text);
            const QString found = accepted ? lut.remarks.join('|') : QStringLiteral("fails");
            if (found != row.remark) {
                wrong += text + "\ntells:    " + found + "\nexpected: " + row.remark + "\n\n";
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }

    /// Only what their formats always lose.
    void sampleFiles() {
        for (const tintwell::Format& format : tintwell::catalogue) {
            Read_LUTFile lut(nullptr);
            const QString path =
                QStringLiteral(TINTWELL_TEST_DATA "/") + samples::sampleOf(codeOf(format)).file;
            QVERIFY(lut.ReadFile(samples::request(path, codeOf(format)), false));
            const bool loses =
                format.code == Csp || format.code == TruelightCube || format.code == Look;
            QVERIFY2(lut.remarks.size() == (loses ? 1 : 0), qPrintable(lut.remarks.join('\n')));
        }
    }

    void images() {
        const samples::Folder folder;
        QImage image(16, 4, QImage::Format_RGBA64);
        image.fill(QColor(255, 128, 0, 200));
        image.setPixelColor(0, 0, Qt::black);
        const auto remarksOn = [&](const char* type) {
            const QString path = folder.path(QStringLiteral("tiles"));
            image.save(path, type);
            Read_LUTFile lut(nullptr);
            lut.ReadFile(samples::request(path, static_cast<int>(UnwrappedCube)), false);
            return lut.remarks.join('|');
        };
        QCOMPARE(remarksOn("png"), "only 8 of the bits of each channel are read|"
                                   "the image is transparent in places: alpha is ignored");
        QCOMPARE(remarksOn("bmp"), "");
        QCOMPARE(remarksOn("jpg"), "the compression of JPEG has changed the samples");
    }

    /// A second read starts afresh.
    void cleared() {
        Read_LUTFile lut(nullptr);
        const samples::OneFormat cube(Cube);
        cube.read(lut, "TITLE A\n2 2 2\n");
        QCOMPARE(lut.remarks.size(), 2);
        QCOMPARE(lut.title, "A");
        cube.read(lut, "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n");
        QCOMPARE(lut.remarks, QStringList());
        QCOMPARE(lut.title, QString());
    }
};

QTEST_GUILESS_MAIN(TestRemarks)
#include "test_remarks.moc"

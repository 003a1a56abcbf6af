#include "format_samples.h"
#include "lut/lattice.h"
#include "one_format.h"

#include <QDir>
#include <QRegularExpression>

#include <cmath>

namespace {

constexpr int anyMissing = 1 << 20;

/// A text format, or one of its kinds of table, with one line per sample.
struct LineFormat {
    const char* name;
    int code;
    bool is3D;
    int size;           ///< points per axis or entries of the table to try
    const char* header; ///< %1: the size, %2: less 2, %3: cubed, %s: shapers
    const char* prefix; ///< of a sample line; %n: its number, %i %j %k: its place
    const char* rest;   ///< completes a partial line
    const char* footer;
    bool narrows;       ///< numbers are read in double precision first
    float scale;        ///< what samples are divided by, where the domain ended at 4 before
    float maxProbed;    ///< where the domain ends after a probe
    float maxRead;      ///< after a complete read
    float maxShort;     ///< after one with missing samples
    int mayBeMissing;   ///< how many samples may be missing at the end
    bool allLinesCount; ///< including those without a sample
};

// clang-format off
const LineFormat lineFormats[] = {
    {"cube", 0, true, 2, "DOMAIN_MAX 8 8 8\nLUT_3D_SIZE %1\n", "", "", "", false, 8, 8, 1, 1, 1, false},
    {"cube 1D", 0, false, 4, "LUT_1D_INPUT_RANGE 0 8\nLUT_1D_SIZE %1\n", "", "", "", false, 8, 8, 1, 1, 1, false},
    {"3dl", 3, true, 2, "Mesh %2 3\n", "", " x x", "", true, 7, 1, 1, 1, 1, false},
    {"mga", 4, true, 2, "in %3\nout 9\nvalues\n", "%n ", " x x", "", true, 8, 1, 1, 1, 1, false},
    {"plain", 7, false, 256, "Index\tRed\tGreen\tBlue\n", "%n ", "", "", true, 4, 4, 4, 4, 1, false},
    {"davlut", 8, true, 2, "3DLUTSIZE %1\n", "", "", "", false, 4, 1, 1, 1, 1, false},
    {"csp", 9, true, 2, "CSPLUTV100\n3D\n%s%1 %1 %1\n", "", "", "", false, 8, 8, 8, 1, 1, false},
    {"csp 1D", 9, false, 4, "CSPLUTV100\n1D\n%s%1\n", "", "", "", false, 8, 1, 1, 1, 1, false},
    {"cub", 10, true, 2, "# width %1 %1 %1\n# Cube\n", "", "", "# End\n", false, 1, 1, 1, 1, 1, false},
    {"itx", 11, true, 2, "LUT_3D_SIZE %1\n", "", "", "", false, 4, 1, 1, 1, 1, false},
    {"spi1d", 12, false, 4, "From 0 8\nLength %1\nComponents 3\n{\n", "", "", "}\n", true, 8, 1, 1, 1, 1, false},
    {"spi3d", 13, true, 2, "SPILUT 1.0\n3 3\n%1 %1 %1\n", "%i %j %k ", "", "", false, 4, 1, 1, 1, anyMissing, false},
    {"nvx1d", 15, false, 4, "From 0 8\nLength %1\n", "", "", "", false, 8, 8, 1, 8, 0, false},
    {"nvx3d", 16, true, 2, "From 0 8\nLength %1\n", "", "", "", false, 8, 8, 1, 1, anyMissing, true},
};
// clang-format on

int pointsOf(const LineFormat& format, int size) {
    return format.is3D ? size * size * size : size;
}

QByteArray headerOf(const LineFormat& format, int size) {
    const QByteArray shapers = QByteArray("2\n0 1\n0 8\n").repeated(3);
    return QByteArray(format.header)
        .replace("%s", "BEGIN METADATA\nEND METADATA\n" + shapers)
        .replace("%1", QByteArray::number(size))
        .replace("%2", QByteArray::number(size - 2))
        .replace("%3", QByteArray::number(qint64{size} * size * size));
}

QByteArray prefixOf(const char* pattern, int size, int n) {
    return QByteArray(pattern)
        .replace("%n", QByteArray::number(n))
        .replace("%i", QByteArray::number(n / size / size))
        .replace("%j", QByteArray::number(n / size % size))
        .replace("%k", QByteArray::number(n % size));
}

/// The sample lines of a table, numbered by their red.
QByteArrayList linesOf(const LineFormat& format, int size) {
    QByteArrayList lines;
    for (int n = 0; n < pointsOf(format, size); ++n) {
        lines +=
            prefixOf(format.prefix, size, n) + QByteArray::number(n / 256.0, 'f', 8) + " 0.5 0.25";
    }
    return lines;
}

QByteArray textOf(const LineFormat& format, int size, const QByteArrayList& lines) {
    return headerOf(format, size) + lines.join('\n') + '\n' + format.footer;
}

QVector<float> normalised(const LineFormat& format, float r, float g = 0.5F, float b = 0.25F) {
    return {r / format.scale, g / format.scale, b / format.scale};
}

int sizeOf(const LineFormat& format, const Read_LUTFile& lut) {
    return format.is3D ? lut.size3D : lut.size1D;
}

/// The sample with a number in file order as red, green, blue, wherever the orders have
/// stored it.
QVector<float> sampleOf(const LineFormat& format, const Read_LUTFile& lut, int n) {
    QVector<float> sample = format.is3D
                                ? samples::sampleAt(lut, n / lut.size3D / lut.size3D,
                                                    n / lut.size3D % lut.size3D, n % lut.size3D)
                                : samples::cell(lut.data1D[n]);
    if (format.is3D ? !lut.dataOrder : lut.dataOrder != lut.tableOrder) {
        std::swap(sample[0], sample[2]);
    }
    return sample;
}

/// A domain, as an earlier read might have left it.
void setDomains(Read_LUTFile& lut) {
    std::fill_n(lut.domainMax3D, 3, 4.0F);
    std::fill_n(lut.domainMax1D, 3, 4.0F);
}

QVector<float> domainMaxOf(const LineFormat& format, const Read_LUTFile& lut) {
    return samples::cell(format.is3D ? lut.domainMax3D : lut.domainMax1D);
}

/// How the writers with one line per sample lay it out.
struct LineWriter {
    int code;
    QByteArray (*header)(const QByteArray& size, int scale);
    const char* prefix; ///< as in LineFormat
    const char* separator;
    const char* footer;
    bool integers;   ///< at a scale of 2 or more
    bool keepsScale; ///< does not set the scale back to 1 for real numbers
};

// clang-format off
const LineWriter lineWriters[] = {
    {0, [](const QByteArray& size, int) { return "TITLE \nLUT_3D_SIZE " + size + '\n'; },
     "", " ", "", true, true},
    {4, [](const QByteArray& size, int scale) {
         return "#HEADER\n#type: 3D cube file\n#format: 1.00\n#created:\n#owner: norvane\n#END\n\n"
                "channel\t3d\nin " + QByteArray(size == "2" ? "8" : "0") +
                (scale == 1 ? "\nout\t1" : "\nout " + QByteArray::number(scale + 1)) +
                "\n\nformat lut\n\nvalues\tred\tgreen\tblue\n"; },
     "%n\t", "\t", "", true, true},
    {7, [](const QByteArray&, int) { return QByteArray("Index\tRed\tGreen\tBlue\n"); },
     "%n\t", "\t", "", true, true},
    {8, [](const QByteArray& size, int) { return "# Authors: norvane\n\n3DLUTSIZE " + size + '\n'; },
     "", " ", "", false, false},
    {11, [](const QByteArray& size, int) { return "LUT_3D_SIZE " + size + '\n'; },
     "", " ", "", false, false},
    {12, [](const QByteArray& size, int scale) {
         return "Version 1\nFrom 0.0 " + QByteArray::number(scale) + "\nLength " + size +
                "\nComponents 3\n{\n"; },
     "        ", " ", "}\n", true, true},
    {13, [](const QByteArray& size, int) {
         return "SPILUT 1.0\n3 3\n" + size + ' ' + size + ' ' + size + '\n'; },
     "%i %j %k ", " ", "", false, false},
    {15, [](const QByteArray& size, int) { return "From 0.0 1.0\nLength " + size + '\n'; },
     "", " ", "", false, true},
    {16, [](const QByteArray& size, int) { return "From 0.0 1.0\nLength " + size + '\n'; },
     "", " ", "", false, true},
};
// clang-format on

/// Tables of two points, and how their values are printed.
void fillTables(Read_LUTFile& lut) {
    samples::fill3D(lut, 2, [](int i, int j, int k) {
        return QVector<float>({float(i) / 2, float(j) / 4, float(k) - 0.0078125F});
    });
    samples::fill1D(lut, {0, 0.25F, 1, 0.00001F, 0.3333333F, -0.5F});
}

QByteArray latticeLines(const LineWriter& writer, bool rgb, bool ijk, bool integers) {
    const char* const reals[3][2] = {
        {"0.000000", "0.500000"}, {"0.000000", "0.250000"}, {"-0.007813", "0.992188"}};
    const char* const thousandths[3][2] = {{"0", "500"}, {"0", "250"}, {"-7", "992"}};
    const auto& texts = integers ? thousandths : reals;
    QByteArray lines;
    for (int n = 0; n < 8; ++n) {
        const int first = ijk ? n >> 2 : n & 1;
        const int third = ijk ? n & 1 : n >> 2;
        QByteArrayList words = {texts[0][first], texts[1][(n >> 1) & 1], texts[2][third]};
        if (!rgb) {
            words.swapItemsAt(0, 2);
        }
        lines += prefixOf(writer.prefix, 2, n) + words.join(writer.separator) +
                 (integers ? writer.separator : "") + '\n';
    }
    return lines;
}

QByteArray curveLines(const LineWriter& writer, bool rgb, bool integers) {
    const char* const reals[2][3] = {{"0", "0.25", "1"}, {"1e-05", "0.333333", "-0.5"}};
    const char* const thousandths[2][3] = {{"0", "250", "1000"}, {"0", "333", "-500"}};
    const auto& texts = integers ? thousandths : reals;
    QByteArray lines;
    for (int n = 0; n < 2; ++n) {
        lines += prefixOf(writer.prefix, 2, n);
        for (int c = 0; c < 3; ++c) {
            lines += QByteArray(texts[n][rgb ? c : 2 - c]) + writer.separator;
        }
        lines += '\n';
    }
    return lines;
}

QString sampleFile(int code) {
    return QDir(QStringLiteral(TINTWELL_TEST_DATA))
        .filePath(QLatin1String(samples::sampleOf(code).file));
}

QByteArray contentOf(int code) {
    QFile file(sampleFile(code));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isImage(int code) {
    return tintwell::formatOf(code)->isImage;
}

/// The value of every cell; reading them lets the sanitizers detect a table smaller than its size.
QVector<float> allValues(const Read_LUTFile& lut) {
    QVector<float> values = samples::curve(lut);
    tintwell::visitLattice(lut.data3D != nullptr ? lut.size3D : 0, [&](int i, int j, int k) {
        values += samples::cell(lut.data3D[i][j][k]);
        return true;
    });
    return values;
}

} // namespace

class TestAllFormats : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    void addFormats() {
        QTest::addColumn<int>("code");
        for (int code = 0; code < tintwell::formatCount; ++code) {
            QTest::newRow(samples::sampleOf(code).file) << code;
        }
    }

    void addLineFormats() {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(lineFormats)); ++row) {
            QTest::newRow(lineFormats[row].name) << row;
        }
    }

    static const LineFormat& lineFormat() {
        QFETCH(int, row);
        return lineFormats[row];
    }

    /// Reads the format's table with its own size.
    static bool read(Read_LUTFile& lut, const QByteArrayList& lines, bool probe = false) {
        const LineFormat& format = lineFormat();
        setDomains(lut);
        return samples::OneFormat(format.code).read(lut, textOf(format, format.size, lines), probe);
    }

    /// Accepts any result, but it must be complete, and a failure must have a reason.
    void survives(const QByteArray& content, int code) {
        for (const bool probe : {true, false}) {
            Read_LUTFile lut(nullptr);
            const QString path = m_folder.file(QStringLiteral("broken"), content);
            const bool read = lut.ReadFile(samples::request(path, code), probe);
            if (!read && lut.lastError.isEmpty()) {
                qFatal("a reader does not say why it failed");
            }
            static_cast<void>(allValues(lut));
        }
    }

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void samplesRead_data() { addFormats(); }
    void samplesRead() {
        QFETCH(int, code);
        const QString path = sampleFile(code);
        Read_LUTFile lut(nullptr);
        lut.dataOrder = lut.tableOrder = false;
        QVERIFY(lut.ReadFile(samples::request(path, code), false));
        QVERIFY(lut.dataOrder);
        QCOMPARE(lut.tableOrder, samples::sampleOf(code).readerIsBlueFastest);
        QCOMPARE(lut.size3D > 0 && lut.data3D != nullptr, Read_LUTFile::formatIs3D(code));
        QVERIFY(allValues(lut).contains(1));

        Read_LUTFile asAsked(nullptr);
        QVERIFY(asAsked.ReadFile(samples::request(path, code, false, false), false));
        QVERIFY(!asAsked.dataOrder && !asAsked.tableOrder);

        Read_LUTFile probed(nullptr);
        QVERIFY(probed.ReadFile(samples::request(path, code), true));
        QVERIFY(probed.data3D == nullptr && probed.data1D == nullptr);
        QCOMPARE(probed.size3D, lut.size3D);
        QCOMPARE(probed.size1D, lut.size1D);
        QCOMPARE(probed.tableOrder, samples::sampleOf(code).readerIsBlueFastest);

        QVERIFY(lut.ReadFile(samples::request(path, code), true)); // leaves no old table
        QVERIFY(lut.data3D == nullptr && lut.data1D == nullptr);
    }

    void missingFiles_data() { addFormats(); }
    void missingFiles() {
        QFETCH(int, code);
        const bool reads = code == 2; // an image of no pixels is a strip of size 0
        Read_LUTFile lut(nullptr);
        for (const QString& path :
             {QString(), m_folder.path(QString()), m_folder.path(QStringLiteral("none/x"))}) {
            QCOMPARE(lut.ReadFile(samples::request(path, code), true), reads);
            QCOMPARE(lut.ReadFile(samples::request(path, code), false), reads);
            QVERIFY(!Write_LUTFile(nullptr).WriteFile(samples::request(path, code), lut));
        }
    }

    void samplesFillTheirPlaces_data() { addLineFormats(); }
    void samplesFillTheirPlaces() {
        const LineFormat& format = lineFormat();
        const bool isFixed = format.code == 7;
        for (const int size : {format.size, format.size + (isFixed ? 0 : 1)}) {
            const QByteArray text = textOf(format, size, linesOf(format, size));
            for (const int orders : {0, 1, 2, 3}) {
                Read_LUTFile lut(nullptr);
                setDomains(lut);
                QVERIFY(samples::OneFormat(format.code)
                            .readInOrders(lut, text, orders & 1, orders & 2));
                QCOMPARE(sizeOf(format, lut), size);
                for (int n = 0; n < pointsOf(format, size); ++n) {
                    QCOMPARE(sampleOf(format, lut, n), normalised(format, float(n) / 256));
                }
            }
        }
    }

    void filesOfOtherSystems_data() { addLineFormats(); }
    void filesOfOtherSystems() {
        const LineFormat& format = lineFormat();
        const QByteArray body = linesOf(format, format.size).join('\n').replace(" ", " \t ");
        const QByteArray text = headerOf(format, format.size) + body + '\n' + format.footer;
        Read_LUTFile lut(nullptr);
        setDomains(lut);
        QVERIFY(samples::OneFormat(format.code)
                    .read(lut, "\xEF\xBB\xBF" + text.trimmed().replace("\n", " \r\n\t")));
        const int last = pointsOf(format, format.size) - 1;
        QCOMPARE(sampleOf(format, lut, last), normalised(format, float(last) / 256));
    }

    void otherLinesAreSkipped_data() { addLineFormats(); }
    void otherLinesAreSkipped() {
        const LineFormat& format = lineFormat();
        QByteArrayList lines = linesOf(format, format.size);
        for (const char* other : {"", "# 1 1 1", "word 1 1 1", "word 1 1"}) {
            lines.insert(1, other);
        }
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, lines));
        QCOMPARE(sampleOf(format, lut, 1),
                 format.allLinesCount ? QVector<float>(3, 0) : normalised(format, 1 / 256.0F));
    }

    void partialLinesKeepTheRest_data() { addLineFormats(); }
    void partialLinesKeepTheRest() {
        const LineFormat& format = lineFormat();
        QByteArrayList lines = linesOf(format, format.size);
        lines[0] = prefixOf(format.prefix, format.size, 0) + "0.75" + format.rest;
        lines[2] = prefixOf(format.prefix, format.size, 2) + "0.875" + format.rest;
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, lines));
        QCOMPARE(sampleOf(format, lut, 0), normalised(format, 0.75F, 0, 0));
        QCOMPARE(sampleOf(format, lut, 2), normalised(format, 0.875F));
    }

    /// A number just above the midpoint of two floats: in double precision it is the midpoint.
    void numbersAreNarrowedOnce_data() { addLineFormats(); }
    void numbersAreNarrowedOnce() {
        const LineFormat& format = lineFormat();
        QByteArrayList lines = linesOf(format, format.size);
        lines[1] =
            prefixOf(format.prefix, format.size, 1) + "0.500000029802322387695312501 0.5 0.25";
        Read_LUTFile lut(nullptr);
        QVERIFY(read(lut, lines));
        QCOMPARE(sampleOf(format, lut, 1), normalised(format, format.narrows ? 0.5F : 0.50000006F));
    }

    void lastSamplesMayBeMissing_data() { addLineFormats(); }
    void lastSamplesMayBeMissing() {
        const LineFormat& format = lineFormat();
        QByteArrayList lines = linesOf(format, format.size);
        const int last = lines.size() - 1;
        for (const int missing : {1, 2}) {
            lines.removeLast();
            Read_LUTFile lut(nullptr);
            QCOMPARE(read(lut, lines), missing <= format.mayBeMissing);
            QCOMPARE(sampleOf(format, lut, last), QVector<float>(3, 0));
            QCOMPARE(sampleOf(format, lut, 1), normalised(format, 1 / 256.0F));
            QCOMPARE(domainMaxOf(format, lut), QVector<float>(3, format.maxShort));
        }
    }

    void domainsEndWhereTheyShould_data() { addLineFormats(); }
    void domainsEndWhereTheyShould() {
        const LineFormat& format = lineFormat();
        for (const bool probe : {true, false}) {
            Read_LUTFile lut(nullptr);
            QVERIFY(read(lut, linesOf(format, format.size), probe));
            QCOMPARE(domainMaxOf(format, lut),
                     QVector<float>(3, probe ? format.maxProbed : format.maxRead));
        }
    }

    void sizesOutOfRange_data() { addLineFormats(); }
    void sizesOutOfRange() {
        const LineFormat& format = lineFormat();
        if (!QByteArray(format.header).contains("%1")) {
            return;
        }
        const samples::OneFormat file(format.code);
        const QByteArrayList lines = linesOf(format, format.size);
        const int tooLarge = 1 + (format.is3D ? Read_LUTFile::MaxSize3D : Read_LUTFile::MaxSize1D);
        for (const int size : {0, -2, tooLarge}) {
            for (const bool probe : {true, false}) {
                Read_LUTFile lut(nullptr);
                QCOMPARE(file.read(lut, textOf(format, size, lines), probe),
                         size == tooLarge && probe);
                QCOMPARE(sizeOf(format, lut), size);
                QVERIFY(lut.data3D == nullptr && lut.data1D == nullptr);
            }
        }
        for (const int size : {100, 101}) { // which the file could not fill
            Read_LUTFile lut(nullptr);
            const bool reads = file.read(lut, headerOf(format, size));
            QCOMPARE(reads, size == 100 && format.mayBeMissing == anyMissing);
            QCOMPARE(lut.data3D != nullptr, reads);
        }
    }

    /// Such a file leaves the container unchanged: the result is whether it holds a table.
    void filesWithoutASize() {
        for (const int code : {8, 11, 13}) {
            for (const bool probe : {true, false}) {
                Read_LUTFile lut(nullptr);
                samples::fillRandom(lut, 3, 1);
                const QVector<float> before = allValues(lut);
                QVERIFY(samples::OneFormat(code).read(lut, "# 1 2 3\n", probe));
                QCOMPARE(lut.size3D, 3);
                QCOMPARE(allValues(lut), before);
            }
        }
    }

    void writersLayOutLines_data() {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(lineWriters)); ++row) {
            QTest::newRow(samples::sampleOf(lineWriters[row].code).file) << row;
        }
    }
    void writersLayOutLines() {
        QFETCH(int, row);
        const LineWriter& writer = lineWriters[row];
        const samples::OneFormat file(writer.code);
        const bool is3D = Read_LUTFile::formatIs3D(writer.code);
        Read_LUTFile empty(nullptr);
        Read_LUTFile lut(nullptr);
        fillTables(lut);
        for (const int scale : {1, 0, 1000}) {
            const bool integers = writer.integers && scale > 1;
            const auto expected = [&](bool rgb, bool ijk) {
                return writer.header("2", scale) +
                       (is3D ? latticeLines(writer, rgb, ijk, integers)
                             : curveLines(writer, rgb, integers)) +
                       writer.footer;
            };
            QCOMPARE(file.written(lut, scale),
                     expected(true, samples::sampleOf(writer.code).writerIsBlueFastest));
            for (const int orders : {0, 1, 2, 3}) {
                QCOMPARE(file.writtenInOrders(lut, orders & 1, orders & 2, scale),
                         expected(orders & 1, orders & 2));
            }
            QCOMPARE(file.written(empty, scale), writer.header("0", scale) + writer.footer);
        }
        LUTFILE_ST st = samples::request(m_folder.path(QStringLiteral("out")), writer.code);
        for (const int scale : {0, 1000}) {
            st.outputScale = scale;
            Write_LUTFile used(nullptr);
            QVERIFY(used.WriteFile(st, empty));
            QCOMPARE(int(used.outputScale), writer.keepsScale ? scale : std::min(scale, 1));
        }
    }

    /// A sample is unchanged after it is written and read. Shows the writer's own orders, too.
    void roundTrips_data() { addFormats(); }
    void roundTrips() {
        QFETCH(int, code);
        const samples::OneFormat file(code);
        const int scale = code == 14 ? 1023 : 1; // its values are integers only
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(sampleFile(code), code), false));
        // The orders that undo the reader's own; for a curve both of them together swap channels.
        const bool rgb = Read_LUTFile::formatIs3D(code) || lut.tableOrder;
        const QByteArray text = file.writtenInOrders(lut, rgb, lut.tableOrder, scale);
        if (text == "(failed)") {
            return; // no writer
        }
        LUTFILE_ST st = samples::request(m_folder.path(QStringLiteral("out")), code, false, false);
        st.defaultOrder = true;
        Write_LUTFile writer(nullptr);
        QVERIFY(writer.WriteFile(st, lut));
        QVERIFY(writer.dataOrder);
        QCOMPARE(writer.tableOrder, samples::sampleOf(code).writerIsBlueFastest);

        Read_LUTFile again(nullptr);
        QVERIFY(file.read(again, text));
        const QVector<float> before = allValues(lut);
        const QVector<float> after = allValues(again);
        QCOMPARE(after.size(), before.size());
        for (int n = 0; n < before.size(); ++n) {
            QVERIFY(std::fabs(after[n] - before[n]) <= (scale > 1 ? 1e-3F : 1e-6F));
        }
    }

    void brokenFilesAreSurvived_data() { addFormats(); }
    void brokenFilesAreSurvived() {
        QFETCH(int, code);
        const QByteArray content = contentOf(code);
        const int step = isImage(code) ? content.size() / 40 + 1 : content.size() / 300 + 1;
        for (int length = 0; length < content.size(); length += step) {
            survives(content.left(length), code);
        }
        if (isImage(code)) {
            for (int at = 0; at < content.size(); at += step) {
                QByteArray flipped = content;
                flipped[at] = static_cast<char>(~flipped[at]);
                survives(flipped, code);
            }
            return;
        }
        const QByteArrayList lines = content.split('\n');
        const QByteArrayList noises = {"",
                                       "noise",
                                       "-1",
                                       "99999999999",
                                       "1e999 nan -inf",
                                       "0x10 0X1.8p1 1",
                                       "# #",
                                       QByteArray("\0\xff\xfe", 3),
                                       QByteArray("7 ").repeated(300)};
        const int lineStep = lines.size() / 30 + 1;
        for (int n = 0; n < lines.size(); n += n < 20 ? 1 : lineStep) {
            QByteArrayList changed = lines;
            changed.removeAt(n);
            survives(changed.join('\n'), code);
            changed = lines;
            changed.insert(n, lines[n]);
            survives(changed.join('\n'), code);
            for (const QByteArray& noise : noises) {
                changed[n] = noise;
                survives(changed.join('\n'), code);
            }
            for (const char* number : {"0", "-3", "257", "4294967298", "x"}) { // in a keyword line
                changed[n] = QString::fromLatin1(lines[n])
                                 .replace(QRegularExpression(QStringLiteral("\\d+")), number)
                                 .toLatin1();
                survives(changed.join('\n'), code);
            }
        }
    }

    /// The README's table agrees with the catalogue.
    void readmeListsTheCatalogue() {
        QFile readme(QStringLiteral(TINTWELL_TEST_DATA "/../../README.md"));
        QVERIFY(readme.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(readme.readAll());
        Read_LUTFile lut(nullptr);
        for (int code = 0; code < tintwell::formatCount; ++code) {
            const bool writes = Write_LUTFile(nullptr).WriteFile(
                samples::request(m_folder.path(QStringLiteral("any")), code), lut);
            const QString row =
                QStringLiteral("| %1 | %2 | %3 | yes | %4 |")
                    .arg(code)
                    .arg(Read_LUTFile::formatStr(code),
                         Read_LUTFile::formatIs3D(code) ? "3D" : "1D", writes ? "yes" : "no");
            QVERIFY2(text.contains(row), qPrintable(row));
        }
    }
};

QTEST_GUILESS_MAIN(TestAllFormats)
#include "test_all_formats.moc"

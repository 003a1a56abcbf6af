#include "calc/lutcalc.h"
#include "format_samples.h"
#include "program.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

#include <sys/stat.h>

// Runs the command-line program as its users do.

using samples::Outcome;
using samples::run;
using tintwell::formatCount;

namespace {

QString nameOf(int code) {
    return tintwell::formatOf(code)->name;
}

bool is3D(int code) {
    return Read_LUTFile::formatIs3D(code);
}

/// A smooth table: no two axes and no two channels are alike, and 0 and 1 are reached.
float smooth(int channel, float r, float g, float b) {
    const float in[] = {r, g, b};
    return 0.9F * std::pow(in[channel], 1.2F + 0.3F * static_cast<float>(channel)) +
           0.1F * in[(channel + 1) % 3];
}

QVector<float> smoothCell(float r, float g, float b) {
    return {smooth(0, r, g, b), smooth(1, r, g, b), smooth(2, r, g, b)};
}

void fillSmooth(Read_LUTFile& lut, bool lattice, int size) {
    const auto last = static_cast<float>(size - 1);
    if (lattice) {
        samples::fill3D(lut, size, [last](int i, int j, int k) {
            return smoothCell(float(i) / last, float(j) / last, float(k) / last);
        });
        return;
    }
    lut.setSize1D(size);
    QVERIFY(lut.allocate1D());
    for (int n = 0; n < size; ++n) {
        const float t = float(n) / last;
        const QVector<float> cell = smoothCell(t, t, t);
        std::copy(cell.cbegin(), cell.cend(), lut.data1D[n]);
    }
}

float distance(const float* a, const float* b) {
    return std::max({std::fabs(a[0] - b[0]), std::fabs(a[1] - b[1]), std::fabs(a[2] - b[2])});
}

/// The largest difference between two tables of one kind and size.
float difference(const Read_LUTFile& a, const Read_LUTFile& b) {
    if (a.size3D != b.size3D || (a.size3D <= 0 && a.size1D != b.size1D)) {
        return INFINITY;
    }
    float largest = 0;
    for (int i = 0; i < a.size3D; ++i) {
        for (int j = 0; j < a.size3D; ++j) {
            for (int k = 0; k < a.size3D; ++k) {
                largest = std::max(largest, distance(a.data3D[i][j][k], b.data3D[i][j][k]));
            }
        }
    }
    for (int n = 0; a.size3D <= 0 && n < a.size1D; ++n) {
        largest = std::max(largest, distance(a.data1D[n], b.data1D[n]));
    }
    return largest;
}

} // namespace

class TestCli : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    static QString data(const char* name) { return QStringLiteral(TINTWELL_TEST_DATA "/") + name; }

    QString path(const QString& name) const { return m_folder.path(name); }

    QString cube() const {
        return m_folder.file("look.cube", "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n"
                                          "0 0 1\n1 0 1\n0 1 1\n1 0.5 0.25\n");
    }

    /// Reads into R, G, B cells, as the file means them.
    static void read(const QString& file, int code, Read_LUTFile& lut) {
        LUTFILE_ST st = samples::request(file, code);
        if (!is3D(code)) {
            st = samples::request(file, code, true, true);
        }
        QVERIFY2(lut.ReadFile(st, false), qPrintable(file + ": " + lut.lastError));
    }

    QStringList entries(const QString& folder) const {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private Q_SLOTS:
    void helpAndVersion() {
        const Outcome help = run({"--help"});
        QCOMPARE(help.status, 0);
        QVERIFY(help.errors.isEmpty());
        QCOMPARE(run({"--version"}).output, QString("tintwell-cli 0.1.0\n"));
        for (const char* command :
             {"formats", "info", "convert", "merge", "identity", "apply", "picture"}) {
            QVERIFY(help.output.contains(QString("\n  %1 ").arg(command)));
            const Outcome own = run({command, "--help"});
            QCOMPARE(own.status, 0);
            QVERIFY(
                own.output.startsWith(QString("Usage: tintwell-cli %1 [options]").arg(command)));
        }
    }

    /// The documents contain what scripts/generate makes of the commands' definitions.
    void documentsAreGenerated_data() {
        QTest::addColumn<QString>("document");
        QTest::newRow("man") << "docs/tintwell-cli.1";
        QTest::newRow("bash") << "packaging/completions/tintwell-cli.bash";
        QTest::newRow("zsh") << "packaging/completions/_tintwell-cli";
    }
    void documentsAreGenerated() {
        QFETCH(QString, document);
        QFile file(QStringLiteral(TINTWELL_SOURCE "/") + document);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QProcess generate;
        generate.start(QStringLiteral(TINTWELL_GENERATE), {QTest::currentDataTag()});
        QVERIFY(generate.waitForFinished() && generate.exitCode() == 0);
        const QByteArray made = generate.readAllStandardOutput();
        QVERIFY(made.contains("verbose") && file.readAll().contains(made));
    }

    void failures_data() {
        QTest::addColumn<QString>("arguments"); // % stands for the folder
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        m_folder.file("short.cube", "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n");
        m_folder.file("tiny.cube", "LUT_3D_SIZE 64\n0 0 0\n");
        m_folder.file("size.cube", "TITLE \"x\"\r\n\r\nLUT_3D_SIZE none\r\n0 0 0\r\n");
        m_folder.file("huge.spi1d", "Length 9999999\nComponents 1\n{\n0\n}\n");
        m_folder.file("sizeless.itx", "0 0 0\n");
        m_folder.file("kind.csp", "CSPLUTV100\n2D\n");
        m_folder.file("empty.cube", "");
        m_folder.file("long.nvx1d", "Length 2\n0 0 0\n1 1 1\n2 2 2\n");
        m_folder.file("noise.png", "noise");
        m_folder.file("hex.look", "<look><LUT>\n<size>2</size>\n<data>00</data></LUT></look>");
        QCOMPARE(mkfifo(qPrintable(path("pipe.cube")), 0600), 0);
        QVERIFY(QFile::link(path("gone.cube"), path("nowhere.cube")));
        m_folder.file("unknown.zzz", "LUT_3D_SIZE 2\n");
        cube();

        const auto failed = [](const char* name, const char* arguments, const char* message) {
            QTest::newRow(name) << QString(arguments) << 1 << QString(message);
        };
        failed("missing", "convert %/none.cube %/o.cube", "%/none.cube: No such file or directory");
        failed("folder in", "info --from cube %", "%: is a folder, expected a file");
        failed("short", "info %/short.cube",
               "%/short.cube:7: the file ends after 6 samples, expected 8");
        failed("too short", "info %/tiny.cube",
               "%/tiny.cube: the file is too short for the 262144 samples of its size 64");
        failed("bad size", "info %/size.cube",
               "%/size.cube:3: found \"LUT_3D_SIZE none\", expected a size of 1 or more");
        failed("too long", "info %/huge.spi1d",
               "%/huge.spi1d: found a length of 9999999, expected 1 to 1048576");
        failed("no size", "info %/sizeless.itx",
               "%/sizeless.itx: found no size, expected a LUT_3D_SIZE line with one");
        failed("no kind", "info %/kind.csp",
               "%/kind.csp:2: found \"2D\", expected \"1D\" or \"3D\"");
        failed("empty", "info %/empty.cube", "%/empty.cube: found no table, expected .cube");
        failed("a sample too many", "info %/long.nvx1d",
               "%/long.nvx1d:4: found \"2 2 2\", expected nothing after 2 samples");
        failed("not an image", "info %/noise.png",
               "%/noise.png: is not an image of a known type (png bmp tif tiff jpg jpeg)");
        failed(
            "bad hex", "info %/hex.look",
            "%/hex.look:3: found 2 characters or fewer, expected the 192 hexadecimal digits of 8 "
            "samples");
        failed("unknown extension", "info %/unknown.zzz",
               "%/unknown.zzz: found the extension \"zzz\", expected a known one (see "
               "tintwell-cli formats), or --from");
        failed("exists", "convert %/look.cube %/look.cube",
               "%/look.cube: exists already (--force replaces it)");
        failed("no folder", "convert %/look.cube %/no/o.cube",
               "%/no/o.cube: not written: No such file or directory");
        failed("folder out", "convert --to cube --force %/look.cube %",
               "%: is a folder, expected a file");
        failed("pipe out", "identity %/pipe.cube",
               "%/pipe.cube: is a pipe or socket, expected a file");
        failed("link to nowhere", "identity --force %/nowhere.cube",
               "%/nowhere.cube: is a link that leads nowhere");
        failed("merge, missing", "merge %/look.cube %/none.3dl %/o.cube",
               "%/none.3dl: No such file or directory");
        failed("disk full", "convert --to spi3d %/look.cube /dev/full",
               "/dev/full: not written: No space left on device");

        const auto wrong = [](const char* name, const char* arguments, const char* message) {
            QTest::newRow(name) << QString(arguments) << 2 << QString(message);
        };
        wrong("no command", "", "no command given");
        wrong("unknown command", "burn %/look.cube", "unknown command \"burn\"");
        wrong("unknown option", "info --colour %/look.cube", "Unknown option 'colour'.");
        wrong("no value", "convert %/look.cube %/o.cube --size", "Missing value after '--size'.");
        wrong("too few", "info", "found 0 operands, expected FILE...");
        wrong("too many", "merge a b c d", "found 4 operands, expected FIRST SECOND OUT");
        wrong("no output", "convert %/look.cube", "found no output, expected IN OUT");
        wrong("many inputs", "convert a.cube b.cube c.cube",
              "several inputs need --output-directory");
        wrong("no format for many", "convert %/look.cube --output-directory %",
              "--output-directory needs --to");
        wrong("unknown --from", "info --from tube %/look.cube",
              "unknown format \"tube\" (see tintwell-cli formats)");
        wrong("code beyond", "convert --to 99 %/look.cube %/o.cube",
              "unknown format \"99\" (see tintwell-cli formats)");
        wrong("read only", "convert %/look.cube %/o.3dl",
              "the format 3dl can be read, but not written");
        wrong("ambiguous output", "convert %/look.cube %/o.lut",
              "%/o.lut: the format may be discreet or lut, expected --to");
        wrong("not a number", "identity %/o.cube --size many",
              "found --size many, expected a whole number from 2 to 1048576");
        wrong("too large for a lattice", "identity %/o.cube --size 257",
              "found --size 257, expected 2 to 256 for cube");
        wrong("bad code scale", "identity %/o.csv --scale 1000",
              "found --scale 1000, expected a power of two less one, 3 to 16777215, for csv");
        wrong("jobs of one", "convert %/look.cube %/o.cube --jobs many",
              "found --jobs many, expected a whole number from 1 to 256");
        wrong("folder out, no format", "convert %/look.cube %", "%: is a folder, expected a file");
        wrong("empty value",
              "convert %/look.cube %/o.cube --to=", "found --to with an empty value");
        wrong("bad order", "convert --in-order gbr %/look.cube %/o.cube",
              "found --in-order gbr, expected rgb, bgr, red-fastest, blue-fastest, or one of each "
              "pair with a comma");
    }
    void failures() {
        QFETCH(QString, arguments);
        QFETCH(QString, message);
        const QString folder = path("");
        const Outcome outcome = run(arguments.replace('%', folder).split(' ', Qt::SkipEmptyParts));
        QTEST(outcome.status, "status");
        QCOMPARE(outcome.errors.split('\n').first(),
                 "tintwell-cli: " + message.replace('%', folder));
        QVERIFY(outcome.output.isEmpty());
        QVERIFY(!QFile::exists(path("o.cube")));
    }

    void formats() {
        const QStringList lines = run({"formats"}).output.trimmed().split('\n');
        QCOMPARE(lines.size(), formatCount + 1);
        const QJsonArray formats =
            QJsonDocument::fromJson(run({"formats", "--json"}).output.toUtf8()).array();
        QCOMPARE(formats.size(), formatCount);
        for (int code = 0; code < formatCount; ++code) {
            const QJsonObject format = formats[code].toObject();
            QCOMPARE(format["code"].toInt(), code);
            QCOMPARE(format["name"].toString(), nameOf(code));
            QCOMPARE(format["label"].toString(), Read_LUTFile::formatStr(code));
            QCOMPARE(format["kind"].toString(), QString(is3D(code) ? "3D" : "1D"));
            QVERIFY(lines[code + 1].contains(nameOf(code)));
        }
    }

    void info() {
        const QString curve =
            m_folder.file("curve.nvx1d", "From 0.0 2.0\nLength 3\n0 0.5 1\n0.5 0.5 1\n2 0.5 1\n");
        const Outcome outcome = run({"info", "--json", data("sample.cube"), curve});
        QCOMPARE(outcome.status, 0);
        const QJsonArray files = QJsonDocument::fromJson(outcome.output.toUtf8()).array();
        const QJsonObject lattice = files[0].toObject();
        QCOMPARE(lattice["format"].toString(), QString("cube"));
        QCOMPARE(lattice["order"].toString(), QString("rgb,red-fastest"));
        QCOMPARE(lattice["header"].toArray().first().toString(),
                 QString("TITLE \"two points, warmer\""));
        QCOMPARE(lattice["tables"].toArray().first().toObject()["size"].toInt(), 2);

        const QJsonObject table = files[1].toObject()["tables"].toArray().first().toObject();
        QCOMPARE(table["kind"].toString(), QString("1D"));
        QCOMPARE(table["rangeMax"].toArray(), QJsonArray({2, 2, 2}));
        QCOMPARE(table["min"].toArray(), QJsonArray({0, 0.25, 0.5}));
        QCOMPARE(table["max"].toArray(), QJsonArray({1, 0.25, 0.5}));
        QCOMPARE(table["identity"].toBool(), false);
        QCOMPARE(files[1].toObject()["notes"].toArray().size(), 2);

        const Outcome dark =
            run({"info", m_folder.file("nan.cube", "TITLE \"d\xe4mmerung\"\nLUT_3D_SIZE 1\n"
                                                   "nan nan 0\n")});
        QVERIFY2(dark.output.contains("header    TITLE \"d") &&
                     dark.output.contains("identity  no\n") &&
                     dark.output.contains("2 numbers are not finite") &&
                     !dark.output.contains("nan nan"),
                 qPrintable(dark.output));

        const Outcome one = run({"info", path("none.cube"), data("texture.png")});
        QCOMPARE(one.status, 1); // but the other file is reported
        QVERIFY(one.output.contains("identity  yes"));
    }

    void contentDecidesBetweenFormats_data() {
        QTest::addColumn<QString>("format");
        QTest::newRow("sample_discreet.lut") << "discreet";
        QTest::newRow("sample_plain.lut") << "lut";
        QTest::newRow("texture.png") << "texture";
        QTest::newRow("unwrapped.png") << "unwrapped";
    }
    void contentDecidesBetweenFormats() {
        QFETCH(QString, format);
        const Outcome outcome = run({"info", data(QTest::currentDataTag())});
        QVERIFY(outcome.output.contains("format    " + format + " ("));
    }

    /// Formats whose readers accept short files.
    void notesWhatReadersRemark_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("told");
        QTest::newRow("short.nvx3d") << QByteArray("From 0.0 1.0\nLength 2\n0 0 0\n0 0 1\n0 1 0\n")
                                     << " found 3 of 8 samples; the rest is black";
        QTest::newRow("short.spi3d") << QByteArray("SPILUT 1.0\n3 3\n2 2 2\n0 0 0 1 1 1\n")
                                     << " found 1 of 8 samples; the rest is black";
        QTest::newRow("short_discreet.lut") << QByteArray("LUT: 3 2\n0\n255\n0\n255\n")
                                            << " found 4 of 6 samples; the rest is black";
        QTest::newRow("cut.look") << QByteArray("<a><LUT1D><size>1</size></LUT1D><b>")
                                  << "1: Premature end of document.";
        QTest::newRow("stops.cub") << QByteArray("# width 1 1 1\n# Cube\n0 0 0\n# oDims 2\n")
                                   << "4: found \"# oDims 2\", expected three dimensions";
    }
    void notesWhatReadersRemark() {
        QFETCH(QByteArray, content);
        QFETCH(QString, told);
        const QString file = m_folder.file(QTest::currentDataTag(), content);
        const Outcome outcome = run({"info", file});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.startsWith("tintwell-cli: " + file + ": note: "),
                 qPrintable(outcome.errors));
        QVERIFY2(outcome.errors.endsWith(told + '\n'), qPrintable(outcome.errors));
    }

    void infoReportsRanges_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("range");
        const QString shaper = "2\n0 1\n0 4\n";
        const QString curve = "CSPLUTV100\n1D\nBEGIN METADATA\nEND METADATA\n" + shaper + shaper +
                              shaper + "2\n0 0 0\n4 4 4\n";
        QTest::newRow("3dl") << data("sample.3dl") << "scale     0 to 1023";
        QTest::newRow("mga") << data("sample.mga") << "scale     0 to 4095";
        QTest::newRow("discreet") << data("sample_discreet.lut") << "scale     0 to 1023";
        QTest::newRow("csv") << data("sample.csv") << "scale     0 to 1023";
        QTest::newRow("cub") << data("sample.cub") << "scale     0 to 2";
        QTest::newRow("texture") << data("texture.png") << "scale     0 to 255";
        QTest::newRow("csp") << m_folder.file("curve.csp", curve.toUtf8()) << "domain    0 to 4";
    }
    void infoReportsRanges() {
        QFETCH(QString, file);
        QFETCH(QString, range);
        const QString output = run({"info", file}).output;
        QVERIFY2(output.contains("\n  " + range + '\n'), qPrintable(output));
    }

    void notesRanges() {
        const QString wide = m_folder.file("wide.cube", "DOMAIN_MIN -1 -1 -1\nDOMAIN_MAX 3 3 3\n"
                                                        "LUT_3D_SIZE 1\n1 1 1\n");
        const QString note = "wide.cube: note: samples are clamped to the domain -1 to 3";
        QVERIFY(run({"convert", wide, path("narrow.cube")}).errors.contains(note));
        QVERIFY(run({"merge", wide, cube(), path("merged.cube")}).errors.contains(note));
    }

    void resamples() {
        Read_LUTFile source(nullptr);
        fillSmooth(source, true, 9);
        QVERIFY(Write_LUTFile(nullptr).WriteFile(samples::request(path("nine.cube"), 0), source));
        QCOMPARE(run({"convert", path("nine.cube"), path("five.cube"), "--size", "5"}).status, 0);
        Read_LUTFile five(nullptr);
        read(path("five.cube"), 0, five);
        Read_LUTFile expected(nullptr);
        fillSmooth(expected, true, 5);
        QVERIFY(difference(five, expected) < 2e-6F);
    }

    void orders() {
        cube();
        const auto written = [this](const QStringList& options) {
            QStringList arguments = {"convert", "--force", path("look.cube"), path("o.cube")};
            const Outcome outcome = run(arguments + options);
            return outcome.status == 0 ? m_folder.content("o.cube").split('\n').mid(2, 8)
                                       : QByteArrayList{outcome.errors.toUtf8()};
        };
        const QByteArrayList plain = written({});
        QCOMPARE(plain[1], QByteArray("1.000000 0.000000 0.000000"));
        QCOMPARE(plain[7], QByteArray("1.000000 0.500000 0.250000"));
        const QByteArrayList bgr = written({"--out-order", "bgr"});
        QCOMPARE(bgr[1], QByteArray("0.000000 0.000000 1.000000"));
        QCOMPARE(written({"--in-order", "bgr"}), bgr);
        const QByteArrayList blueFastest = written({"--out-order", "blue-fastest"});
        QCOMPARE(blueFastest[1], plain[4]);
        QCOMPARE(blueFastest[6], plain[3]);
        QCOMPARE(written({"--in-order", "blue-fastest"}), blueFastest);
        QCOMPARE(written({"--in-order", "bgr,blue-fastest", "--out-order", "blue-fastest,bgr"}),
                 plain);
    }

    void ordersOfCurves() {
        const QString curve = m_folder.file(
            "order.spi1d", "From 0 1\nLength 2\nComponents 3\n{\n0 0.1 0.2\n0.8 0.9 1\n}\n");
        const auto entry = [&](const QString& option, const QString& order) {
            run({"convert", "--force", curve, path("o.nvx1d"), option, order});
            return m_folder.content("o.nvx1d").split('\n').value(2).trimmed();
        };
        QCOMPARE(entry("--in-order", "rgb"), QByteArray("0 0.1 0.2"));
        QCOMPARE(entry("--out-order", "red-fastest"), QByteArray("0 0.1 0.2"));
        QCOMPARE(entry("--in-order", "bgr"), QByteArray("0.2 0.1 0"));
        QCOMPARE(entry("--out-order", "bgr,blue-fastest"), QByteArray("0.2 0.1 0"));
    }

    void scales() {
        const auto lineOf = [this](const QString& file, const QString& scale) {
            run({"convert", "--force", cube(), path(file), "--scale", scale});
            return m_folder.content(file).trimmed().split('\n').last();
        };
        QCOMPARE(lineOf("o.mga", "1023").simplified(), QByteArray("7 1023 511 255"));
        QCOMPARE(lineOf("o.spi3d", "1023"), QByteArray("1 1 1 1.000000 0.500000 0.250000"));
        const Outcome outcome = run({"convert", "--force", cube(), path("o.itx"), "--scale", "9"});
        QCOMPARE(outcome.status, 0);
        QVERIFY(outcome.errors.contains("o.itx: note: --scale has no effect on itx"));

        for (const char* file : {"back.csv", "back.mga", "back_discreet.lut"}) {
            const QString to = QString(file).endsWith("lut") ? "discreet" : QString(file).right(3);
            QCOMPARE(run({"identity", path(file), "--to", to, "--scale", "4095"}).status, 0);
            const Outcome told = run({"info", "--json", path(file)});
            const QJsonArray files = QJsonDocument::fromJson(told.output.toUtf8()).array();
            const QJsonObject table = files[0].toObject()["tables"].toArray().first().toObject();
            QCOMPARE(table["max"].toArray(), QJsonArray({1, 1, 1}));
            QVERIFY(table["maxDeviation"].toDouble() < 1.01 / 4095);
        }
        const QString dim = m_folder.file("dim.nvx1d", "Length 2\n0 0 0\n0.4 0.4 0.4\n");
        QVERIFY(run({"convert", dim, path("dim.csv")}).errors.contains("the last value, 0.4, "));
        QVERIFY(run({"convert", "--to", "discreet", dim, path("dim.lut")})
                    .errors.contains("readers take the largest value, 0.4, as 1"));
    }

    void kindsAreCombined() {
        Read_LUTFile curves(nullptr);
        fillSmooth(curves, false, 50);
        LUTFILE_ST st = samples::request(path("curves.nvx1d"), 15);
        QVERIFY(Write_LUTFile(nullptr).WriteFile(st, curves));
        const Outcome expanded =
            run({"convert", path("curves.nvx1d"), path("lattice.spi3d"), "--size", "50"});
        QCOMPARE(expanded.status, 0);
        QVERIFY(expanded.errors.contains("note: the 1D table becomes a lattice of 50 points"));
        Read_LUTFile lattice(nullptr);
        read(path("lattice.spi3d"), 13, lattice);
        for (int i = 0; i < 50; ++i) {
            const float* const cell = lattice.data3D[i][49 - i][7];
            QVERIFY(std::fabs(cell[0] - curves.data1D[i][0]) < 2e-6F);
            QVERIFY(std::fabs(cell[1] - curves.data1D[49 - i][1]) < 2e-6F);
            QVERIFY(std::fabs(cell[2] - curves.data1D[7][2]) < 2e-6F);
        }
        const Outcome flat =
            run({"convert", path("lattice.spi3d"), path("grey.nvx1d"), "--size", "50"});
        QVERIFY(flat.errors.contains("note: only the grey axis of the 3D table is kept"));
        Read_LUTFile grey(nullptr);
        read(path("grey.nvx1d"), 15, grey);
        QVERIFY(difference(grey, curves) < 1e-5F);
    }

    /// From every format with a reader to every format of its kind with a writer, and back.
    void roundTrips_data() {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        for (int from = 0; from < formatCount; ++from) {
            for (int to = 0; to < formatCount; ++to) {
                if (tintwell::formatOf(to)->write != nullptr && is3D(from) == is3D(to)) {
                    QTest::addRow("%s to %s", qPrintable(nameOf(from)), qPrintable(nameOf(to)))
                        << from << to;
                }
            }
        }
    }
    void roundTrips() {
        QFETCH(int, from);
        QFETCH(int, to);
        const QString source = data(samples::sampleOf(from).file);
        const QString target = path("round");
        // Integers are rounded down, real numbers at the sixth digit.
        const auto integers = tintwell::formatOf(to)->traits.integers;
        const bool codes = integers == tintwell::IntegerSamples::Always;
        const Outcome outcome =
            run({"convert", "--force", "--from", nameOf(from), "--to", nameOf(to), source, target});
        QCOMPARE(outcome.status, 0);

        Read_LUTFile before(nullptr);
        read(source, from, before);
        Read_LUTFile after(nullptr);
        read(target, to, after);
        if (const int size = tintwell::formatOf(to)->fixedSize; size > 0) { // of any input
            Read_LUTFile resampled(nullptr);
            resampled.setSize1D(size);
            QVERIFY(resampled.allocate1D());
            std::fill_n(before.domainMin1D, 3, 0.0F);
            LutCalc().Lut1D_Out(before, resampled);
            QVERIFY(difference(resampled, after) < 2e-6F);
            return;
        }
        if (integers == tintwell::IntegerSamples::LargestIsFull) {
            float largest = 0;
            for (int n = 0; n < before.size1D; ++n) {
                largest = std::max(
                    {largest, before.data1D[n][0], before.data1D[n][1], before.data1D[n][2]});
            }
            for (int n = 0; n < before.size1D; ++n) {
                std::for_each_n(before.data1D[n], 3, [&](float& value) { value /= largest; });
            }
        }
        for (int n = 0; codes && n < before.size1D; ++n) {
            before.data1D[n][1] = before.data1D[n][2] = before.data1D[n][0];
        }
        QVERIFY2(difference(before, after) < (codes ? 1.6e-5F : 2e-6F),
                 qPrintable(QString::number(double(difference(before, after)))));
    }

    void identities_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("size");
        QTest::newRow("i.cube") << QStringList() << "33 x 33 x 33";
        QTest::newRow("i.spi3d") << QStringList{"--size", "5"} << "5 x 5 x 5";
        QTest::newRow("i.spi1d") << QStringList() << "1024 entries";
        QTest::newRow("i.lut") << QStringList{"--to", "7"} << "256 entries";
        QTest::newRow("i.csv") << QStringList{"--size", "4096", "--scale", "4095"}
                               << "4096 entries";
    }
    void identities() {
        QFETCH(QStringList, options);
        QFETCH(QString, size);
        const QString file = path(QTest::currentDataTag());
        QCOMPARE(run(QStringList{"identity", file} + options).status, 0);
        const QString told = run({"info", file}).output;
        QVERIFY2(told.contains("size      " + size) && told.contains("identity  yes"),
                 qPrintable(told));
    }

    void merges() {
        Read_LUTFile smoothLut(nullptr);
        fillSmooth(smoothLut, true, 5);
        const LUTFILE_ST st = samples::request(path("first.cube"), 0);
        QVERIFY(Write_LUTFile(nullptr).WriteFile(st, smoothLut));
        QCOMPARE(run({"merge", path("first.cube"), cube(), path("both.spi3d")}).status, 0);
        Read_LUTFile merged(nullptr);
        read(path("both.spi3d"), 13, merged);
        Read_LUTFile second(nullptr);
        read(cube(), 0, second);
        Read_LUTFile expected(nullptr);
        expected.size3D = 5;
        QVERIFY(expected.allocate3D());
        LutCalc().Lut3D_Merge(smoothLut, second, expected);
        QVERIFY(difference(merged, expected) < 5e-6F);
    }

    /// Two tables, the second of which undoes the first, whatever their kinds and lengths.
    void mergesCurves_data() {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QString>("size");
        QTest::newRow("two curves to a lattice") << "bend.spi1d"
                                                 << "unbend.spi1d"
                                                 << "both.cube"
                                                 << "33 x 33 x 33";
        QTest::newRow("two curves to a curve") << "bend.spi1d"
                                               << "unbend.spi1d"
                                               << "both.nvx1d"
                                               << "1301 entries";
        QTest::newRow("a curve after a lattice") << "bend.cube"
                                                 << "unbend.spi1d"
                                                 << "both.cube"
                                                 << "65 x 65 x 65";
        QTest::newRow("a curve before a lattice") << "unbend.spi1d"
                                                  << "bend.cube"
                                                  << "both.cube"
                                                  << "65 x 65 x 65";
    }
    void mergesCurves() {
        // Straight segments, with corners at 1/4 and 1/2 of the way and at points of the lattice.
        const auto curve = [this](const char* name, int size, const auto& value) {
            Read_LUTFile lut(nullptr);
            samples::fill1D(lut, size, [&](int n) {
                const float y = value(float(n) / float(size - 1));
                return QVector<float>{y, y, y};
            });
            const LUTFILE_ST st = samples::request(path(name), 12);
            QVERIFY(Write_LUTFile(nullptr).WriteFile(st, lut));
        };
        curve("bend.spi1d", 1001, [](float x) { return x < 0.25F ? 2 * x : (1 + 2 * x) / 3; });
        curve("unbend.spi1d", 1301, [](float x) { return x < 0.5F ? x / 2 : (3 * x - 1) / 2; });
        const QStringList lattice = {"convert", "--force",          "--size",
                                     "65",      path("bend.spi1d"), path("bend.cube")};
        QCOMPARE(run(lattice).status, 0);

        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(QString, result);
        QCOMPARE(run({"merge", "--force", path(first), path(second), path(result)}).status, 0);
        const QString told = run({"info", path(result)}).output;
        QVERIFY2(told.contains("identity  yes"), qPrintable(told));
        QTEST(told.section("size      ", 1).section('\n', 0, 0), "size");
    }

    void batches() {
        for (int n = 0; n < 6; ++n) {
            QFile::copy(data("sample.cube"), path(QString("batch%1.cube").arg(n)));
        }
        m_folder.file("batch3.cube", "LUT_3D_SIZE 2\n0 0 0\n");
        QStringList inputs;
        for (int n = 0; n < 6; ++n) {
            inputs += path(QString("batch%1.cube").arg(n));
        }
        const QStringList options = {"convert",         "--to",   "spi3d", "--output-directory",
                                     path("batch/out"), "--jobs", "4"};
        const Outcome outcome = run(options + inputs);
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.errors,
                 QString("tintwell-cli: %1:2: the file ends after 1 samples, expected 8\n"
                         "tintwell-cli: 1 of 6 files failed\n")
                     .arg(inputs[3]));
        QVERIFY(outcome.output.isEmpty());
        QCOMPARE(entries("batch/out"), QStringList({"batch0.spi3d", "batch1.spi3d", "batch2.spi3d",
                                                    "batch4.spi3d", "batch5.spi3d"}));

        QDir(path("")).mkpath("other");
        QFile::copy(data("sample.cube"), path("other/batch0.cube"));
        const Outcome twice = run({"convert", "--force", "--to", "spi3d", "--output-directory",
                                   path("batch/out"), inputs[0], path("other/batch0.cube")});
        QCOMPARE(twice.status, 1);
        QVERIFY(twice.errors.contains("another input is already written to batch0.spi3d"));
    }

    void writesToStandardOutput_data() {
        QTest::addColumn<QString>("out");
        QTest::newRow("dash") << "-";
        QTest::newRow("device") << "/dev/stdout";
    }
    void writesToStandardOutput() {
        QFETCH(QString, out);
        const Outcome outcome = run({"convert", "--to", "cube", cube(), out});
        QVERIFY(outcome.errors.isEmpty());
        QVERIFY(outcome.output.contains("LUT_3D_SIZE 2\n"));
        QCOMPARE(outcome.status, 0);
    }

    void printsToFullDisks_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("formats") << QStringList{"formats"};
        QTest::newRow("help") << QStringList{"--help"};
        QTest::newRow("help of a command") << QStringList{"info", "--help"};
        QTest::newRow("version") << QStringList{"--version"};
    }
    void printsToFullDisks() {
        QFETCH(QStringList, arguments);
        samples::PreparedProcess process;
        process.setStandardOutputFile("/dev/full");
        const Outcome outcome = samples::finish(process, arguments);
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.errors,
                 QString("tintwell-cli: standard output: not written: No space left on device\n"));
    }

    void namesMoveNoCursor() {
        const QString name = QString::fromUtf8("a\n\033[2J\u202Eb.cube");
        const QString shown = "a\\u000a\\u001b[2J\\u202eb.cube";
        QCOMPARE(run({"info", path(name)}).errors,
                 QString("tintwell-cli: %1: No such file or directory\n").arg(path(shown)));
        m_folder.file(name, "LUT_3D_SIZE 1\n0 0 0\n");
        QCOMPARE(run({"info", path(name)}).output.split('\n').first(), path(shown));
        const QString json = run({"info", "--json", path(name)}).output;
        QVERIFY(!json.contains(QChar(0x202E)));
        QCOMPARE(QJsonDocument::fromJson(json.toUtf8())[0]["path"].toString(), path(name));
    }

    void tracesWhenAsked() {
        samples::PreparedProcess process;
        QProcessEnvironment plain = QProcessEnvironment::systemEnvironment();
        plain.remove("QT_LOGGING_RULES");
        process.setProcessEnvironment(plain);
        QVERIFY(samples::finish(process, {"info", "--verbose", data("sample.cube")})
                    .errors.contains("file:-----"));
        QVERIFY(samples::finish(process, {"info", data("sample.cube")}).errors.isEmpty());
    }

    void namesAreUtf8InEveryLocale() {
        const QString name = path(QString::fromUtf8("dämmerung.cube"));
        samples::PreparedProcess process;
        QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
        bare.insert("LC_ALL", "C");
        process.setProcessEnvironment(bare);
        QCOMPARE(samples::finish(process, {"identity", "--size", "2", name}).status, 0);
        QVERIFY(QFile::exists(name));
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"

#include "program.h"

#include "calc/lutcalc.h"

#include <QStandardPaths>

#include <array>
#include <cmath>

// What another program makes of this one's files, and the other way round. Skipped if its tools
// (Debian's opencolorio-tools) are not installed.

using samples::run;

namespace {

constexpr int Skipped = 77;
constexpr int Points = 17; ///< per axis, of every lattice here

QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    const bool ended = process.waitForFinished() && process.exitCode() == 0;
    return ended ? process.readAllStandardOutput() : process.readAllStandardError();
}

/// The tools' result for a colour: the last three words of their output.
std::array<float, 3> colourByTools(const QString& file, const float* in) {
    QStringList arguments{file};
    for (int c = 0; c < 3; ++c) {
        arguments += QString::number(double(in[c]), 'f', 7);
    }
    const QByteArrayList words = outputOf("ociochecklut", arguments).simplified().split(' ');
    std::array<float, 3> out = {NAN, NAN, NAN};
    for (int c = 0; c < 3 && words.size() >= 3; ++c) {
        out[std::size_t(c)] = words[words.size() - 3 + c].toFloat();
    }
    return out;
}

QString triple(const float* values) {
    return QString("%1 %2 %3").arg(values[0]).arg(values[1]).arg(values[2]);
}

float distance(const std::array<float, 3>& a, const float* b) {
    float largest = 0;
    for (std::size_t c = 0; c < 3; ++c) {
        const float apart = std::fabs(a[c] - b[c]);
        largest = apart <= largest ? largest : apart; // NaN is a large distance
    }
    return largest;
}

} // namespace

class TestOpenColorIO : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    QString convertedExample(const QString& name, const QStringList& options) {
        const QString file = m_folder.path(name);
        const QStringList command{"convert", "--force", TINTWELL_SOURCE "/examples/dusk.cube",
                                  file};
        return run(command + options).status == 0 ? file : QString();
    }

private Q_SLOTS:
    void readsWhatIsWritten_data() {
        QTest::addColumn<int>("code");
        QTest::newRow("cube") << 0;
        QTest::newRow("itx") << 11;
        QTest::newRow("spi3d") << 13;
        QTest::newRow("spi1d") << 12;
    }
    void readsWhatIsWritten() {
        QFETCH(int, code);
        const QString size = Read_LUTFile::formatIs3D(code) ? QString::number(Points) : "1025";
        const QString file =
            convertedExample(QString("ours.%1").arg(QTest::currentDataTag()), {"--size", size});
        Read_LUTFile lut(nullptr);
        LUTFILE_ST st = samples::request(file, code);
        st.defaultOrder = Read_LUTFile::formatIs3D(code);
        QVERIFY(lut.ReadFile(st, false));
        for (int n = 0; n < 40; ++n) { // at lattice points, where the interpolation is irrelevant
            const float in[] = {float(n * 7 % Points) / (Points - 1),
                                float(n * 5 % Points) / (Points - 1),
                                float(n * 11 % Points) / (Points - 1)};
            float ours[3];
            if (Read_LUTFile::formatIs3D(code)) {
                LutCalc().Lut3D_Tetrahedral(in, ours, lut);
            } else {
                LutCalc().Lut1D_liner(in, ours, lut);
            }
            const auto theirs = colourByTools(file, in);
            QVERIFY2(
                distance(theirs, ours) < 1e-5F,
                qPrintable(triple(in) + ": " + triple(theirs.data()) + ", here " + triple(ours)));
        }
    }

    void bakesWhatIsRead_data() {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<float>("tolerance");
        const float reals = 1e-5F;
        const float twelveBits = 0.6F / 4095;
        QTest::newRow("iridas_cube") << "cube" << reals;
        QTest::newRow("resolve_cube") << "cube" << reals;
        QTest::newRow("iridas_itx") << "itx" << reals;
        QTest::newRow("cinespace") << "csp" << reals;
        QTest::newRow("truelight") << "cub" << reals;
        QTest::newRow("flame") << "3dl" << twelveBits;
        QTest::newRow("lustre") << "3dl" << twelveBits;
    }
    void bakesWhatIsRead() {
        QFETCH(QString, extension);
        QFETCH(float, tolerance);
        const QString source = convertedExample("source.cube", {"--size", QString::number(Points)});
        const QString baked = m_folder.path("baked." + extension);
        outputOf("ociobakelut", {"--lut", source, "--cubesize", QString::number(Points), "--format",
                                 QTest::currentDataTag(), baked});
        const QString back = m_folder.path("back.spi3d");
        QCOMPARE(run({"convert", "--force", baked, back}).status, 0);

        Read_LUTFile expected(nullptr);
        QVERIFY(expected.ReadFile(samples::request(source, 0), false));
        Read_LUTFile found(nullptr);
        QVERIFY(found.ReadFile(samples::request(back, 13), false));
        QCOMPARE(found.size3D, Points);
        for (int n = 0; n < Points * Points * Points; ++n) {
            const int i = n / (Points * Points);
            const int j = n / Points % Points;
            const float* const cell = found.data3D[i][j][n % Points];
            QVERIFY(distance({cell[0], cell[1], cell[2]}, expected.data3D[i][j][n % Points]) <
                    tolerance);
        }
    }
};

int main(int argc, char* argv[]) {
    if (QStandardPaths::findExecutable("ociobakelut").isEmpty() ||
        QStandardPaths::findExecutable("ociochecklut").isEmpty()) {
        return Skipped;
    }
    QCoreApplication app(argc, argv);
    TestOpenColorIO test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_opencolorio.moc"

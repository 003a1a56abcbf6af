#include "program.h"

#include "calc/lutcalc.h"

#include <QStandardPaths>

#include <cmath>

// What another program makes of this one's files, and the other way round. Skipped if its tools
// (Debian's opencolorio-tools) are not installed.

namespace {

constexpr int Skipped = 77;
constexpr int Points = 17; ///< per axis, of every lattice here

} // namespace

class TestOpenColorIO : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    void convert(const QString& arguments) const {
        const samples::Outcome outcome = samples::Program(m_folder).run("convert " + arguments);
        QVERIFY2(outcome.status == 0, qPrintable(outcome.errors));
    }

    QByteArray outputOf(const QString& program, const QString& arguments) const {
        QProcess process;
        process.setWorkingDirectory(m_folder.path(""));
        process.start(program, arguments.split(' '));
        const bool ended = process.waitForFinished() && process.exitCode() == 0;
        return ended ? process.readAllStandardOutput() : process.readAllStandardError();
    }

private Q_SLOTS:
    void initTestCase() { convert(TINTWELL_SOURCE "/examples/dusk.cube source.cube --size 17"); }

    void readsWhatIsWritten() {
        for (const QString file : {"o.cube", "o.itx", "o.spi3d", "o.spi1d"}) {
            const bool curves = file.endsWith("1d");
            convert("source.cube " + file + (curves ? " --size 1025" : ""));
            Read_LUTFile lut(nullptr);
            samples::read(m_folder.path(curves ? file : "source.cube"), curves ? 12 : 0, lut);
            for (int n = 0; n < 40; ++n) { // at lattice points: the interpolation is irrelevant
                float in[3];
                float ours[3];
                QString command = file;
                for (int c = 0; c < 3; ++c) {
                    in[c] = float(n * (7 - 2 * c) % Points) / (Points - 1);
                    command += ' ' + QString::number(double(in[c]), 'f', 7);
                }
                if (curves) {
                    LutCalc().Lut1D_liner(in, ours, lut);
                } else {
                    LutCalc().Lut3D_Tetrahedral(in, ours, lut);
                }
                const QByteArray told = outputOf("ociochecklut", command);
                const QByteArrayList words = told.simplified().split(' '); // ends with the result
                for (int c = 0; c < 3; ++c) {
                    const float theirs = words.value(words.size() - 3 + c, "nan").toFloat();
                    QVERIFY2(std::fabs(theirs - ours[c]) < 1e-5F, command.toUtf8() + ": " + told);
                }
            }
        }
    }

    void bakesWhatIsRead() {
        Read_LUTFile expected(nullptr);
        samples::read(m_folder.path("source.cube"), 0, expected);
        for (const QString target :
             {"iridas_cube i.cube", "resolve_cube r.cube", "iridas_itx i.itx", "cinespace c.csp",
              "truelight t.cub", "flame f.3dl", "lustre l.3dl"}) {
            outputOf("ociobakelut", "--lut source.cube --cubesize 17 --format " + target);
            convert(target.section(' ', 1) + " back.spi3d --force");
            Read_LUTFile found(nullptr);
            samples::read(m_folder.path("back.spi3d"), 13, found);
            const float tolerance = target.endsWith("3dl") ? 0.6F / 4095 : 1e-5F; // 12 bits
            QVERIFY2(samples::agree(found, expected, tolerance), qPrintable(target));
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

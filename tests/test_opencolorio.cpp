#include "program.h"

#include <QStandardPaths>

#include <cmath>

// What another program makes of this one's files, and the other way round. Skipped if its tools
// (Debian's opencolorio-tools) are not installed.

constexpr int Skipped = 77;

class TestOpenColorIO : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    void convert(const QString& arguments) const {
        const samples::Outcome outcome = samples::Program(m_folder).run("convert " + arguments);
        QVERIFY2(outcome.status == 0, qPrintable(outcome.errors));
    }

private Q_SLOTS:
    /// The other program reads a file of ours and makes one of its own of it.
    void readEachOther() {
        convert(TINTWELL_SOURCE "/examples/dusk.cube source.cube --size 17");
        convert("source.cube ours.itx");
        convert("source.cube ours.spi3d");
        convert("source.cube ours.spi1d --size 1025");
        const char* const rows[][3] = {
            {"source.cube", "iridas_cube", "i.cube"}, {"source.cube", "resolve_cube", "r.cube"},
            {"ours.itx", "iridas_itx", "i.itx"},      {"ours.spi3d", "cinespace", "c.csp"},
            {"ours.spi3d", "truelight", "t.cub"},     {"ours.spi1d", "iridas_cube", "c.cube"},
            {"source.cube", "flame", "f.3dl"},        {"source.cube", "lustre", "l.3dl"}};
        for (const auto& [ours, format, theirs] : rows) {
            QProcess bake;
            bake.setWorkingDirectory(m_folder.path(""));
            bake.start("ociobakelut",
                       {"--lut", ours, "--cubesize", "17", "--format", format, theirs});
            QVERIFY(bake.waitForFinished());
            QVERIFY2(bake.exitCode() == 0, bake.readAllStandardError());
            convert(QString("--force %1 theirs.spi3d").arg(theirs));
            convert(QString("--force %1 same.spi3d --size 17").arg(ours));
            Read_LUTFile expected(nullptr);
            samples::read(m_folder.path("same.spi3d"), 13, expected);
            Read_LUTFile found(nullptr);
            samples::read(m_folder.path("theirs.spi3d"), 13, found);
            const bool twelveBits = QString(theirs).endsWith("3dl");
            QCOMPARE(found.size3D, 17);
            float apart = 0;
            for (int n = 0; n < 3 * 17 * 17 * 17; ++n) {
                const int at[] = {n / 867, n / 51 % 17, n / 3 % 17};
                const auto of = [&](auto& lut) { return lut.data3D[at[0]][at[1]][at[2]][n % 3]; };
                apart = std::max(apart, std::fabs(of(found) - of(expected)));
            }
            QVERIFY2(apart <= (twelveBits ? 0.6F / 4095 : 1e-5F), format);
        }
    }
};

int main(int argc, char* argv[]) {
    if (QStandardPaths::findExecutable("ociobakelut").isEmpty()) {
        return Skipped;
    }
    QCoreApplication app(argc, argv);
    TestOpenColorIO test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_opencolorio.moc"

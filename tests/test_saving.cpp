#include "program.h"

#include <QDir>
#include <QImage>

#include <cerrno>
#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

// What the command-line program leaves behind when the system refuses something: the old file or
// the whole new one, a message, and an exit status to match.

using samples::Outcome;
using samples::run;

using Fault = QMap<QString, QString>; ///< the environment of faults.cpp
Q_DECLARE_METATYPE(Fault)

class TestSaving : public QObject {
    Q_OBJECT

    samples::Folder m_folder;
    const QString m_target = path("disk/big.cube");
    const QStringList m_write = {"identity", "--force", "--size", "33", m_target};

    QString path(const QString& name) const { return m_folder.path(name); }

    QStringList entries(const QString& folder = "disk") const {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QByteArray saved() const { return m_folder.content("disk/big.cube"); }

    static bool isWhole(const QByteArray& cube) {
        return cube.startsWith("TITLE \nLUT_3D_SIZE 33\n") && cube.endsWith(" 1.000000\n") &&
               cube.count('\n') == 33 * 33 * 33 + 2;
    }

    static QProcessEnvironment environmentWith(const Fault& fault) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LD_PRELOAD", TINTWELL_FAULTS);
        environment.insert("ASAN_OPTIONS",
                           environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0");
        for (auto setting = fault.cbegin(); setting != fault.cend(); ++setting) {
            environment.insert(setting.key(), setting.value());
        }
        return environment;
    }

    static Outcome runWith(const Fault& fault, const QStringList& arguments) {
        samples::PreparedProcess process;
        process.setProcessEnvironment(environmentWith(fault));
        return samples::finish(process, arguments);
    }

    static Fault failing(const char* call, int error, const QString& path = "/disk",
                         int after = 0) {
        return {{"FAULT", call},
                {"FAULT_PATH", path},
                {"FAULT_AFTER", QString::number(after)},
                {"FAULT_ERRNO", QString::number(error)}};
    }

    static Fault interrupted(const char* call, int signal) {
        return {
            {"FAULT", call}, {"FAULT_PATH", "/disk"}, {"FAULT_SIGNAL", QString::number(signal)}};
    }

private Q_SLOTS:
    void initTestCase() { QCOMPARE(run({"identity", "--size", "33", path("in.cube")}).status, 0); }

    void init() {
        QDir(path("disk")).removeRecursively();
        QDir(path("")).mkpath("disk");
        m_folder.file("disk/big.cube", "old");
    }

    void faults_data() {
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<QString>("arguments"); // % stands for the folder, @ for the output
        QTest::addColumn<QString>("message");
        m_folder.file("in.look", "<look><LUT><size>2</size><data>" + QByteArray(192, '0') +
                                     "</data></LUT></look>");
        QImage noise(64, 64, QImage::Format_RGB32);
        for (int n = 0; n < 64 * 64; ++n) {
            noise.setPixel(n / 64, n % 64, QRgb(n * n) * 2654435761U);
        }
        QVERIFY(noise.save(path("in.png")));

        const auto row = [](const char* name, const Fault& fault, const char* arguments,
                            const char* message) {
            QTest::newRow(name) << fault << arguments << message;
        };
        const QString pipe = "pipe:";
        row("write", failing("write", ENOSPC, "/disk", 300'000), "convert --force %/in.cube @",
            "@: not written: No space left on device");
        row("write of an image", failing("write", ENOSPC, "/disk", 3000),
            "apply --force %/in.cube %/in.png %/disk/o.png",
            "%/disk/o.png: not written: No space left on device");
        row("sync", failing("fsync", EIO), "convert --force %/in.cube @",
            "@: not written: Input/output error");
        row("close", failing("close", EDQUOT), "convert --force %/in.cube @",
            "@: not written: Disk quota exceeded");
        row("write to a pipe", failing("write", ENOSPC, pipe, 99'999),
            "convert --to spi3d %/in.cube -", "-: not written: No space left on device");
        row("close of a pipe", failing("close", EDQUOT, pipe), "convert --to spi3d %/in.cube -",
            "-: not written: Disk quota exceeded");
        row("close after printing", failing("close", EDQUOT, pipe), "info %/in.cube",
            "standard output: not written: Disk quota exceeded");
        row("read", failing("read", EIO, "in.cube", 300'000), "convert --force %/in.cube @",
            "%/in.cube: Input/output error");
        row("read of XML", failing("read", EIO, "in.look", 100), "convert --force %/in.look @",
            "%/in.look: Input/output error");
        row("read of an image", failing("read", EIO, "in.png", 9000),
            "apply --force %/in.cube %/in.png %/disk/o.png", "%/in.png: ");
        row("read of a table in an image", failing("read", EIO, "in.png", 9000),
            "convert --force --from texture %/in.png @", "%/in.png: ");
        row("no thread", failing("thread", EAGAIN, ""), "convert --force --from texture %/in.png @",
            "%/in.png: cannot start the thread that images need");
    }
    void faults() {
        QFETCH(Fault, fault);
        QFETCH(QString, arguments);
        QFETCH(QString, message);
        const auto expanded = [this](QString text) {
            return text.replace('%', path("")).replace("@", m_target);
        };
        const Outcome outcome = runWith(fault, expanded(arguments).split(' '));
        QVERIFY2(outcome.errors.contains("tintwell-cli: " + expanded(message)),
                 qPrintable(outcome.errors));
        QCOMPARE(outcome.status, 1);
        QCOMPARE(saved(), QByteArray("old"));
        QCOMPARE(entries(), QStringList("big.cube"));
    }

    /// Fallbacks for what file systems and folders do not allow.
    void savesByOtherMeans_data() {
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<bool>("inPlace");
        const Fault named = {{"FAULT_NO_TMPFILE", "1"}};
        QTest::newRow("everything allowed") << Fault() << false;
        QTest::newRow("no files without a name") << named << false;
        QTest::newRow("no new file in the folder") << failing("create", EACCES) << true;
        QTest::newRow("mounted file") << failing("rename", EBUSY) << true;
    }
    void savesByOtherMeans() {
        QFETCH(Fault, fault);
        QFETCH(bool, inPlace);
        m_folder.file("disk/big.cube", QByteArray(3'000'000, '#')); // to be shortened in place
        struct stat before {};
        struct stat after {};
        const uid_t owner = getuid() == 0 ? 4321 : getuid();
        QCOMPARE(chown(qPrintable(m_target), owner, static_cast<gid_t>(-1)), 0);
        QCOMPARE(chmod(qPrintable(m_target), 04640), 0);
        QCOMPARE(stat(qPrintable(m_target), &before), 0);
        QVERIFY(QFile::link(m_target, path("disk/link.cube")));
        const Outcome outcome =
            runWith(fault, {"convert", "--force", path("in.cube"), path("disk/link.cube")});
        QCOMPARE(outcome.errors, QString());
        QCOMPARE(outcome.status, 0);
        QVERIFY(isWhole(saved()));
        QCOMPARE(entries(), QStringList({"big.cube", "link.cube"}));
        QVERIFY(QFileInfo(path("disk/link.cube")).isSymLink());
        QCOMPARE(stat(qPrintable(m_target), &after), 0);
        QCOMPARE(after.st_ino == before.st_ino, inPlace);
        QCOMPARE(after.st_uid, owner);
        QCOMPARE(after.st_mode & 0777U, 0640U);
    }

    void replacesOnlyWhenAsked() {
        QCOMPARE(run({"identity", m_target}).errors,
                 "tintwell-cli: " + m_target + ": exists already (--force replaces it)\n");
        QCOMPARE(saved(), QByteArray("old"));
        QCOMPARE(run({"convert", path("in.cube"), path("disk/new.cube")}).status, 0);
        QVERIFY(isWhole(m_folder.content("disk/new.cube")));
        QCOMPARE(
            run({"convert", "--force", "--size", "2", path("disk/new.cube"), path("disk/new.cube")})
                .status,
            0);
        QVERIFY(m_folder.content("disk/new.cube").contains("LUT_3D_SIZE 2"));
    }

    void signalsLeaveNothing_data() {
        QTest::addColumn<int>("signal");
        QTest::addColumn<QString>("call");
        QTest::newRow("interrupt") << SIGINT << "rename";
        QTest::newRow("terminate") << SIGTERM << "write";
        QTest::newRow("hang up") << SIGHUP << "write";
    }
    void signalsLeaveNothing() {
        QFETCH(int, signal);
        QFETCH(QString, call);
        Fault fault = interrupted(qPrintable(call), signal);
        fault.insert("FAULT_NO_TMPFILE", "1");
        samples::PreparedProcess process;
        process.setProcessEnvironment(environmentWith(fault));
        QCOMPARE(samples::finish(process, m_write).status, -1);
        QCOMPARE(process.exitCode(), signal);
        QCOMPARE(saved(), QByteArray("old"));
        QCOMPARE(entries(), QStringList("big.cube"));
    }

    void clearsLeftOversOfDeadProcessesOnly() {
        const QString own = m_folder.file("disk/.tintwell-settings", "mine");
        runWith(interrupted("rename", SIGKILL), m_write);
        QCOMPARE(entries().size(), 3);

        samples::PreparedProcess stopped;
        stopped.setProcessEnvironment(environmentWith(interrupted("rename", SIGSTOP)));
        stopped.start(TINTWELL_CLI, m_write);
        const QString live = QString("disk/.tintwell-%1-0").arg(stopped.processId());
        QTRY_VERIFY(QFile::exists(path(live)));
        QCOMPARE(run({"identity", "--size", "2", path("disk/other.cube")}).status, 0);
        QCOMPARE(entries().size(), 4); // the dead program's file is gone
        QVERIFY(QFile::exists(path(live)));

        QTRY_COMPARE(kill(pid_t(stopped.processId()), SIGCONT), 0);
        QVERIFY(stopped.waitForFinished());
        QCOMPARE(stopped.exitCode(), 0);
        QVERIFY(isWhole(saved()));
        QVERIFY(QFile::exists(own));
    }

    void smallDisks_data() {
        QTest::addColumn<QString>("limit");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("message");
        for (const char* limit :
             {"mount -t tmpfs -o size=8k tmpfs .", "trap '' XFSZ; ulimit -f 8"}) {
            const auto row = [limit](const char* what, const char* arguments, const char* told) {
                QTest::addRow("%.5s: %s", limit, what) << limit << arguments << told;
            };
            row("file", "identity --force big.cube", "big.cube: not written: ");
            row("standard output", "identity --to cube --size 9 -", "-: not written: ");
            row("printing", "formats --json", "standard output: not written: ");
        }
    }
    void smallDisks() {
        QFETCH(QString, limit);
        QFETCH(QString, arguments);
        QFETCH(QString, message);
        QStringList shell = {"sh", "-c"};
        if (limit.startsWith("mount")) {
            const auto mounts = [this](const char* rights) {
                return QProcess::execute(
                           "unshare", {rights, "mount", "-t", "tmpfs", "tmpfs", path("disk")}) == 0;
            };
            const char* const rights = mounts("-Urm") ? "-Urm" : "-m";
            if (!mounts(rights)) {
                QSKIP("no file system of a limited size can be mounted here");
            }
            shell = QStringList{"unshare", rights} + shell;
        }
        const QString script = limit + "; cd \"$PWD\"; printf old >big.cube; " TINTWELL_CLI " " +
                               arguments +
                               " >out; status=$?; cat big.cube; echo; ls -A; exit $status";
        QProcess process;
        process.setWorkingDirectory(path("disk"));
        const QString program = shell.takeFirst();
        process.start(program, shell + QStringList{script});
        QVERIFY(process.waitForFinished());
        const QString errors = process.readAllStandardError();
        QVERIFY2(errors.startsWith("tintwell-cli: " + message), qPrintable(errors));
        QCOMPARE(process.readAllStandardOutput(), QByteArray("old\nbig.cube\nout\n"));
        QCOMPARE(process.exitCode(), 1);
    }

    void batches_data() {
        QTest::addColumn<bool>("closed"); // the descriptors 0 to 2
        QTest::addColumn<Fault>("fault");
        QTest::newRow("descriptors missing") << true << Fault();
        QTest::newRow("no thread starts") << false << failing("thread", EAGAIN, "");
    }
    void batches() {
        QFETCH(bool, closed);
        QFETCH(Fault, fault);
        QStringList command = {"convert",        "--to",   "nvx3d", "--output-directory",
                               path("disk/out"), "--jobs", "4"};
        for (int n = 0; n < 8; ++n) { // each gives a note
            command += m_folder.file(QString("disk/in%1.cube").arg(n),
                                     "DOMAIN_MAX 2 2 2\nLUT_3D_SIZE 1\n2 2 2\n");
        }
        samples::PreparedProcess process;
        process.setProcessEnvironment(environmentWith(fault));
        process.inChild = [closed] {
            for (int descriptor = 0; closed && descriptor < 3; ++descriptor) {
                close(descriptor);
            }
        };
        QCOMPARE(samples::finish(process, command).status, 0);
        QCOMPARE(entries("disk/out").size(), 8);
        for (const QString& name : entries("disk/out")) {
            QVERIFY(m_folder.content("disk/out/" + name).startsWith("From 0.0 1.0\nLength 1\n"));
        }
    }

    void scarceMemoryEndsWithAMessage() {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer needs more memory than is left");
#endif
        constexpr int notLoaded = 127; // the dynamic loader gave up
        QStringList command = {"convert",        "--force", "--to", "spi3d", "--output-directory",
                               path("disk/out"), "--jobs",  "3",    m_target};
        for (const char* name : {"disk/1.cube", "disk/2.cube", "disk/3.cube"}) {
            QVERIFY(QFile::copy(path("in.cube"), path(name)));
            command += path(name);
        }
        int failures = 0;
        for (rlim_t mebibytes = 60; mebibytes < 120; mebibytes += 3) {
            samples::PreparedProcess process;
            process.inChild = [mebibytes] {
                const rlimit little = {mebibytes << 20U, mebibytes << 20U};
                setrlimit(RLIMIT_AS, &little);
            };
            const Outcome outcome = samples::finish(process, command);
            const bool failed = outcome.status == 1 && outcome.errors.startsWith("tintwell-cli: ");
            QVERIFY2(failed || outcome.status == 0 || outcome.status == notLoaded,
                     qPrintable(outcome.errors));
            failures += failed ? 1 : 0;
        }
        QVERIFY(failures > 0);
    }
};

QTEST_GUILESS_MAIN(TestSaving)
#include "test_saving.moc"

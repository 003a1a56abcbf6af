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

namespace {

/// What goes wrong; see faults.cpp.
struct Fault {
    const char* call = "nothing";
    int error = 0;
    const char* path = "/disk";
    int after = 0;
    int signal = 0;
    bool named = false;
};

struct Program : samples::Program {
    explicit Program(const samples::Folder& folder, const Fault& fault = {})
        : samples::Program(folder) {
        environment.insert("LD_PRELOAD", TINTWELL_FAULTS);
        environment.insert("ASAN_OPTIONS",
                           environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0");
        environment.insert("FAULT", QString("%1 %2 %3 %4 %5 %6")
                                        .arg(fault.call, fault.path)
                                        .arg(fault.after)
                                        .arg(fault.error)
                                        .arg(fault.signal)
                                        .arg(int(fault.named)));
    }
};

struct Failure {
    const char* line;
    Fault fault;
    const char* message;
};

constexpr Failure failures[] = {
    {"convert --force in.cube disk/big.cube",
     {"write", ENOSPC, "/disk", 300'000},
     "disk/big.cube: not written: No space left on device"},
    {"apply --force in.cube in.png disk/o.png",
     {"write", ENOSPC, "/disk", 3000},
     "disk/o.png: not written: No space left on device"},
    {"convert --force in.cube disk/big.cube",
     {"fsync", EIO},
     "disk/big.cube: not written: Input/output error"},
    {"convert --force in.cube disk/big.cube",
     {"close", EDQUOT},
     "disk/big.cube: not written: Disk quota exceeded"},
    {"convert --to spi3d in.cube -",
     {"write", ENOSPC, "pipe:", 99'999},
     "-: not written: No space left on device"},
    {"convert --to spi3d in.cube -",
     {"close", EDQUOT, "pipe:"},
     "-: not written: Disk quota exceeded"},
    {"info in.cube",
     {"close", EDQUOT, "pipe:"},
     "standard output: not written: Disk quota exceeded"},
    {"convert --force in.cube disk/big.cube",
     {"read", EIO, "in.cube", 300'000},
     "in.cube: Input/output error"},
    {"convert --force in.look disk/big.cube",
     {"read", EIO, "in.look", 100},
     "in.look: Input/output error"},
    {"apply --force in.cube in.png disk/o.png", {"read", EIO, "in.png", 9000}, "in.png: "},
    {"convert --force --from texture in.png disk/big.cube",
     {"read", EIO, "in.png", 9000},
     "in.png: "},
    {"convert --force --from texture in.png disk/big.cube",
     {"thread", EAGAIN, "/"},
     "in.png: cannot start the thread that images need"},
    {"apply --force in.cube in.png disk/o.png",
     {"thread", EAGAIN, "/"},
     "in.png: cannot start the thread that images need"},
};

} // namespace

class TestSaving : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    Outcome run(const QString& line, const Fault& fault = {}) const {
        return Program(m_folder, fault).run(line);
    }

    QStringList entries(const QString& folder = "disk") const {
        return QDir(m_folder.path(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    bool isWhole(const QString& name = "disk/big.cube") const {
        return m_folder.content(name) == m_folder.content("in.cube");
    }

    void expectOldFile() const {
        QCOMPARE(m_folder.content("disk/big.cube"), QByteArray("old"));
        QCOMPARE(entries(), QStringList("big.cube"));
    }

private Q_SLOTS:
    void initTestCase() {
        QCOMPARE(run("identity --size 33 in.cube").status, 0);
        m_folder.file("in.look", "<look><LUT><size>2</size><data>" + QByteArray(192, '0') +
                                     "</data></LUT></look>");
        QImage noise(64, 64, QImage::Format_RGB32);
        for (int n = 0; n < 64 * 64; ++n) {
            noise.setPixel(n / 64, n % 64, QRgb(n * n) * 2654435761U);
        }
        QVERIFY(noise.save(m_folder.path("in.png")));
    }

    void init() {
        QDir(m_folder.path("disk")).removeRecursively();
        QDir(m_folder.path("")).mkpath("disk");
        m_folder.file("disk/big.cube", "old");
    }

    void faults_data() {
        QTest::addColumn<int>("row");
        for (int n = 0; n < int(std::size(failures)); ++n) {
            QTest::addRow("%s: %s", failures[n].fault.call, failures[n].line) << n;
        }
    }
    void faults() {
        QFETCH(int, row);
        const Outcome outcome = run(failures[row].line, failures[row].fault);
        QVERIFY2(outcome.errors.contains(QString("tintwell-cli: ") + failures[row].message),
                 qPrintable(outcome.errors));
        QCOMPARE(outcome.status, 1);
        expectOldFile();
    }

    /// Fallbacks for what file systems and folders do not allow.
    void savesByOtherMeans() {
        const uid_t other = getuid() == 0 ? 4321 : getuid();
        const struct {
            Fault fault;
            bool inPlace;
            mode_t mode = 04640;
        } rows[] = {{{}, false},
                    {{.named = true}, false},
                    {{"create", EACCES}, true},
                    {{"rename", EBUSY}, true},
                    {{"fchown", EPERM}, false, getuid() == 0 ? 0600U : 04640U}};
        for (const auto& row : rows) {
            init();
            const QString file = m_folder.file("disk/big.cube", QByteArray(3'000'000, '#'));
            struct stat before {};
            struct stat after {};
            QCOMPARE(chown(qPrintable(file), other, getuid() == 0 ? other : getgid()), 0);
            QCOMPARE(chmod(qPrintable(file), 04640), 0);
            QCOMPARE(stat(qPrintable(file), &before), 0);
            QVERIFY(QFile::link(file, m_folder.path("disk/link.cube")));
            const Outcome outcome = run("convert --force in.cube disk/link.cube", row.fault);
            QCOMPARE(outcome.errors, QString());
            QCOMPARE(outcome.status, 0);
            QVERIFY(isWhole());
            QCOMPARE(entries(), QStringList({"big.cube", "link.cube"}));
            QVERIFY(QFileInfo(m_folder.path("disk/link.cube")).isSymLink());
            QCOMPARE(stat(qPrintable(file), &after), 0);
            QCOMPARE(after.st_ino == before.st_ino, row.inPlace);
            QCOMPARE(after.st_uid, row.mode == 0600 ? 0 : other);
            QCOMPARE(after.st_mode & (row.inPlace ? 0777 : 07777),
                     row.mode & (row.inPlace ? 0777 : 07777));
        }
    }

    void makesNewFiles() {
        for (const bool named : {false, true}) {
            QFile::remove(m_folder.path("disk/new.cube"));
            QCOMPARE(run("convert in.cube disk/new.cube", {.named = named}).status, 0);
            QVERIFY(isWhole("disk/new.cube"));
            QCOMPARE(QFile::permissions(m_folder.path("disk/new.cube")),
                     QFile::permissions(m_folder.path("in.cube")));
            QCOMPARE(run("convert in.cube disk/new.cube", {.named = named}).status, 1);
            QCOMPARE(entries().size(), 2);
        }
        QCOMPARE(run("convert --force --size 2 disk/new.cube disk/new.cube").status, 0);
        QVERIFY(m_folder.content("disk/new.cube").contains("LUT_3D_SIZE 2"));
    }

    void signalsLeaveNothing() {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            Program program(
                m_folder,
                {.call = signal == SIGINT ? "rename" : "write", .signal = signal, .named = true});
            QCOMPARE(program.run("convert --force in.cube disk/big.cube").status, -1);
            QCOMPARE(program.exitCode(), signal);
            expectOldFile();
        }
    }

    void clearsLeftOversOfDeadProcessesOnly() {
        const QString line = "convert --force in.cube disk/big.cube";
        m_folder.file("disk/.tintwell-settings", "mine");
        run(line, {.call = "rename", .signal = SIGKILL});
        QCOMPARE(entries().size(), 3);

        Program stopped(m_folder, {.call = "rename", .signal = SIGSTOP});
        stopped.begin(line);
        const QString live = QString(".tintwell-%1-0").arg(stopped.processId());
        QTRY_VERIFY(entries().contains(live));
        QCOMPARE(run("identity --size 2 disk/other.cube").status, 0);
        // The dead program's file is gone.
        QCOMPARE(entries(), QStringList({".tintwell-settings", live, "big.cube", "other.cube"}));

        QTRY_COMPARE(kill(pid_t(stopped.processId()), SIGCONT), 0);
        QVERIFY(stopped.waitForFinished());
        QCOMPARE(stopped.exitCode(), 0);
        QVERIFY(isWhole());
    }

    void smallDisks() {
        const QString mount = "mount -t tmpfs -o size=8k tmpfs . && cd $PWD";
        const char* const lines[][2] = {{"identity --force big.cube", "big.cube: not written: "},
                                        {"identity --to cube --size 9 -", "-: not written: "},
                                        {"formats --json", "standard output: not written: "}};
        const QString unshare = "unshare " + QString(getuid() == 0 ? "-m" : "-Urm");
        const bool canMount =
            QProcess::execute("sh", {"-c", unshare + " mount -t tmpfs tmpfs /mnt"}) == 0;
        for (const QString& limit : {QString("trap '' XFSZ; ulimit -f 8"), mount}) {
            if (limit == mount && !canMount) {
                QSKIP("no file system of a limited size can be mounted here");
            }
            for (const auto& [line, message] : lines) {
                const QString script = limit + "; printf old >big.cube; " TINTWELL_CLI " " + line +
                                       " >out; status=$?; cat big.cube; echo; ls -A; exit $status";
                QProcess shell;
                shell.setWorkingDirectory(m_folder.path("disk"));
                shell.start("unshare", {getuid() == 0 ? "-m" : "-Urm", "sh", "-c", script});
                QVERIFY(shell.waitForFinished());
                const QString errors = shell.readAllStandardError();
                QVERIFY2(errors.startsWith("tintwell-cli: " + QString(message)),
                         qPrintable(errors));
                QCOMPARE(shell.readAllStandardOutput(), QByteArray("old\nbig.cube\nout\n"));
                QCOMPARE(shell.exitCode(), 1);
            }
        }
    }

    void batches() {
        QString line = "convert --to nvx3d --output-directory disk/out --jobs 4";
        for (int n = 0; n < 8; ++n) { // each gives a note
            const QString name = QString("disk/in%1.cube").arg(n);
            m_folder.file(name, "DOMAIN_MAX 2 2 2\nLUT_3D_SIZE 1\n2 2 2\n");
            line += " --force " + name;
        }
        for (const bool closed : {true, false}) { // the descriptors 0 to 2; or no thread starts
            Program program(m_folder, closed ? Fault{} : Fault{"thread", EAGAIN, "/"});
            program.inChild = [closed] {
                for (int descriptor = 0; closed && descriptor < 3; ++descriptor) {
                    close(descriptor);
                }
            };
            QCOMPARE(program.run(line).status, 0);
            QCOMPARE(entries("disk/out").size(), 8);
            for (const QString& name : entries("disk/out")) {
                QVERIFY(
                    m_folder.content("disk/out/" + name).startsWith("From 0.0 1.0\nLength 1\n"));
                QVERIFY(QFile::remove(m_folder.path("disk/out/" + name)));
            }
        }
    }

    void scarceMemoryEndsWithAMessage() {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer needs more memory than is left");
#endif
        constexpr int notLoaded = 127; // the dynamic loader gave up
        int failures = 0;
        for (rlim_t mebibytes = 60; mebibytes < 120; mebibytes += 3) {
            Program program(m_folder);
            program.inChild = [mebibytes] {
                const rlimit little = {mebibytes << 20U, mebibytes << 20U};
                setrlimit(RLIMIT_AS, &little);
            };
            const Outcome outcome = program.run("convert --force --to spi3d --output-directory "
                                                "disk/out --jobs 3 in.cube ./in.cube disk/in.cube");
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

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
};

struct Program : samples::Program {
    explicit Program(const samples::Folder& folder, const Fault& fault = {})
        : samples::Program(folder) {
        const QString sanitizer = environment.value("ASAN_OPTIONS") + ":verify_asan_link_order=0";
        environment.insert("ASAN_OPTIONS", sanitizer);
        // By a path without blanks, which would separate paths.
        QFile::link(TINTWELL_FAULTS, folder.path("faults.so"));
        environment.insert("LD_PRELOAD", folder.path("faults.so"));
        environment.insert("FAULT", QString::asprintf("%s %s %d %d %d", fault.call, fault.path,
                                                      fault.after, fault.error, fault.signal));
    }
};

constexpr struct {
    const char* line;
    Fault fault;
    const char* told;
} failures[] = {
    {"convert --force in.cube disk/o.cube", {"write", ENOSPC, "/disk", 300'000}, "disk/o.cube: "},
    {"convert --force in.cube disk/o.cube", {"create", ENOSPC}, "disk/o.cube: not written: No sp"},
    {"convert --force in.cube disk/o.cube", {"fsync", EIO}, "disk/o.cube: not written: Input"},
    {"convert --force in.cube disk/o.cube", {"close", EDQUOT}, "disk/o.cube: not written: Disk"},
    {"convert --to spi3d in.cube -", {"write", ENOSPC, "pipe:", 99'999}, "-: not written: No sp"},
    {"convert --to spi3d in.cube -", {"close", EDQUOT, "pipe:"}, "-: not written: Disk quota ex"},
    {"info in.cube", {"close", EDQUOT, "pipe:"}, "standard output: not written: Disk quota exc"},
    {"convert --force in.cube disk/o.cube", {"read", EIO, "in.cube", 300'000}, "in.cube: Input/"},
    {"convert --force in.look disk/o.cube", {"read", EIO, "in.look", 100}, "in.look: Input/outp"},
    {"apply in.cube in.bmp disk/o.bmp", {"read", EIO, "in.bmp", 9000}, "in.bmp: "},
    {"picture in.cube disk/o.bmp", {"write", ENOSPC, "/disk", 3000}, "disk/o.bmp: not written: No"},
    {"picture in.cube disk/o.png", {"write", ENOSPC, "/disk", 3000}, "disk/o.png: not written: No"},
    {"apply in.cube in.bmp disk/o.bmp", {"thread", EAGAIN, "/"}, "in.bmp: cannot start the thre"},
    {"convert --from texture in.bmp disk/p.cube", {"thread", EAGAIN, "/"}, "in.bmp: cannot star"},
};

} // namespace

class TestSaving : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    Outcome run(const QString& line, const Fault& fault = {}) const {
        return Program(m_folder, fault).run(line);
    }

    QStringList entries() const {
        return QDir(m_folder.path("disk")).entryList(QDir::Files | QDir::Hidden);
    }

    bool isWhole(const QString& name = "disk/o.cube") const {
        return m_folder.content(name) == m_folder.content("in.cube");
    }

    void expectOldFile() const {
        QCOMPARE(m_folder.content("disk/o.cube"), QByteArray("old"));
        QCOMPARE(entries(), QStringList("o.cube"));
    }

private Q_SLOTS:
    void initTestCase() {
        QCOMPARE(run("identity --size 33 in.cube").status, 0);
        m_folder.file("in.look", "<look><LUT><size>2</size><data>" + QByteArray(192, '0') +
                                     "</data></LUT></look>");
        QImage image(64, 64, QImage::Format_RGB32); // 12 KB
        image.fill(Qt::red);
        QVERIFY(image.save(m_folder.path("in.bmp")));
        QVERIFY(QFile::copy(m_folder.path("in.cube"), m_folder.path("in2.cube")));
    }

    void init() {
        QDir(m_folder.path("disk")).removeRecursively();
        QDir(m_folder.path("")).mkpath("disk");
        m_folder.file("disk/o.cube", "old");
    }

    void faults() {
        for (const auto& [line, fault, told] : failures) {
            const Outcome outcome = run(line, fault);
            QVERIFY2(outcome.errors.startsWith(QString("tintwell-cli: ") + told),
                     qPrintable(line + (": " + outcome.errors)));
            QCOMPARE(outcome.status, 1);
            expectOldFile();
        }
    }

    /// Fallbacks for what file systems and folders do not allow.
    void savesByOtherMeans() {
        const uid_t other = getuid() == 0 ? 4321 : getuid();
        for (const Fault& fault : {Fault{}, Fault{"tmpfile", EOPNOTSUPP}, Fault{"create", EACCES},
                                   Fault{"rename", EBUSY}, Fault{"fchown", EPERM}}) {
            const bool inPlace = fault.error == EACCES || fault.error == EBUSY;
            const bool disowned = fault.error == EPERM && getuid() == 0;
            init();
            const QString file = m_folder.file("disk/o.cube", QByteArray(3'000'000, '#'));
            struct stat before {};
            struct stat after {};
            QCOMPARE(chown(qPrintable(file), other, getuid() == 0 ? other : getgid()), 0);
            QCOMPARE(chmod(qPrintable(file), 04640), 0);
            QCOMPARE(stat(qPrintable(file), &before), 0);
            QVERIFY(QFile::link(file, m_folder.path("disk/link.cube")));
            QCOMPARE(run("convert --force in.cube disk/link.cube", fault).errors, QString());
            QVERIFY(isWhole());
            QCOMPARE(run("convert in.cube disk/new.cube", fault).status, fault.error == EACCES);
            QCOMPARE(isWhole("disk/new.cube"), fault.error != EACCES);
            QCOMPARE(entries().size(), fault.error == EACCES ? 2 : 3);
            QCOMPARE(stat(qPrintable(file), &after), 0);
            QCOMPARE(after.st_ino == before.st_ino, inPlace);
            QCOMPARE(after.st_uid, disowned ? 0 : other);
            const mode_t compared = inPlace ? 0777 : 07777; // writing may clear the rest
            QCOMPARE(after.st_mode & compared, (disowned ? 0600U : 04640U) & compared);
        }
    }

    void signalsLeaveNothing() {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            Program program(m_folder, {.call = "rename", .signal = signal});
            QCOMPARE(program.run("convert --force in.cube disk/o.cube").status, -1);
            QCOMPARE(program.exitCode(), signal);
            expectOldFile();
        }
    }

    void clearsLeftOversOfDeadProcessesOnly() {
        const QString line = "convert --force in.cube disk/o.cube";
        m_folder.file("disk/.tintwell-settings", "mine");
        run(line, {.call = "rename", .signal = SIGKILL});
        QCOMPARE(entries().size(), 3);

        Program stopped(m_folder, {.call = "rename", .signal = SIGSTOP});
        stopped.begin(line);
        const QString live = QString(".tintwell-%1-0").arg(stopped.processId());
        QTRY_VERIFY(entries().contains(live));
        QCOMPARE(run("identity --size 2 disk/other.cube").status, 0);
        // The dead program's file is gone.
        QCOMPARE(entries().size(), 4);
        QVERIFY(entries().contains(live) && entries().contains(".tintwell-settings"));

        QTRY_COMPARE(kill(pid_t(stopped.processId()), SIGCONT), 0);
        QVERIFY(stopped.waitForFinished());
        QCOMPARE(stopped.exitCode(), 0);
        QVERIFY(isWhole());
    }

    /// On a full disk, where no new file can be made either.
    void smallDisks() {
        const char* const lines[][2] = {{"identity --force o.cube", "o.cube: not written: "},
                                        {"identity --to cube --size 9 -", "-: not written: "},
                                        {"formats --json", "standard output: not written: "}};
        const QStringList shell = {getuid() == 0 ? "-m" : "-Urm", "sh", "-c"};
        const QString mount = "mount -t tmpfs -o size=8k tmpfs /mnt && cd /mnt";
        if (QProcess::execute("unshare", shell + QStringList(mount)) != 0) {
            QSKIP("no file system of a limited size can be mounted here");
        }
        for (const auto& [line, told] : lines) {
            QProcess process;
            process.setProcessEnvironment(
                Program(m_folder, {"create", EACCES, "/mnt/"}).environment);
            const QString script = "; printf old >o.cube; \"$0\" %1 >out; status=$?; "
                                   "cat o.cube; echo; ls -A; exit $status";
            process.start("unshare", shell + QStringList{mount + script.arg(line), TINTWELL_CLI});
            QVERIFY(process.waitForFinished());
            const QString errors = process.readAllStandardError();
            QVERIFY2(errors.startsWith(QString("tintwell-cli: ") + told), qPrintable(errors));
            QCOMPARE(process.readAllStandardOutput(), QByteArray("old\no.cube\nout\n"));
            QCOMPARE(process.exitCode(), 1);
        }
    }

    void batches() {
        QString line = "convert --to nvx3d --output-directory disk/out --jobs 4";
        for (int n = 0; n < 8; ++n) { // each gives a note
            const QString name = QString("disk/in%1.cube").arg(n);
            line += " --force " + name;
            m_folder.file(name, "DOMAIN_MAX 2 2 2\nLUT_3D_SIZE 1\n2 2 2\n");
        }
        for (const bool closed : {true, false}) { // the descriptors 0 to 2; or no thread starts
            Program program(m_folder, closed ? Fault{} : Fault{"thread", EAGAIN, "/"});
            program.inChild = [closed] {
                for (int descriptor = 0; closed && descriptor < 3; ++descriptor) {
                    close(descriptor);
                }
            };
            QCOMPARE(program.run(line).status, 0);
            QDir out(m_folder.path("disk/out"));
            QCOMPARE(out.entryList(QDir::Files | QDir::Hidden).size(), 8);
            for (const QString& name : out.entryList(QDir::Files)) {
                const QByteArray content = m_folder.content("disk/out/" + name);
                QVERIFY(content.startsWith("From 0.0 1.0\nLength 1\n"));
            }
            out.removeRecursively();
        }
    }

    void scarceMemoryEndsWithAMessage() {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer needs more memory than is left");
#endif
        int told = 0;
        for (rlim_t mebibytes = 60; mebibytes < 110; ++mebibytes) {
            Program program(m_folder);
            program.inChild = [mebibytes] {
                const rlimit little = {mebibytes << 20U, mebibytes << 20U};
                setrlimit(RLIMIT_AS, &little);
            };
            const Outcome outcome = program.run("convert --force --to spi3d --output-directory "
                                                "disk/out --jobs 2 in.cube in2.cube");
            const bool failed = outcome.status == 1 && outcome.errors.startsWith("tintwell-cli: ");
            const bool loaded = outcome.status != 127; // else the dynamic loader gave up
            QVERIFY2(failed || outcome.status == 0 || !loaded, qPrintable(outcome.errors));
            told += outcome.errors.contains("not enough memory for the file") ? 1 : 0;
        }
        QVERIFY(told > 0);
    }
};

QTEST_GUILESS_MAIN(TestSaving)
#include "test_saving.moc"

#include "format_samples.h"
#include "lut/bounded_read.h"
#include "lut/catalogue.h"
#include "samples.h"

#include <QDir>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <new>
#include <thread>
#include <utility>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using tintwell::formatCount;

namespace {

constexpr int threeDlCode = 3;
constexpr int lookCode = 5;
constexpr int mebibyte = 1 << 20;

#ifdef __SANITIZE_ADDRESS__
constexpr double slowdown = 5;
#else
constexpr double slowdown = 1;
#endif

const QDir& data() {
    static const QDir folder(QStringLiteral(TINTWELL_TEST_DATA));
    return folder;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Probes and reads with one reader. Any result is accepted, but it must come promptly.
void verifyPrompt(const QString& path, int code) {
    constexpr double limit = 2 * slowdown; // seconds of CPU time, not of the wall clock
    for (const bool probe : {true, false}) {
        const std::clock_t start = std::clock();
        Read_LUTFile lut(nullptr);
        lut.ReadFile(samples::request(path, code), probe);
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        QVERIFY2(seconds < limit,
                 qPrintable(QStringLiteral("code %1: %2 s").arg(code).arg(seconds)));
    }
}

void verifyPrompt(const QString& path) {
    for (int code = 0; code < formatCount; ++code) {
        verifyPrompt(path, code);
    }
}

QByteArray numbered(const QByteArray& before, const QByteArray& after, int limit = mebibyte - 100) {
    QByteArray text;
    for (int n = 0; text.size() < limit; ++n) {
        text += before + QByteArray::number(n, 36) + after;
    }
    return text;
}

QByteArray inUtf16(const QByteArray& text) {
    QByteArray bytes("\xFF\xFE");
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

/// Leaves this process this much memory and no more, by using up all other free memory.
class LittleMemory {
public:
    explicit LittleMemory(int bytes) {
        QByteArray left(bytes, '\0');
        getrlimit(RLIMIT_AS, &m_before);
        const rlim_t pages =
            contentOf(QStringLiteral("/proc/self/statm")).split(' ').front().toULong();
        const rlim_t pageSize = static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
        const rlimit asItIs = {pages * pageSize, m_before.rlim_max};
        setrlimit(RLIMIT_AS, &asItIs);
        for (std::size_t size = 1U << 24U; size >= sizeof(Block); size /= 2) {
            while (void* const taken = std::malloc(size)) {
                m_taken = new (taken) Block{m_taken};
            }
        }
        left.clear();
    }
    ~LittleMemory() {
        setrlimit(RLIMIT_AS, &m_before);
        while (m_taken != nullptr) {
            std::free(std::exchange(m_taken, m_taken->next));
        }
    }
    LittleMemory(const LittleMemory&) = delete;
    LittleMemory& operator=(const LittleMemory&) = delete;

private:
    struct Block {
        Block* next;
    };
    rlimit m_before{};
    Block* m_taken = nullptr;
};

} // namespace

class TestHostile : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    /// Paths that do not lead to a regular file.
    QStringList oddPaths() const {
        const QString fifo = m_folder.path(QStringLiteral("fifo"));
        const QString dangling = m_folder.path(QStringLiteral("dangling"));
        const QString loop = m_folder.path(QStringLiteral("loop"));
        mkfifo(qPrintable(fifo), 0600);
        QFile::link(m_folder.path(QStringLiteral("no/where")), dangling);
        QFile::link(loop, loop);
        return {fifo,      dangling,
                loop,      m_folder.path(QString()),
                QString(), QStringLiteral("/no/such/file")};
    }

private Q_SLOTS:
    /// Files that once broke a reader are in tests/data/regressions.
    void regressions_data() {
        QTest::addColumn<QString>("path");
        const QDir folder(data().filePath(QStringLiteral("regressions")));
        for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
        }
    }
    void regressions() {
        QFETCH(QString, path);
        verifyPrompt(path);
    }

    /// One MiB of a single sample's line, with and without its line feed, after all preceding
    /// lines.
    void swollenSamples_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("content");
        for (const tintwell::Format& format : tintwell::catalogue) {
            if (format.isImage) {
                continue;
            }
            const int code = codeOf(format);
            const char* const name = samples::sampleOf(code).file;
            const QByteArrayList lines = contentOf(data().filePath(name)).split('\n');
            QByteArray before;
            for (int n = 0; n < lines.size() && n < 14; ++n) {
                const auto row = [&](const char* how, const QByteArray& unit) {
                    const int count = (mebibyte - before.size() - 1) / unit.size();
                    QTest::addRow("%s line %d %s", name, n, how)
                        << code << before + unit.repeated(count);
                };
                row("by the line", lines[n] + '\n');
                row("in a row", lines[n] + ' ');
                before += lines[n] + '\n';
            }
        }
    }
    void swollenSamples() {
        QFETCH(int, code);
        QFETCH(QByteArray, content);
        verifyPrompt(m_folder.file(QStringLiteral("swollen"), content), code);
    }

    void swollenText_data() {
        QTest::addColumn<QByteArray>("content");
        const auto row = [](const char* name, const QByteArray& unit) {
            QTest::newRow(name) << unit.repeated((mebibyte - 1) / unit.size());
        };
        row("line feeds", "\n");
        row("blanks", " ");
        row("line separators", "\xE2\x80\xA8");
        row("wide blanks", "\xE3\x80\x80\n");
        row("broken UTF-8", "\xE3\x80");
        row("digits", "1");
        row("nan", "nan ");
        row("nan by the line", "nan nan nan\n");
        row("hexadecimal floats", "0x1.8p1 0x1p1 0x0.1\n");
        row("NUL", QByteArray("\0", 1));
        QTest::newRow("UTF-16") << inUtf16(QByteArray("1\n").repeated(mebibyte / 4 - 1));
    }
    void swollenText() {
        QFETCH(QByteArray, content);
        verifyPrompt(m_folder.file(QStringLiteral("swollen"), content));
    }

    void costlyDocuments_data() {
        QTest::addColumn<QByteArray>("content");
        const QByteArray attributes = "<a " + numbered("a", "='' ") + "/>";
        QTest::newRow("attributes of one tag") << attributes;
        QTest::newRow("after a quoted end") << "<a b='>' " + attributes.mid(3);
        QTest::newRow("after a comment") << "<!-- don't --><!-- \" -->" + attributes;
        QTest::newRow("after quoted text")
            << "<?x <!-- ?><!DOCTYPE a PUBLIC \"<!--\" '[' [<!-- ' -->]><a><![CDATA[<!-- ]]>" +
                   attributes;
        QTest::newRow("in UTF-16") << inUtf16(attributes.left(mebibyte / 2 - 1));
        QTest::newRow("of an encoding with escapes")
            << "<?xml version='1.0' encoding='UTF-7'?>" +
                   QByteArray(attributes).replace("=", "+AD0-").left(mebibyte - 100);
        QTest::newRow("of an unknown encoding")
            << "<?xml version='1.0' encoding='none'?>" + attributes;
        QTest::newRow("some on every tag")
            << ("<b " + numbered("a", "='' ", 500) + "/>").repeated(mebibyte / 520).prepend("<a>");
        QTest::newRow("name spaces") << numbered("<a xmlns:b", "='u'>", mebibyte / 2) +
                                            QByteArray("<b0:a/>").repeated(60'000);
        const QByteArray declared = "[<!ATTLIST b " + numbered("a", " CDATA '' ") + ">]>";
        QTest::newRow("declared attributes") << "<!DOCTYPE a " + declared + "<a/>";
        QTest::newRow("after another quote") << "<!DOCTYPE a SYSTEM '<!--' " +
                                                    declared.left(mebibyte - 200'000) + ">]><a>" +
                                                    QByteArray("<b/>").repeated(40'000);
        QTest::newRow("within elements") << "<a><!DOCTYPE a " + declared;
        QTest::newRow("declared entities")
            << "<!DOCTYPE a [<!ENTITY % a '" + QByteArray("<!ELEMENT a ANY>").repeated(200) + "'>" +
                   QByteArray("%a;").repeated(300'000) + "]><a/>";
        QTest::newRow("nested tags") << QByteArray("<a>").repeated(mebibyte / 3);
        QTest::newRow("references") << "<a>" + QByteArray("&amp;").repeated(mebibyte / 6);
        QTest::newRow("comments") << "<a>" + QByteArray("<!---->").repeated(mebibyte / 8);
    }
    void costlyDocuments() {
        QFETCH(QByteArray, content);
        QVERIFY(content.size() <= mebibyte);
        verifyPrompt(m_folder.file(QStringLiteral("costly"), content), lookCode);
    }

    void oddPathsAreNotRead() {
        QStringList paths = oddPaths();
        const QString kernelLog = m_folder.path(QStringLiteral("kernel-log")); // may block
        QFile::link(QStringLiteral("/proc/kmsg"), kernelLog);
        paths << QStringLiteral("/dev/zero") << kernelLog;
        for (const QString& path : paths) {
            for (int code = 0; code < formatCount; ++code) {
                Read_LUTFile lut(nullptr);
                const bool emptyImage = code == 2;
                QCOMPARE(lut.ReadFile(samples::request(path, code), false), emptyImage);
                QVERIFY(lut.data3D == nullptr && lut.data1D == nullptr);
            }
        }
    }

    void filesThatClaimToBeEmpty() {
        const QString link = m_folder.path(QStringLiteral("status"));
        QFile::link(QStringLiteral("/proc/self/status"), link);
        QString error;
        QVERIFY(tintwell::readBounded(link, error).value().startsWith("Name:"));
    }

    void oddPathsAreNotWritten() {
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int, int, int) { return QVector<float>{0, 0.5F, 1}; });
        for (const QString& path : oddPaths()) {
            for (int code = 0; code < formatCount; ++code) {
                QVERIFY2(!Write_LUTFile(nullptr).WriteFile(samples::request(path, code), lut),
                         qPrintable(path));
            }
        }
    }

    void readOnlyFolder() {
        const QString folder = m_folder.path(QStringLiteral("read-only"));
        QVERIFY(QDir().mkdir(folder));
        QCOMPARE(chmod(qPrintable(folder), 0500), 0);
        const bool isRoot = geteuid() == 0; // permissions do not apply to the superuser
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int, int, int) { return QVector<float>{0, 0.5F, 1}; });
        const LUTFILE_ST st = samples::request(folder + QStringLiteral("/out.cube"), 0);
        QCOMPARE(Write_LUTFile(nullptr).WriteFile(st, lut), isRoot);
        QCOMPARE(chmod(qPrintable(folder), 0700), 0);
    }

    void unreadableFile() {
        const QByteArray content = contentOf(data().filePath(QStringLiteral("sample.cube")));
        const QString path = m_folder.file(QStringLiteral("unreadable"), content);
        QCOMPARE(chmod(qPrintable(path), 0), 0);
        const bool isRoot = geteuid() == 0;
        Read_LUTFile lut(nullptr);
        QCOMPARE(lut.ReadFile(samples::request(path, 0), false), isRoot);
    }

    void littleMemory() {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer needs memory of its own");
#endif
        // A reader that allocates memory in every possible way.
        const LUTFILE_ST in = samples::request(
            m_folder.file(QStringLiteral("large"),
                          "0 1\n" + QByteArray("0 1\n1 2 3\n4 5 x\n").repeated(200'000)),
            threeDlCode);
        const LUTFILE_ST out = samples::request(m_folder.path(QStringLiteral("large.cube")), 0);
        Read_LUTFile table(nullptr);
        samples::fillRandom(table, 65, 1);
        int tries = 0;
        int reads = 0;
        int writes = 0;
        for (int bytes = 1 << 16; bytes < 1 << 25; bytes += bytes / 4) {
            Read_LUTFile lut(nullptr);
            Write_LUTFile writer(nullptr);
            const LittleMemory memory(bytes);
            const bool isRead = lut.ReadFile(in, false);
            const bool isWritten = writer.WriteFile(out, table);
            QVERIFY(isRead == lut.lastError.isEmpty());
            QVERIFY(isWritten == writer.lastError.isEmpty());
            ++tries;
            reads += isRead ? 1 : 0;
            writes += isWritten ? 1 : 0;
        }
        QVERIFY(reads > 0 && reads < tries);
        QVERIFY(writes > 0 && writes < tries);
    }

    /// Another program empties and refills the file while readers use it.
    void shrinkingFile_data() {
        QTest::addColumn<int>("code");
        for (int code = 0; code < formatCount; ++code) {
            QTest::addRow("%d", code) << code;
        }
    }
    void shrinkingFile() {
        QFETCH(int, code);
        const QByteArray header =
            "LUT_3D_SIZE 64\n3DLUTSIZE 64\nLength 64\nSPILUT\n3 3\n64 64 64\n";
        const QString path = m_folder.file(QStringLiteral("shrinking"),
                                           header + QByteArray("0 0 0 1 1 1\n").repeated(80'000));
        const off_t size = QFileInfo(path).size();
        std::atomic<bool> done{false};
        std::thread other([&] {
            while (!done) {
                for (const off_t length : {off_t{0}, size, size / 3, size, off_t{1}, size}) {
                    static_cast<void>(truncate(qPrintable(path), length));
                }
            }
        });
        for (int n = 0; n < 20; ++n) {
            Read_LUTFile lut(nullptr);
            lut.ReadFile(samples::request(path, code), n % 4 == 0);
        }
        done = true;
        other.join();
    }
};

QTEST_GUILESS_MAIN(TestHostile)
#include "test_hostile.moc"

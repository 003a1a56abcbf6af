#include "format_samples.h"
#include "formats/text/xml_document.h"
#include "lut/bounded_read.h"
#include "samples.h"

#include <QDir>
#include <QTextCodec>

#include <ctime>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int lookCode = 5;
const QTextCodec* const utf16 = QTextCodec::codecForName("UTF-16");
const QDir data(TINTWELL_TEST_DATA);

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Almost one MiB.
QByteArray swollen(const QByteArray& before, const QByteArray& unit) {
    return before + unit.repeated(((1 << 20) - 1 - before.size()) / unit.size());
}

/// The tag of an empty element with this many attributes.
QByteArray tag(const QByteArray& name, int attributes) {
    QByteArray text = '<' + name;
    for (int n = 0; n < attributes; ++n) {
        text += " a" + QByteArray::number(n) + "=''";
    }
    return text + "/>";
}

/// Where a document is cut; -1 if it is whole.
int cutAt(const QByteArray& content) {
    const tintwell::XmlDocument document = tintwell::readableXml(content);
    return document.isCut ? document.text.size() : -1;
}

} // namespace

class TestHostile : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    /// Probes and reads. Any result is accepted, but it must come promptly.
    void verifyPrompt(int code, const QByteArray& content) const {
        const QString path = m_folder.file("costly", content);
        const std::clock_t start = std::clock(); // of the processor
        for (const bool probe : {true, false}) {
            Read_LUTFile(nullptr).ReadFile(samples::request(path, code), probe);
        }
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        QVERIFY2(seconds < 9, content.left(99) + QByteArray::number(code));
    }

private Q_SLOTS:
    void costlyFiles() {
        const QByteArrayList units = {
            "",  "\xE2\x80\xA8", "\xE3\x80\x80",        "\xE3\x80",
            "1", "nan nan nan",  "0x1.8p1 0x1p1 0x0.1", QByteArray(1, '\0')};
        for (const samples::FormatSample& sample : samples::formatSamples) {
            const int code = int(sample.code);
            const QDir once(data.filePath("regressions")); // files that once broke a reader
            for (const QString& name : once.entryList(QDir::Files)) {
                verifyPrompt(code, contentOf(once.filePath(name)));
            }
            verifyPrompt(code, utf16->fromUnicode(swollen("", "1\n").left(1 << 19)));
            const QByteArray whole = contentOf(data.filePath(sample.file));
            for (int n = 0; n < 40; ++n) {
                verifyPrompt(code, whole.left(whole.size() * n / 40));
            }
            QByteArray before;
            for (const QByteArray& line : whole.split('\n').mid(0, 7)) {
                verifyPrompt(code, swollen(before, line + '\n'));
                verifyPrompt(code, swollen(before, line + ' '));
                before += line + '\n';
            }
            for (const QByteArray& unit : units) {
                verifyPrompt(code, swollen(before, unit + '\n'));
            }
        }
        for (const char* const unit :
             {"<a>", "<a ", "<a xmlns:b='u'>", "&amp;", "<!---->", "'", "<!ELEMENT a ANY>"}) {
            verifyPrompt(lookCode, swollen("<a>", unit));
            verifyPrompt(lookCode, swollen("<!DOCTYPE a [", unit));
        }
        verifyPrompt(lookCode, swollen("<a>", tag("a", 64)));
    }

    /// A document ends before the first tag that is too costly, whatever comes before it.
    void costlyTags() {
        const QByteArray noTags = "<!- ]" + tag("x", 99) + QByteArray("<x>").repeated(300);
        const QByteArray deep = QByteArray("<a>").repeated(255);
        const QByteArray names = QByteArray("<a xmlns:b=''>").repeated(64);
        const QByteArray type =
            "<!DOCTYPE a [<!ATTLIST b c CDATA ']>'>\n<?x ]\" ?><!ENTITY e \"]>\">]>";
        const QByteArray skipped = "<!-- don't --><!-- \" --><!--->--><!--" + noTags +
                                   "--><?x?><?x <!-- " + noTags +
                                   "?></a><a b='>' c=\"'>\"/><!DOCTYPE a PUBLIC \"<!--\" '[' [<!-- "
                                   "' -->]><!DOCTYPE a SYSTEM '<!--'>" +
                                   type + "<![CDATA[<!-- " + noTags + "]]>";
        const QByteArray closed = QByteArray("<a/><a></a><a xmlns=''></a>").repeated(300);
        for (const QByteArray& before : {QByteArray(), skipped, names, deep + closed}) {
            QCOMPARE(cutAt(before + tag("a", 64)), -1);
            QCOMPARE(cutAt(before + tag("a", 65)), before.size());
        }
        QCOMPARE(cutAt("<a b='/>'" + tag("", 64).mid(1)), 0);
        QCOMPARE(cutAt(deep + "<a><a/>"), deep.size() + 3);
        QCOMPARE(cutAt(names + "<a xmlns=''/>"), names.size());
        QCOMPARE(cutAt(utf16->fromUnicode(tag("a", 65))), 0);
        const QByteArray utf7 = "<?xml version='1.0' encoding='UTF-7'?>";
        QCOMPARE(cutAt(utf7 + tag("a", 65).replace("=", "+AD0-")), utf7.size());
        QCOMPARE(tintwell::readableXml(type).text.remove(' '), "<!DOCTYPEa\n>");
    }

    void oddPaths() {
        const QString fifo = m_folder.path("fifo");
        QCOMPARE(mkfifo(qPrintable(fifo), 0600), 0);
        QFile::link("/proc/kmsg", m_folder.path("log")); // may block
        QFile::link(m_folder.path("no/where"), m_folder.path("dangling"));
        const QVector<std::pair<QString, const char*>> paths = {
            {"/proc/self/mem", "Input/output error"},
            {m_folder.path("log"), ""},
            {"/dev/zero", "is not a regular file"},
            {fifo, "is not a regular file"},
            {m_folder.path(""), "is a folder, expected a file"},
            {m_folder.path("dangling"), "No such file or directory"},
            {"", "No such file or directory"}};
        const int open = QDir("/proc/self/fd").entryList().size();
        for (const auto& [path, reason] : paths) {
            for (const int code : {0, 1, lookCode}) { // text, image, XML
                Read_LUTFile lut(nullptr);
                QVERIFY2(!lut.ReadFile(samples::request(path, code), false), qPrintable(path));
                QVERIFY2(lut.lastError.contains(reason), qPrintable(lut.lastError));
            }
        }
        QCOMPARE(QDir("/proc/self/fd").entryList().size(), open);
        Read_LUTFile lut(nullptr);
        tintwell::makeZeros(lut, tintwell::TableKind::ThreeD, 2);
        for (const auto& [path, reason] : paths.mid(3)) {
            Write_LUTFile writer(nullptr);
            QVERIFY2(!writer.WriteFile(samples::request(path, 0), lut), reason);
            QVERIFY2(!writer.lastError.isEmpty(), reason);
        }
    }

    void sizesThatFilesClaim() {
        QString error;
        const QString version = "/proc/version"; // claims to be empty
        QCOMPARE(tintwell::readBounded(version, error).value(), contentOf(version));
        const QString large = m_folder.file("sparse", "");
        QCOMPARE(truncate(qPrintable(large), tintwell::MaxFileSize + 1), 0);
        QVERIFY(!tintwell::readBounded(large, error));
        QCOMPARE(error, "found 536870913 bytes, expected at most 536870912");
    }
};

QTEST_GUILESS_MAIN(TestHostile)
#include "test_hostile.moc"

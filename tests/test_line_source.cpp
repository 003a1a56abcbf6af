#include "formats/text/lattice_walk.h"
#include "formats/text/line_source.h"
#include "formats/text/words.h"
#include "samples.h"

#include <QTextStream>

#include <array>
#include <cstdint>

#include <sys/stat.h>

using tintwell::LineSource;

namespace {

QList<QByteArray> linesOf(LineSource& source) {
    QList<QByteArray> lines;
    while (!source.atEnd()) {
        const std::string_view line = source.next();
        lines << QByteArray(line.data(), static_cast<int>(line.size()));
    }
    return lines;
}

QList<QByteArray> linesByQt(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    QList<QByteArray> lines;
    while (!stream.atEnd()) {
        lines << stream.readLine().trimmed().toUtf8();
    }
    return lines;
}

QByteArray inCodec(const char* codec, const QString& text) {
    QByteArray bytes;
    QTextStream stream(&bytes);
    stream.setCodec(codec);
    stream.setGenerateByteOrderMark(true);
    stream << text << Qt::flush;
    return bytes;
}

} // namespace

class TestLineSource : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

private Q_SLOTS:
    void sameLinesAsQt_data() {
        QTest::addColumn<QByteArray>("bytes");
        const QString text = QString::fromUtf8("LUT \u3000\n\u00a0 0 1\n\n\tgrün\u2003\nlast");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one feed") << QByteArray("\n");
        QTest::newRow("plain") << QByteArray("a\n b \n\n\tc\v\f\n");
        QTest::newRow("last line without its feed") << QByteArray("a\nb");
        QTest::newRow("blanks at the end") << QByteArray("a\n  ");
        QTest::newRow("carriage returns anywhere") << QByteArray("a\r\n\rb\rc\r\r\n\r\nd\r");
        QTest::newRow("NUL") << QByteArray("0\0 1\n\0\n2", 8);
        QTest::newRow("other ASCII separators") << QByteArray("\x1c 1 \x1f\n\x7f\n");
        QTest::newRow("UTF-8") << text.toUtf8();
        QTest::newRow("UTF-8 with its mark") << inCodec("UTF-8", text);
        QTest::newRow("mark alone") << QByteArray("\xEF\xBB\xBF");
        QTest::newRow("UTF-16LE") << inCodec("UTF-16LE", text);
        QTest::newRow("UTF-16BE") << inCodec("UTF-16BE", text);
        QTest::newRow("UTF-32LE") << inCodec("UTF-32LE", text);
        QTest::newRow("UTF-16 with carriage returns") << inCodec("UTF-16LE", text + "\r\n1\r\n2");
        QTest::newRow("next line and no-break blanks") << QByteArray("\xC2\x85 1 \xC2\xA0\n2");
        QTest::newRow("broken UTF-8") << QByteArray("\xFF\xFE\n1 \xC3\n\xE4\xB8\n2 \xC3");
        QTest::newRow("half a surrogate pair") << QByteArray("\xFF\xFE\x00\xD8\n\0001\0", 8);
        const QString manyPieces = QString::fromUtf8("grün 😀\u2003\r\n").repeated(20'000);
        QTest::newRow("pieces of UTF-16") << inCodec("UTF-16BE", manyPieces);
        QTest::newRow("pieces of broken UTF-8") << "\xFF" + manyPieces.toUtf8();
        QTest::newRow("pieces of UTF-8") << manyPieces.toUtf8();
        QTest::newRow("Latin-1") << QByteArray("TITLE gr\xFCn\n1 2 3\n");
    }
    void sameLinesAsQt() {
        QFETCH(QByteArray, bytes);
        const QString path = m_folder.file(QStringLiteral("lines"), bytes);
        LineSource source(path);
        QVERIFY(source.isOpen());
        const QList<QByteArray> lines = linesOf(source);
        QCOMPARE(lines, linesByQt(path));
        source.rewind();
        QCOMPARE(linesOf(source), lines);
        QVERIFY(source.atEnd());
        QVERIFY(source.next().empty());
    }

    void opensRegularFilesOnly() {
        const QString fifo = m_folder.path(QStringLiteral("fifo"));
        QCOMPARE(mkfifo(qPrintable(fifo), 0600), 0);
        const QString dangling = m_folder.path(QStringLiteral("dangling"));
        QVERIFY(QFile::link(m_folder.path(QStringLiteral("nowhere")), dangling));
        for (const QString& path : {fifo, dangling, m_folder.path(QString()), QString(),
                                    QStringLiteral("/dev/zero"), QStringLiteral("/no/such")}) {
            QVERIFY2(!LineSource(path).isOpen(), qPrintable(path));
        }
    }

    void knowsWhatItCanHold() {
        const LineSource source(m_folder.file(QStringLiteral("three"), "1\n2\n3"));
        QVERIFY(source.canHold(4)); // the fourth line may be missing
        QVERIFY(!source.canHold(5));
        QVERIFY(!source.canHold(std::int64_t{1} << 40));
        for (const QByteArray& bytes : {QByteArray(5, '\xff'), inCodec("UTF-16LE", "1\n2\n3")}) {
            const LineSource converted(m_folder.file(QStringLiteral("converted"), bytes));
            QVERIFY(converted.canHold(4));
            QVERIFY(!converted.canHold(5));
        }
    }

    void wordsAndRemoval() {
        const auto wordsOf = [](const char* text) {
            QByteArrayList found;
            tintwell::WordReader words(text);
            for (auto word = words.next(); !word.empty(); word = words.next()) {
                found << QByteArray(word.data(), static_cast<int>(word.size()));
            }
            [&] { QCOMPARE(tintwell::wordCount(text), std::size_t(found.size())); }();
            return found.join('|');
        };
        QCOMPARE(wordsOf(""), QByteArray());
        QCOMPARE(wordsOf(" a\t bc \v1"), QByteArray("a|bc|1"));
        QCOMPARE(wordsOf("\u00a0 a\u3000grün\u2028b\u0085"), QByteArray("a|grün|b"));
        QCOMPARE(tintwell::removeAll("in 4 in in5", "in"), std::string(" 4  5"));
        QCOMPARE(tintwell::removeAll("aabb", "ab"), std::string("ab"));
        QCOMPARE(tintwell::withoutBlanks(" 3 \u3000 d"), std::string("3d"));
        QCOMPARE(tintwell::toInt(" +17\t"), 17);
        QCOMPARE(tintwell::toInt("17.0"), 0);
        QCOMPARE(tintwell::toInt("\uFEFF17"), 0);
        QCOMPARE(tintwell::toInt(std::string_view("17\0", 3)), 0);
    }

    void walksKeepTheEndRule_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("end");
        QTest::newRow("complete") << QByteArray("a\nb\nc\nd\ne\nf\ng\nh\nmore")
                                  << int(tintwell::FillResult::Complete);
        QTest::newRow("skipped lines do not count")
            << QByteArray("-\na\n-\nb\nc\nd\ne\nf\ng\n-\nh") << int(tintwell::FillResult::Complete);
        QTest::newRow("the last is missing")
            << QByteArray("a\nb\nc\nd\ne\nf\ng\n-\n") << int(tintwell::FillResult::LastMissing);
        QTest::newRow("two are missing")
            << QByteArray("a\nb\nc\nd\ne\nf\n") << int(tintwell::FillResult::EndedEarly);
    }
    void walksKeepTheEndRule() {
        QFETCH(QByteArray, text);
        LineSource lines(m_folder.file(QStringLiteral("walk"), text));
        QByteArray visited;
        const auto lattice =
            tintwell::walkLattice(lines, 2, [&](std::string_view line, int i, int j, int k) {
                if (line == "-") {
                    return false;
                }
                visited += line[0] == 'a' + 4 * i + 2 * j + k ? '.' : '!';
                return true;
            });
        QTEST(int(lattice), "end");
        QVERIFY(!visited.contains('!'));
        lines.rewind();
        const auto entries = tintwell::walkEntries(lines, 8, [](std::string_view line, int n) {
            return line == std::string(1, char('a' + n));
        });
        QTEST(int(entries), "end");
    }
};

QTEST_GUILESS_MAIN(TestLineSource)
#include "test_line_source.moc"

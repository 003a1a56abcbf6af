#include "formats/text/lattice_walk.h"
#include "formats/text/line_source.h"
#include "formats/text/words.h"
#include "lut/header_lines.h"
#include "samples.h"

#include <QTextCodec>
#include <QTextStream>

using tintwell::FillResult;
using tintwell::LineSource;

namespace {

QString text(std::string_view line) {
    return QString::fromUtf8(line.data(), static_cast<int>(line.size()));
}

QStringList linesByQt(const QString& path) {
    QFile file(path);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    QStringList lines;
    while (!stream.atEnd()) {
        lines += stream.readLine();
    }
    return lines;
}

QByteArray inCodec(const char* codec, const QString& text) {
    QTextCodec::ConverterState withMark;
    return QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &withMark);
}

/// Texts with and without a byte order mark, and bytes that are not well-formed.
QByteArrayList files() {
    const QString numbers = QString("0 1 2.5\n").repeated(40);
    const QString many = QString("grün 😀\u2003\r\n").repeated(20'000);
    QByteArrayList files = {"0\n\xC2",
                            "\xFF\xFE\n1 \xC3\n\xE4\xB8\n2 \xC3",
                            "TITLE gr\xFCn\n1 2 3\n",
                            "\xFF" + many.toUtf8(),
                            QByteArray("\xFF\xFE\x00\xD8\n\0001\0", 8),
                            QByteArray("0\0 1\n\0\n2", 8)};
    for (const QString& text :
         {QString(), QString("\n"), QString("\r"), QString(" \n\ta\v\f\n  "), many,
          QString("a\r\n\rb\rc\r\r\n\r\nd"), numbers + "K 1\n" + numbers + "1 z\n" + numbers,
          QString("LUT \u3000\n\u0085 0 1\n\x1c 1 \x1f\n\x7f\n\u00a0")}) {
        files += text.toUtf8();
        for (const char* const codec : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE"}) {
            files += inCodec(codec, text);
        }
    }
    return files;
}

/// A file for a walk through eight places; how the walk ends, and after how many if early.
struct Walk {
    const char* text;
    FillResult end;
    int found = -1;
};

constexpr Walk walks[] = {
    {"-\na\n-\nb\nc\nd\ne\nf\ng\n-\nh\nmore", FillResult::Complete},
    {"a\nb\nc\nd\ne\nf\ng\n-\n", FillResult::LastMissing, 7},
    {"a\nb\nc\nd\ne\nf\n", FillResult::EndedEarly, 6},
    {"a\nb\nc\n", FillResult::EndedEarly, 3},
};

} // namespace

class TestLineSource : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

private Q_SLOTS:
    void sameLinesAsQt() {
        for (const QByteArray& bytes : files()) {
            const QString path = m_folder.file("lines", bytes);
            const QStringList byQt = linesByQt(path);
            LineSource source(path);
            QVERIFY(source.isOpen());
            QStringList withLetters;
            for (int n = 0; n < byQt.size(); ++n) {
                QVERIFY(!source.atEnd());
                const QString line = text(source.next());
                QCOMPARE(line, byQt[n].trimmed());
                if (n % 1000 < 9) { // both take long
                    QCOMPARE(source.lineNumber(), n + 1);
                    QCOMPARE(source.currentText(), line);
                }
                if (std::any_of(byQt[n].begin(), byQt[n].end(), [](QChar c) { return c >= '@'; })) {
                    withLetters += line;
                }
            }
            QVERIFY(source.atEnd());
            QVERIFY(source.next().empty());
            QCOMPARE(QByteArray(source.position(), 4), QByteArray(4, '\0'));
            source.rewind();
            QStringList found;
            while (source.skipToLetters()) {
                found += text(source.next());
            }
            QCOMPARE(found, withLetters);
            QVERIFY(source.atEnd());
        }
    }

    void knowsWhatItCanHold() {
        for (const QByteArray& bytes :
             {QByteArray("1\n2\n3"), QByteArray(5, '\xff'), inCodec("UTF-16LE", "1\n2\n3")}) {
            const LineSource source(m_folder.file("held", bytes));
            QVERIFY(source.canHold(4)); // the fourth line may be missing
            QVERIFY(!source.canHold(5));
            QVERIFY(!source.canHold(std::int64_t{1} << 40));
        }
    }

    void words() {
        for (uint code = 1; code <= 0x10FFFF; code += code < 0xFFFF ? 1 : 0x1000) {
            const std::string text = QString("a%1b").arg(QString::fromUcs4(&code, 1)).toStdString();
            QCOMPARE(tintwell::wordCount(text), QChar::isSpace(code) ? 2U : 1U);
        }
        QCOMPARE(tintwell::wordCount(" a\t bc \v1"), 3U);
        QCOMPARE(tintwell::wordCount("\u00a0 a\u3000grün\u2028b\u0085"), 3U);
        QCOMPARE(tintwell::removeAll("in 4 in in5", "in"), std::string(" 4  5"));
        QCOMPARE(tintwell::removeAll("aabb", "ab"), std::string("ab"));
        QCOMPARE(tintwell::withoutBlanks(" 3 \u3000 grün"), std::string("3grün"));
        QCOMPARE(tintwell::toInt(" +17\t"), 17);
        QCOMPARE(tintwell::toInt("\uFEFF17"), 0);
        QCOMPARE(tintwell::toInt(std::string_view("17\0", 3)), 0);
    }

    void walksKeepTheEndRule() {
        for (const Walk& walk : walks) {
            LineSource lines(m_folder.file("walk", walk.text));
            const auto take = [](std::string_view line, int n) { return line[0] == 'a' + n; };
            const auto takeCell = [&](std::string_view line, int i, int j, int k) {
                return take(line, 4 * i + 2 * j + k);
            };
            std::int64_t found[] = {-1, -1};
            QCOMPARE(tintwell::walkEntries(lines, 8, take, &found[0]), walk.end);
            lines.rewind();
            QCOMPARE(tintwell::walkLattice(lines, 2, takeCell, &found[1]), walk.end);
            QCOMPARE(found[0], walk.found);
            QCOMPARE(found[1], walk.found);
        }
    }

    void headerLines() {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
        const auto header = [this](const QByteArray& text) {
            return tintwell::headerLines(m_folder.file("header", text));
        };
        QCOMPARE(header("TITLE grün\r\n#\n\n# a\tb\n# \x1b\n SIZE 2 \n-nan,+1e5 -inf\nlate\n"),
                 QStringList({"TITLE grün", "# a\tb", "SIZE 2"}));
        QCOMPARE(header("<look>\na"), QStringList());
        QCOMPARE(header("esc \x1b\nlate"), QStringList());
        QCOMPARE(header("last"), QStringList("last"));
        QCOMPARE(header(QByteArray("x").repeated(200)), QStringList(QString("x").repeated(100)));
        QCOMPARE(header(QByteArray("# w\n").repeated(20)).size(), 12);
        QCOMPARE(header(QByteArray("#\n").repeated(8190) + "# cut\n"), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestLineSource)
#include "test_line_source.moc"

#include "formats/text/line_source.h"
#include "formats/text/words.h"
#include "lut/header_lines.h"
#include "samples.h"

#include <QTextCodec>
#include <QTextStream>

using tintwell::LineSource;

namespace {

QByteArray bytes(std::string_view line) {
    return QByteArray(line.data(), static_cast<int>(line.size()));
}

QByteArray inCodec(const char* codec, const QString& text) {
    QTextCodec::ConverterState withMark;
    return QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &withMark);
}

/// Texts with and without a byte order mark, and bytes that are not well-formed.
QByteArrayList files() {
    const QString many = QString("grün 😀\u2003\r\n").repeated(20'000);
    const QString numbers = QString("0 1 2.5\n").repeated(40);
    QStringList texts = {many, numbers + "K 1\n" + numbers + "1 z\n" + numbers};
    texts += QString("|\n|\r| \n\ta\v\f\n  |a\r\n\rb\rc\r\r\n\r\nd|LUT \u3000\n\u0085 0 1\n\x1c 1 "
                     "\x1f\n\x7f\n\u00a0")
                 .split('|');
    QByteArrayList files = {"0\n\xC2",
                            "\xFF\xFE\n1 \xC3\n\xE4\xB8\n2 \xC3",
                            "gr\xFCn\n1 2 3\n",
                            "\xFF" + many.toUtf8(),
                            QByteArray("\xFF\xFE\x00\xD8\n\0001\0", 8),
                            QByteArray("0\0 1\n\0\n2", 8)};
    for (const QString& text : texts) {
        files += text.toUtf8();
        for (const char* const codec : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE"}) {
            files += inCodec(codec, text);
        }
    }
    return files;
}

} // namespace

class TestLineSource : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

private Q_SLOTS:
    void sameLinesAsQt() {
        for (const QByteArray& content : files()) {
            QFile file(m_folder.file("lines", content));
            file.open(QIODevice::ReadOnly | QIODevice::Text);
            QTextStream byQt(&file);
            byQt.setCodec("UTF-8");
            LineSource source(file.fileName());
            QByteArrayList withLetters;
            for (int n = 1; !byQt.atEnd(); ++n) {
                const QString line = byQt.readLine();
                const QByteArray expected = line.trimmed().toUtf8();
                const QByteArray all = line.toUtf8();
                QVERIFY(!source.atEnd());
                QCOMPARE(bytes(source.next()), expected);
                if (n % 1000 < 9) { // both take long
                    QCOMPARE(source.lineNumber(), n);
                    QCOMPARE(source.currentText().toUtf8(), expected);
                }
                if (std::any_of(all.begin(), all.end(), [](uchar c) { return c >= '@'; })) {
                    withLetters += expected;
                }
            }
            QVERIFY(source.atEnd() && source.next().empty());
            QCOMPARE(bytes({source.position(), 4}), QByteArray(4, '\0'));
            source.rewind();
            QByteArrayList found;
            while (source.skipToLetters()) {
                found += bytes(source.next());
            }
            QCOMPARE(found, withLetters);
            QVERIFY(source.atEnd());
        }
    }

    void knowsWhatItCanHold() {
        for (const QByteArray& content :
             {QByteArray("1\n2\n3"), QByteArray(5, '\xff'), inCodec("UTF-16LE", "1\n2\n3")}) {
            const LineSource source(m_folder.file("held", content));
            QVERIFY(source.canHold(4)); // the fourth line may be missing
            QVERIFY(!source.canHold(5) && !source.canHold(std::int64_t{1} << 40));
        }
    }

    void words() {
        for (uint code = 1; code <= 0x10FFFF; code += code < 0x10000 ? 1 : 0x1000) {
            const std::string text = QString("a%1b").arg(QString::fromUcs4(&code, 1)).toStdString();
            QCOMPARE(tintwell::wordCount(text), QChar::isSpace(code) ? 2U : 1U);
        }
        QCOMPARE(tintwell::wordCount(" a\t bc \v1"), 3U);
        QCOMPARE(tintwell::wordCount("\u00a0 a\u3000grün\u2028b\u0085"), 3U);
        QCOMPARE(bytes(tintwell::removeAll("in 4 in aab in5", "in")), " 4  aab 5");
        QCOMPARE(bytes(tintwell::removeAll("aabb", "ab")), "ab");
        QCOMPARE(bytes(tintwell::withoutBlanks(" 3 \u3000 grün")), "3grün");
        QCOMPARE(tintwell::toInt(" +17\t"), 17);
        QCOMPARE(tintwell::toInt("\uFEFF17"), 0);
        QCOMPARE(tintwell::toInt(std::string_view("17\0", 3)), 0);
    }

    void headerLines() {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
        const auto header = [this](const QByteArray& text) {
            return tintwell::headerLines(m_folder.file("header", text)).join('|');
        };
        QCOMPARE(header("grün\r\n#\n\n# a\tb\n# \x1b\n SIZE 2 \n-nan,+1e5\nlate\n"),
                 "grün|# a\tb|SIZE 2");
        QCOMPARE(header("<look>\nlate") + header("esc \x1b\nlate"), "");
        QCOMPARE(header(QByteArray(200, 'x')), QString(100, 'x'));
        QCOMPARE(header(QByteArray("# w\n").repeated(20)).count('w'), 12);
        QCOMPARE(header(QByteArray("#\n").repeated(8190) + "# cut\n"), "");
    }
};

QTEST_GUILESS_MAIN(TestLineSource)
#include "test_line_source.moc"

#include "formats/text/emit.h"
#include "formats/text/scan.h"
#include "formats/text/text_file.h"
#include "samples.h"

#include <QTextStream>

#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>

#include <locale.h> // <clocale> has no newlocale

// Numbers are read as the C library reads them and printed as the toolkit prints them.

using tintwell::scan;

namespace {

/// Compares with what the C library reads in its own locale as a \a Wide, values included.
template <typename T, typename Wide = T>
void compare(const QByteArray& text, const char* pattern) {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", nullptr);
    const T before[3] = {7, 7, 7};
    Wide wide[3] = {7, 7, 7};
    T found[3] = {7, 7, 7};
    const locale_t locale = uselocale(c);
    const int most = std::sscanf(text, pattern, wide, wide + 1, wide + 2);
    uselocale(locale);
    const T expected[3] = {T(wide[0]), T(wide[1]), T(wide[2])};
    const std::string_view line(text.data(), std::size_t(text.size()));
    const int count = scan(line, found[0], found[1], found[2]);
    const QByteArray what = text.toPercentEncoding(" ") + " as " + pattern;
    QVERIFY2(count == std::max(0, most) && !std::memcmp(found, expected, sizeof found), what);
    if constexpr (std::is_floating_point_v<T>) {
        T words[3] = {7, 7, 7};
        const bool three = text.simplified().count(' ') == 2;
        QCOMPARE(tintwell::scanWords(line, words[0], words[1], words[2]), three ? count : 0);
        QVERIFY2(!std::memcmp(words, three ? expected : before, sizeof words), what);
    }
}

void compareAll(const QByteArray& text) {
    constexpr auto integers = "%" SCNd64 " %" SCNd64 " %" SCNd64;
    compare<int, std::int64_t>(text, integers);
    compare<std::int64_t>(text, integers);
    compare<float>(text, "%f %f %f");
    compare<double>(text, "%lf %lf %lf");
}

using Print = std::function<void(QTextStream&)>;

QString streamed(const Print& print) {
    QString text;
    QTextStream out(&text);
    print(out);
    return text;
}

QString byQt(float value, QTextStream::RealNumberNotation notation, int width = 0) {
    return streamed([&](QTextStream& out) {
        out.setRealNumberNotation(notation);
        out.setFieldWidth(width);
        out << value;
    });
}

QString printed(char* (*print)(char*, float), float value) {
    char text[tintwell::MaxNumberText];
    return QString::fromLatin1(text, static_cast<int>(print(text, value) - text));
}

} // namespace

class TestNumbers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void oddNumbers() {
        const QByteArray texts =
            "| |\t\v 1\f2 3|1|1 2|1 2 3 4|1 2 x|x|-|+|.|-.|+-1|- 1|+1 +2 +3|.5 5. -.5|1e|"
            "1e+|1e5 1E-5 1e+5|1e5x|0x|0x1p3 0X.8 0x1|0x10 1|inf -inf INFINITY|infx|in|"
            "nan NAN(1) -nan|nan(|1,5 2,5|1;2|1e39 -1e39 1e400|1e-46 1e-400 4.9e-324|"
            "2147483647 2147483648 -2147483649|4294967297 9223372036854775807 9223372036854775808|"
            "99999999 123456789 12345678901|1.5.5|1..5|1-2|1 2 3.|1 2 +-3|"
            "00000000000000000000001 0.00000000000000000000001|1.00000005960464477539|"
            "1.00000005960464477540 1.00000005960464477538 0.1|16777217 16777219 33554435|"
            "9007199254740993 9007199254740992.5 123456789012345678901234567890|"
            "0.1234567 0.12345678 0.123456789|0.123456789012345678 1.2345678901234567 -0|"
            "340282346638528859811704183484516925440 340282356779733661637539395458142568448 1|"
            "1.1754942e-38 1.17549435e-38 1e-45|12345678 1234567.8 0.00000001|8.5e 1 1|"
            "1.0000000000000000000000001 1 1";
        for (const QByteArray& text : texts.split('|')) {
            compareAll(text);
        }
        float ignored = 0;
        QCOMPARE(scan(std::string_view("0.25 12345678", 8), ignored, ignored), 2);
        QCOMPARE(ignored, 123.0F); // a line can end within a longer text
    }

    void randomNumbers() {
        std::mt19937 random(20);
        const auto upTo = [&](unsigned n) { return static_cast<int>(random() % (n + 1)); };
        const QByteArray any("0123456789012345678901234567890.. +-eExpin\t/:\0\xB1", 47);
        for (int n = 0; n < 20'000; ++n) {
            QByteArray plausible;
            for (int v = 0; v < 3; ++v) {
                const double number = std::ldexp(double(random()), upTo(40) - 50);
                plausible += upTo(3) == 0 ? "-" : "";
                plausible += QByteArray::number(number, 'f', upTo(17));
                plausible += upTo(9) == 0 ? "\t " : " ";
            }
            compareAll(plausible);
            QByteArray uniform = "0.123456 9.876543 1.000000"; // the most common form of a line
            uniform[upTo(25)] = any[upTo(46)];
            compareAll(uniform);
            QByteArray text(upTo(24), ' ');
            std::generate(text.begin(), text.end(), [&] { return any[upTo(46)]; });
            compareAll(text);
        }
    }

    void printsAsQtDoes() {
        std::vector<float> values = {5e-7F,     1e-4F,     9.99999e-5F,   0.99999949F,   9.9999995F,
                                     99999.95F, 999999.5F, 4294967040.0F, 4294967296.0F, NAN};
        for (int n = -300; n < 300; ++n) { // every tie at six decimals is an odd multiple of 1/128
            values.push_back(static_cast<float>(n) / 128.0F);
            values.push_back(static_cast<float>(n) * 2.5F);
        }
        const auto add = [&](std::uint64_t from, std::uint64_t to, unsigned step) {
            for (std::uint64_t bits = from; bits <= to; bits += step) {
                values.push_back(0);
                std::memcpy(&values.back(), &bits, sizeof(float));
            }
        };
        add(0, 0xFFFFFFFFU, 40'009);
        add(0x35000000U, 0x4A000000U, 1'999); // 5e-7 to 2e6
        for (const float value : values) {
            QCOMPARE(printed(tintwell::printFixed, value), byQt(value, QTextStream::FixedNotation));
            QCOMPARE(printed(tintwell::printSmart, value), byQt(value, QTextStream::SmartNotation));
        }
    }

    void files() {
        const samples::Folder folder;
        QString error;
        QString expected;
        {
            tintwell::TextFile(folder.path("one byte"), error) << '\n';
            tintwell::TextFile out(folder.path("columns"), error);
            for (const float value : {0.5F, -0.5F, NAN, -INFINITY, 123.0F}) {
                out.fixedColumn(value);
                expected += byQt(value, QTextStream::FixedNotation, 8);
            }
        }
        QCOMPARE(folder.content("columns"), expected.toLatin1());
        QCOMPARE(error, "");
        tintwell::TextFile("/dev/full", error) << "lost";
        QCOMPARE(error, "No space left on device");
    }

    /// In every order and scale, whatever state the owner of the stream has set.
    void emittersPrintAsQtDoes() {
        const Print states[] = {
            [](QTextStream& out) { out.setRealNumberPrecision(2); },
            [](QTextStream& out) { out.setRealNumberNotation(QTextStream::ScientificNotation); },
            [](QTextStream& out) { out.setNumberFlags(QTextStream::ForceSign); },
            [](QTextStream& out) { out.setLocale(QLocale(QLocale::German)); },
            [](QTextStream& out) { out.setFieldWidth(9); },
        };
        const QString sep = "→";
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int i, int, int k) {
            return QVector<float>{i == 0 ? 0.9999999F : -0.9999F, k == 0 ? 3e38F : NAN, 1.5F};
        });
        for (int way = 0; way < 5 * 16; ++way) {
            const int scale = QVector<int>{0, 1, 2, 1023}[way % 4];
            const bool rgb = way / 4 % 2 == 0;
            Write_LUTFile writer(nullptr);
            writer.dataOrder = rgb;
            writer.tableOrder = way / 8 % 2 == 0;
            float* cell = writer.tableOrder ? lut.data3D[0][1][1] : lut.data3D[1][1][0];
            const auto put = [&](QTextStream& out, float value) -> QTextStream& {
                const float scaled = value * static_cast<float>(scale);
                constexpr qlonglong outside = std::numeric_limits<qlonglong>::min();
                return scale < 2 ? out << value
                                 : out << (scaled < 1e9F ? qlonglong(scaled) : outside);
            };
            const QString expected = streamed([&](QTextStream& out) {
                states[way / 16](out);
                for (const int c : {0, rgb ? 0 : 2, 1, rgb ? 2 : 0}) {
                    put(out, cell[c]) << sep;
                }
                out.setRealNumberNotation(QTextStream::FixedNotation);
                for (const int c : {rgb ? 0 : 2, 1, rgb ? 2 : 0}) {
                    out.setFieldWidth(scale < 2 ? 8 : 0);
                    put(out, cell[c]).setFieldWidth(0);
                    out << sep;
                }
            });
            QCOMPARE(streamed([&](QTextStream& out) {
                         states[way / 16](out);
                         writer.WhiteGamma(&cell, out, 0, scale, sep);
                         writer.White1D(&cell, out, 0, scale, sep);
                         writer.White3D(lut.data3D, out, 0, 1, 1, scale, sep);
                         out << (scale < 2 ? sep : QString());
                     }),
                     expected);
        }
    }
};

QTEST_GUILESS_MAIN(TestNumbers)
#include "test_numbers.moc"

#include "formats/text/scan.h"
#include "samples.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include <locale.h> // <clocale> has no newlocale

using tintwell::scan;

namespace {

/// How many numbers were converted, and the bytes of all three variables.
template <typename T>
QByteArray outcome(int converted, const T (&values)[3]) {
    return QByteArray::number(converted) + ' ' +
           QByteArray(reinterpret_cast<const char*>(values), sizeof values).toHex();
}

/// Compares with what the C library reads in its own locale.
template <typename T>
void compare(const std::string& text, const char* pattern) {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", nullptr);
    T byScan[3] = {7, 7, 7};
    T byLibrary[3] = {7, 7, 7};
    const QByteArray found = outcome(scan(text, byScan[0], byScan[1], byScan[2]), byScan);
    const locale_t before = uselocale(c);
    const int converted =
        std::sscanf(text.c_str(), pattern, byLibrary, byLibrary + 1, byLibrary + 2);
    uselocale(before);
    const QByteArray expected = outcome(std::max(0, converted), byLibrary);
    const QByteArray message =
        QByteArray::fromStdString(text).toPercentEncoding(" ") + " as " + pattern;
    QVERIFY2(found == expected, message);
    if constexpr (std::is_floating_point_v<T>) {
        T words[3] = {7, 7, 7};
        const bool three = QByteArray::fromStdString(text).simplified().count(' ') == 2;
        const int read = tintwell::scanWords(text, words[0], words[1], words[2]);
        QVERIFY2(outcome(read, words) == (three ? expected : outcome<T>(0, {7, 7, 7})), message);
    }
}

void compareAll(const std::string& text) {
    compare<int>(text, "%d %d %d");
    compare<long>(text, "%ld %ld %ld");
    compare<float>(text, "%f %f %f");
    compare<double>(text, "%lf %lf %lf");
}

} // namespace

class TestScan : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void oddNumbers() {
        const QByteArray texts =
            "| |\t\v 1\f2 3|1|1 2|1 2 3 4|1 2 x|x|-|+|.|-.|+-1|- 1|+1 +2 +3|.5 5. -.5|1e|"
            "1e+|1e5 1E-5 1e+5|1e5x|0x|0x1p3 0X.8 0x1|0x10 1|inf -inf INFINITY|infx|in|"
            "nan NAN(1) -nan|nan(|1,5 2,5|1;2|1e39 -1e39 1e400|1e-46 1e-400 4.9e-324|"
            "2147483647 2147483648 -2147483649|4294967297 9223372036854775807 9223372036854775808|"
            "99999999 123456789 12345678901|"
            "00000000000000000000001 0.00000000000000000000001|1.00000005960464477539|"
            "1.00000005960464477540 1.00000005960464477538 0.1|16777217 16777219 33554435|"
            "9007199254740993 9007199254740992.5 123456789012345678901234567890|"
            "0.1234567 0.12345678 0.123456789|0.123456789012345678 1.2345678901234567 -0|"
            "340282346638528859811704183484516925440 340282356779733661637539395458142568448 1|"
            "1.1754942e-38 1.17549435e-38 1e-45|1.5.5|1..5|1-2|1 2 3.|1 2 +-3|"
            "12345678 1234567.8 0.00000001|1.0000000000000000000000001 1 1|8.5e 1 1";
        for (const QByteArray& text : texts.split('|')) {
            compareAll(text.toStdString());
        }
        compareAll(std::string("1\0 2", 4));
        compareAll(std::string("1 \0", 3));
        compareAll(std::string("0.25 0.5 12345678", 12)); // ends within a longer text
        float ignored = 0;
        QCOMPARE(scan("\u00a01", ignored), 0);
    }

    void randomNumbers() {
        std::mt19937 random(20);
        const auto upTo = [&](unsigned n) { return static_cast<int>(random() % (n + 1)); };
        const std::string alphabet = "0123456789012345678901234567890.. +-eExpin";
        for (int n = 0; n < 10'000; ++n) {
            QByteArray plausible;
            for (int v = 0; v < 3; ++v) {
                plausible += upTo(3) == 0 ? "-" : "";
                plausible +=
                    QByteArray::number(std::ldexp(double(random()), upTo(40) - 50), 'f', upTo(17));
                plausible += upTo(9) == 0 ? "\t " : " ";
            }
            compareAll(plausible.toStdString());
            std::string any(static_cast<std::size_t>(upTo(24)), ' ');
            std::generate(any.begin(), any.end(),
                          [&] { return alphabet[random() % alphabet.size()]; });
            compareAll(any);
        }
    }

    /// The most common line, and every line that differs from it by one character.
    void uniformLines() {
        const std::string uniform = "0.123456 9.876543 1.000000";
        compareAll(uniform);
        for (std::size_t at = 0; at < uniform.size(); ++at) {
            for (const char other : std::string("09 \t./:-+ex\0\xB1", 13)) {
                std::string text = uniform;
                text[at] = other;
                compareAll(text);
            }
        }
    }

    void literals() {
        const auto pair = [](std::string_view text) {
            int values[] = {7, 7};
            const int read = scan(text, values[0], tintwell::Literal{','}, values[1]);
            return QVector<int>{read, values[0], values[1]};
        };
        QCOMPARE(pair("12,\t34"), (QVector<int>{2, 12, 34}));
        QCOMPARE(pair("7 ,8"), (QVector<int>{1, 7, 7}));
        QCOMPARE(pair("9"), (QVector<int>{1, 9, 7}));
        QCOMPARE(pair(",9"), (QVector<int>{0, 7, 7}));
    }
};

QTEST_GUILESS_MAIN(TestScan)
#include "test_scan.moc"

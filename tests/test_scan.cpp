#include "formats/text/scan.h"
#include "samples.h"

#include <cstdio>
#include <cstring>
#include <random>
#include <string>

using tintwell::scan;

namespace {

/// The C library's result for the text, in its own locale.
template <typename T>
QByteArray byLibrary(const char* pattern, const std::string& text) {
    T a = 7;
    T b = 7;
    T c = 7;
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    const int converted = std::max(0, std::sscanf(text.c_str(), pattern, &a, &b, &c));
    std::setlocale(LC_ALL, before.c_str());
    QByteArray result = QByteArray::number(converted);
    for (const T value : {a, b, c}) {
        result +=
            QByteArray(reinterpret_cast<const char*>(&value), sizeof value).toHex().prepend(' ');
    }
    return result;
}

template <typename T>
QByteArray byScan(const std::string& text) {
    T a = 7;
    T b = 7;
    T c = 7;
    QByteArray result = QByteArray::number(scan(text, a, b, c));
    for (const T value : {a, b, c}) {
        result +=
            QByteArray(reinterpret_cast<const char*>(&value), sizeof value).toHex().prepend(' ');
    }
    return result;
}

void compareAll(const std::string& text) {
    const auto check = [&](const QByteArray& actual, const QByteArray& expected) {
        QVERIFY2(actual == expected, (QByteArray::fromStdString(text).toPercentEncoding(" ") +
                                      ": " + actual + " for " + expected)
                                         .constData());
    };
    check(byScan<int>(text), byLibrary<int>("%d %d %d", text));
    check(byScan<long>(text), byLibrary<long>("%ld %ld %ld", text));
    check(byScan<float>(text), byLibrary<float>("%f %f %f", text));
    check(byScan<double>(text), byLibrary<double>("%lf %lf %lf", text));
}

} // namespace

class TestScan : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void oddNumbers() {
        const QByteArrayList texts =
            QByteArray(
                "| |\t\v 1\f2 3|1|1 2|1 2 3 4|1 2 x|x|-|+|.|-.|+-1|- 1|+1 +2 +3|.5 5. -.5|1e|"
                "1e+|1e5 1E-5 1e+5|1e5x|0x|0x1p3 0X.8 0x1|0x10 1|inf -inf INFINITY|infx|in|"
                "nan NAN(1) -nan|nan(|1,5 2,5|1;2|1e39 -1e39 1e400|1e-46 1e-400 4.9e-324|"
                "2147483647 2147483648 -2147483649|"
                "4294967297 9223372036854775807 9223372036854775808|"
                "99999999 123456789 12345678901|"
                "00000000000000000000001 0.00000000000000000000001|1.00000005960464477539|"
                "1.00000005960464477540 1.00000005960464477538 0.1|16777217 16777219 33554435|"
                "9007199254740993 9007199254740992.5 123456789012345678901234567890|"
                "0.1234567 0.12345678 0.123456789|0.123456789012345678 1.2345678901234567 -0|"
                "340282346638528859811704183484516925440 340282356779733661637539395458142568448 1|"
                "1.1754942e-38 1.17549435e-38 1e-45|1.5.5|1..5|1-2|1 2 3.|\u00a01|"
                "12345678 1234567.8 0.00000001|1.0000000000000000000000001 1 1|8.5e 1 1")
                .split('|');
        for (const QByteArray& text : texts) {
            compareAll(text.toStdString());
        }
        compareAll(std::string("1\0 2", 4));
        compareAll(std::string("1 \0", 3));
        compareAll(std::string("0.25 0.5 12345678", 12)); // ends within a longer text
    }

    void randomNumbers() {
        std::mt19937 random(20);
        const auto upTo = [&](unsigned n) { return static_cast<int>(random() % (n + 1)); };
        const std::string alphabet = "0123456789012345678901234567890.. +-eExpin";
        for (int n = 0; n < 30'000; ++n) {
            std::string text;
            if (n % 2 == 0) { // a plausible number
                for (int v = 0; v < 3; ++v) {
                    char number[64];
                    std::snprintf(number, sizeof number, "%s%.*f", upTo(3) == 0 ? "-" : "",
                                  upTo(17), std::ldexp(double(random()), upTo(40) - 50));
                    text += number;
                    text += upTo(9) == 0 ? "\t " : " ";
                }
            } else {
                for (int length = upTo(24); length > 0; --length) {
                    text += alphabet[random() % alphabet.size()];
                }
            }
            std::replace(text.begin(), text.end(), ',', '.'); // as printed in this locale
            compareAll(text);
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
        int index = 5;
        int value = 6;
        QCOMPARE(scan("12,\t34", index, tintwell::Literal{','}, value), 2);
        QCOMPARE(index * 100 + value, 1234);
        QCOMPARE(scan("7 ,8", index, tintwell::Literal{','}, value), 1);
        QCOMPARE(value, 34);
        QCOMPARE(scan("9", index, tintwell::Literal{','}, value), 1);
        QCOMPARE(scan(",9", index, tintwell::Literal{','}, value), 0);
    }
};

QTEST_GUILESS_MAIN(TestScan)
#include "test_scan.moc"

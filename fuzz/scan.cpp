// The number scanner against the C library's formatted input.

#include "harness.h"

#include "formats/text/scan.h"
#include "formats/text/words.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

template <typename Number>
struct Numbers {
    int converted = 0;
    Number values[3] = {7, 7, 7};

    bool operator==(const Numbers& other) const {
        return converted == other.converted &&
               std::memcmp(values, other.values, sizeof values) == 0;
    }
};

/// The numbers that \a scan(a, b, c) converts.
template <typename Number, typename Scan>
Numbers<Number> numbersBy(Scan&& scan) {
    Numbers<Number> found;
    auto& [a, b, c] = found.values;
    found.converted = std::max(0, scan(a, b, c));
    return found;
}

template <typename Number>
Numbers<Number> byScanner(std::string_view line) {
    return numbersBy<Number>([&](auto&... values) { return tintwell::scan(line, values...); });
}

template <typename Number>
Numbers<Number> byWords(std::string_view line) {
    return numbersBy<Number>([&](auto&... values) { return tintwell::scanWords(line, values...); });
}

template <typename Number>
Numbers<Number> byLibrary(const std::string& line, const char* pattern) {
    return numbersBy<Number>(
        [&](auto&... values) { return std::sscanf(line.c_str(), pattern, &values...); });
}

template <typename Number>
void compareWords(std::string_view line) {
    const auto expected =
        tintwell::wordCount(line) == 3 ? byScanner<Number>(line) : Numbers<Number>();
    fuzz::require(byWords<Number>(line) == expected, "words are scanned like a line");
}

void compareCodes(std::string_view line, const std::string& text) {
    int found[2] = {7, 7};
    int expected[2] = {7, 7};
    const int converted = tintwell::scan(line, found[0], tintwell::Literal{','}, found[1]);
    const int wanted = std::max(0, std::sscanf(text.c_str(), "%d,%d", &expected[0], &expected[1]));
    fuzz::require(converted == wanted && found[0] == expected[0] && found[1] == expected[1],
                  "%d,%d is scanned like formatted input");
}

} // namespace

void fuzz::run(std::string_view input) {
    // A line of valid UTF-8, as from the line source; the scanner must not read past its end.
    const std::string_view line = input.substr(0, input.find('\n'));
    const std::string text(line);
    require(byScanner<int>(line) == byLibrary<int>(text, "%d %d %d"), "int");
    require(byScanner<long>(line) == byLibrary<long>(text, "%ld %ld %ld"), "long");
    require(byScanner<float>(line) == byLibrary<float>(text, "%f %f %f"), "float");
    require(byScanner<double>(line) == byLibrary<double>(text, "%lf %lf %lf"), "double");
    compareWords<float>(line);
    compareWords<double>(line);
    compareCodes(line, text);
}

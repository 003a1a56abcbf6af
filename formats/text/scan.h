#pragma once

#include "formats/text/decimal.h"
#include "formats/text/words.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace tintwell {

/// Matches a fixed character, such as the comma in "%d,%d".
struct Literal {
    char character;
};

/// Finds out whether the numbers so far are all that the line holds.
struct LineEnd {
    bool isReached = false;
};

/// Whether a value of scan() is a number.
template <typename Value>
inline constexpr bool isNumber = !std::is_same_v<Value, Literal> && !std::is_same_v<Value, LineEnd>;

namespace detail {

// Each of these parses what is at the front of [at, end) and returns the position after it, or null
// if it is not there. Plain pointers stay in registers, which matters in the sample loops.

inline const char* skipBlanks(const char* at, const char* end) {
    while (at != end && isBlank(*at)) {
        ++at;
    }
    return at;
}

inline bool isDigit(const char* at, const char* end) {
    return at != end && *at >= '0' && *at <= '9';
}

inline bool isBlankOrEnd(const char* at, const char* end) {
    return at == end || isBlank(*at);
}

inline const char* skipSign(const char* at, const char* end, bool& negative) {
    negative = at != end && *at == '-';
    return at != end && (*at == '-' || *at == '+') ? at + 1 : at;
}

/// A real number in one of the common forms, followed by white space or the end of the line. The
/// line begins at \a first.
const char* parseCommonReal(const char* at, const char* first, const char* end, float& value);
const char* parseCommonReal(const char* at, const char* first, const char* end, double& value);

/// The value of "0.123456" and similar.
template <typename Real>
bool readSixDecimals(const char* at, Real& value) {
    std::uint32_t millionths = 0;
    if (!evaluateSixDecimals(loadEight(at), millionths)) {
        return false;
    }
    value = static_cast<Real>(millionths) / Real{1'000'000};
    return true;
}

/// A line consisting only of numbers with six decimals, separated by single blanks, as in most
/// lattice files. Values set before it fails are correct all the same.
template <typename... Reals>
bool parseSixDecimalsEach(std::string_view line, Reals&... values) {
    constexpr std::size_t width = 9;
    if (line.size() != width * sizeof...(values) - 1) {
        return false;
    }
    const char* at = line.data();
    const char* const last = at + line.size() - (width - 1);
    const auto next = [&](auto& value) {
        const char* const number = std::exchange(at, at + width);
        return (number == last || number[width - 1] == ' ') && readSixDecimals(number, value);
    };
    return (next(values) && ...);
}

/// Any number that formatted input accepts.
const char* parseAnyNumber(const char* at, const char* end, float& value);
const char* parseAnyNumber(const char* at, const char* end, double& value);
const char* parseAnyNumber(const char* at, const char* end, int& value);
const char* parseAnyNumber(const char* at, const char* end, std::int64_t& value);

template <typename Real, std::enable_if_t<std::is_floating_point_v<Real>, int> = 0>
const char* parse(const char* at, const char* first, const char* end, Real& value) {
    const char* const after = parseCommonReal(at, first, end, value);
    return after != nullptr ? after : parseAnyNumber(at, end, value);
}

/// An integer may be followed by anything.
template <typename Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
const char* parse(const char* at, const char* /*first*/, const char* end, Integer& value) {
    bool negative = false;
    const char* const digits = skipSign(skipBlanks(at, end), end, negative);
    const char* const last = end - digits > 9 ? digits + 9 : end; // nine digits fit any integer
    const char* after = digits;
    Integer magnitude = 0;
    for (; isDigit(after, last); ++after) {
        magnitude = magnitude * 10 + (*after - '0');
    }
    if (after == digits) {
        return nullptr;
    }
    if (isDigit(after, end)) {
        return parseAnyNumber(at, end, value);
    }
    value = negative ? -magnitude : magnitude;
    return after;
}

inline const char* parse(const char* at, const char* /*first*/, const char* end, LineEnd& lineEnd) {
    lineEnd.isReached = at == end;
    return at;
}

inline const char* parse(const char* at, const char* /*first*/, const char* end, Literal expected) {
    return at != end && *at == expected.character ? at + 1 : nullptr;
}

} // namespace detail

/// Reads numbers from the front of \a line, each after optional white space, exactly as formatted
/// input in the C locale reads 64-bit integers, float and double: signs, exponents, hexadecimal
/// floats, inf and nan, out-of-range values, a NUL as the end. An int gets the lower 32 bits of
/// such an integer. Returns how many were converted; variables from the first failure on keep their
/// values.
///
/// Always inlined, because in the loops over samples the numbers must stay in registers.
template <typename... Values>
[[gnu::always_inline]] inline int scan(std::string_view line, Values&&... values) {
    if constexpr ((std::is_floating_point_v<std::decay_t<Values>> && ...)) {
        if (detail::parseSixDecimalsEach(line, values...)) {
            return sizeof...(values);
        }
    }
    const char* const first = line.data();
    const char* const end = first + line.size();
    const char* at = first;
    int converted = 0;
    const auto next = [&](auto& value) {
        at = detail::parse(at, first, end, value);
        converted += at != nullptr && isNumber<std::decay_t<decltype(value)>>;
        return at != nullptr;
    };
    static_cast<void>((next(values) && ...));
    return converted;
}

/// The same for a line with exactly as many words as there are values. Returns 0, with nothing
/// changed, for a line with fewer words or more.
template <typename... Reals>
int scanWords(std::string_view line, Reals&... values) {
    constexpr int wanted = sizeof...(values);
    const char* const first = line.data();
    const char* const end = first + line.size();
    const char* at = first;
    std::tuple<Reals...> found;
    const auto next = [&](auto& value) {
        at = detail::parseCommonReal(at, first, end, value);
        return at != nullptr;
    };
    if (std::apply([&](auto&... value) { return (next(value) && ...); }, found) && at == end) {
        std::tie(values...) = found;
        return wanted;
    }
    return wordCount(line) == wanted ? scan(line, values...) : 0;
}

} // namespace tintwell

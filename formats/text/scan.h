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

/// Matches a character that must come next, such as the comma of "%d,%d".
struct Literal {
    char character;
};

namespace detail {

// Each of these takes what stands at the front of [at, end) and returns the place behind it, or
// null where it does not stand there. Plain pointers stay in registers, which counts in the sample
// loops.

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

/// A real number in one of the common forms, ended by white space or the line, which begins at
/// \a first.
const char* takeCommon(const char* at, const char* first, const char* end, float& value);
const char* takeCommon(const char* at, const char* first, const char* end, double& value);

/// The value of "0.123456" and the like.
template <typename Real>
bool readSixDecimals(const char* at, Real& value) {
    std::uint32_t millionths = 0;
    if (!evaluateSixDecimals(loadEight(at), millionths)) {
        return false;
    }
    value = static_cast<Real>(millionths) / Real{1'000'000};
    return true;
}

/// A line of nothing but numbers of six decimals with single blanks between them: most lattices are
/// written so. What it sets before it fails is what stands there all the same.
template <typename... Reals>
bool takeSixDecimalsEach(std::string_view line, Reals&... values) {
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

/// Every number that formatted input knows.
const char* takeAny(const char* at, const char* end, float& value);
const char* takeAny(const char* at, const char* end, double& value);
const char* takeAny(const char* at, const char* end, int& value);
const char* takeAny(const char* at, const char* end, long& value);

template <typename Real, std::enable_if_t<std::is_floating_point_v<Real>, int> = 0>
const char* take(const char* at, const char* first, const char* end, Real& value) {
    const char* const behind = takeCommon(at, first, end, value);
    return behind != nullptr ? behind : takeAny(at, end, value);
}

/// An integer needs no blank behind it.
template <typename Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
const char* take(const char* at, const char* /*first*/, const char* end, Integer& value) {
    bool negative = false;
    const char* const digits = skipSign(skipBlanks(at, end), end, negative);
    const char* const last = end - digits > 9 ? digits + 9 : end; // nine digits fit any integer
    const char* behind = digits;
    Integer magnitude = 0;
    for (; isDigit(behind, last); ++behind) {
        magnitude = magnitude * 10 + (*behind - '0');
    }
    if (behind == digits) {
        return nullptr;
    }
    if (isDigit(behind, end)) {
        return takeAny(at, end, value);
    }
    value = negative ? -magnitude : magnitude;
    return behind;
}

inline const char* take(const char* at, const char* /*first*/, const char* end, Literal expected) {
    return at != end && *at == expected.character ? at + 1 : nullptr;
}

} // namespace detail

/// Reads numbers off the front of \a line, each after optional white space, exactly as formatted
/// input in the C locale reads "%d", "%ld", "%f" and "%lf" for int, long, float and double: signs,
/// exponents, hexadecimal floats, inf and nan, out-of-range values, a NUL as the end.
/// Returns how many were converted; variables past the first failure keep their values.
template <typename... Values>
int scan(std::string_view line, Values&&... values) {
    if constexpr ((std::is_floating_point_v<std::decay_t<Values>> && ...)) {
        if (detail::takeSixDecimalsEach(line, values...)) {
            return sizeof...(values);
        }
    }
    const char* const first = line.data();
    const char* const end = first + line.size();
    const char* at = first;
    int converted = 0;
    const auto next = [&](auto& value) {
        at = detail::take(at, first, end, value);
        converted += at != nullptr && !std::is_same_v<std::decay_t<decltype(value)>, Literal>;
        return at != nullptr;
    };
    static_cast<void>((next(values) && ...));
    return converted;
}

/// The same for a line of exactly as many words as there are real values. 0, with nothing changed,
/// for a line of fewer words or more.
template <typename... Reals>
int scanWords(std::string_view line, Reals&... values) {
    constexpr int wanted = sizeof...(values);
    const char* const first = line.data();
    const char* const end = first + line.size();
    const char* at = first;
    std::tuple<Reals...> found;
    const auto next = [&](auto& value) {
        at = detail::takeCommon(at, first, end, value);
        return at != nullptr;
    };
    if (std::apply([&](auto&... value) { return (next(value) && ...); }, found) && at == end) {
        std::tie(values...) = found;
        return wanted;
    }
    return wordCount(line) == wanted ? scan(line, values...) : 0;
}

} // namespace tintwell

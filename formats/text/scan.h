#pragma once

#include "formats/text/decimal.h"
#include "formats/text/words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>

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

inline const char* takeDigits(const char* at, const char* end, Decimal& decimal) {
    for (; isDigit(at, end); ++at) {
        decimal.append(*at);
    }
    return at;
}

/// A plain decimal of no more digits than its quotient can do justice to.
template <typename Real>
const char* takePlainDecimal(const char* at, const char* end, Real& value) {
    bool negative = false;
    Decimal decimal;
    at = takeDigits(skipSign(at, end, negative), end, decimal);
    if (at != end && *at == '.') {
        const unsigned before = decimal.digits;
        at = takeDigits(at + 1, end, decimal);
        decimal.decimals = decimal.digits - before;
    }
    if (!decimal.isExact() || !isBlankOrEnd(at, end)) {
        return nullptr;
    }
    const double magnitude = decimal.quotient();
    return narrow(negative ? -magnitude : magnitude, value) ? at : nullptr;
}

/// The eight characters from \a at on; NUL for those that [first, end) lacks.
inline std::uint64_t eightAt(const char* at, const char* first, const char* end) {
    constexpr std::ptrdiff_t width = 8;
    const std::ptrdiff_t lacking = width - (end - at);
    if (lacking <= 0) {
        return loadEight(at);
    }
    if (lacking < width && end - first >= width) {
        return loadEight(end - width) >> static_cast<unsigned>(8 * lacking);
    }
    std::array<char, width> few{};
    std::copy(at, end, few.begin());
    return loadEight(few.data());
}

/// A real number in one of the common forms, ended by white space or the line, which begins at
/// \a first.
template <typename Real>
const char* takeCommon(const char* at, const char* first, const char* end, Real& value) {
    at = skipBlanks(at, end);
    const std::uint64_t eight = eightAt(at, first, end);
    std::uint32_t number = 0;
    if (evaluateSixDecimals(eight, number) && isBlankOrEnd(at + 8, end)) {
        value = static_cast<Real>(number) / Real{1'000'000};
        return at + 8;
    }
    const unsigned digits = evaluateInteger(eight, number);
    if (digits > 0 && isBlankOrEnd(at + digits, end)) {
        value = static_cast<Real>(number);
        return at + digits;
    }
    return takePlainDecimal(at, end, value);
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

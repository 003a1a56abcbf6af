#pragma once

#include "formats/text/decimal.h"
#include "formats/text/words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace tintwell {

/// Matches a character that must come next, such as the comma of "%d,%d".
struct Literal {
    char character;
};

namespace detail {

/// Reads one line from front to back.
class Cursor {
public:
    explicit Cursor(std::string_view line)
        : m_line(line.data()), m_at(m_line), m_end(m_line + line.size()) {}

    std::string_view rest() const { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }
    bool atEnd() const { return m_at == m_end; }
    bool atBlankOrEnd() const { return atEnd() || isBlank(*m_at); }
    char front() const { return *m_at; }
    void skip(std::size_t count) { m_at += count; }

    void skipBlanks() {
        while (!atEnd() && isBlank(front())) {
            ++m_at;
        }
    }

    bool skipIf(char c) {
        const bool matches = !atEnd() && front() == c;
        m_at += matches ? 1 : 0;
        return matches;
    }

    /// Skips a sign; true for a minus.
    bool skipSign() { return skipIf('-') || (skipIf('+'), false); }

    /// Skips "0.123456" and the like; false where another form stands.
    bool skipSixDecimals(std::uint32_t& millionths) {
        constexpr std::size_t width = 8;
        const auto rest = static_cast<std::size_t>(m_end - m_at);
        if (rest < width || (rest > width && !isBlank(m_at[width])) ||
            !takeSixDecimals(loadEight(m_at), millionths)) {
            return false;
        }
        m_at += width;
        return true;
    }

    /// Up to eight digits.
    Digits takeDigits() {
        const Digits digits = leadingDigits(nextEight());
        m_at += digits.count;
        return digits;
    }

private:
    /// The next eight characters; past the end of the line stand NULs.
    std::uint64_t nextEight() const {
        const auto rest = static_cast<std::size_t>(m_end - m_at);
        if (rest >= 8) {
            return loadEight(m_at);
        }
        if (m_end - m_line >= 8 && rest > 0) {
            return loadEight(m_end - 8) >> (8 * (8 - rest));
        }
        std::array<char, 8> padded{};
        std::copy(m_at, m_end, padded.begin());
        return loadEight(padded.data());
    }

    const char* m_line;
    const char* m_at;
    const char* m_end;
};

/// False for more digits than a decimal can count.
inline bool takeDigitRun(Cursor& cursor, Decimal& decimal) {
    Digits digits{};
    do {
        digits = cursor.takeDigits();
        decimal.append(digits);
    } while (digits.count == 8 && decimal.digits <= Decimal::MaxDigits);
    return digits.count < 8;
}

/// A plain decimal that ends at white space or with the line. False, with \a cursor moved anywhere,
/// for whatever else stands there and for digits that ask for more precision.
template <typename Real>
bool takePlainDecimal(Cursor& cursor, Real& value) {
    const bool negative = cursor.skipSign();
    Decimal decimal;
    if (!takeDigitRun(cursor, decimal)) {
        return false;
    }
    if (cursor.skipIf('.')) {
        const unsigned before = decimal.digits;
        if (!takeDigitRun(cursor, decimal)) {
            return false;
        }
        decimal.decimals = decimal.digits - before;
    }
    if (!decimal.isExact() || !cursor.atBlankOrEnd()) {
        return false;
    }
    const double magnitude = decimal.quotient();
    Real narrowed = 0;
    if (!narrow(negative ? -magnitude : magnitude, narrowed)) {
        return false;
    }
    value = narrowed;
    return true;
}

/// Every real number that formatted input knows.
bool takeAnyReal(Cursor& cursor, float& value);
bool takeAnyReal(Cursor& cursor, double& value);

template <typename Real>
bool takeReal(Cursor& cursor, Real& value) {
    cursor.skipBlanks();
    std::uint32_t millionths = 0;
    if (cursor.skipSixDecimals(millionths)) {
        value = static_cast<Real>(millionths) / Real{1'000'000};
        return true;
    }
    Cursor ahead = cursor;
    if (takePlainDecimal(ahead, value)) {
        cursor = ahead;
        return true;
    }
    return takeAnyReal(cursor, value);
}

inline bool take(Cursor& cursor, float& value) {
    return takeReal(cursor, value);
}
inline bool take(Cursor& cursor, double& value) {
    return takeReal(cursor, value);
}
bool take(Cursor& cursor, int& value);
bool take(Cursor& cursor, long& value);
inline bool take(Cursor& cursor, Literal expected) {
    return cursor.skipIf(expected.character);
}

} // namespace detail

/// Reads numbers off the front of \a line, each after optional white space, exactly as formatted
/// input in the C locale reads "%d", "%ld", "%f" and "%lf" for int, long, float and double: signs,
/// exponents, hexadecimal floats, inf and nan, out-of-range values, a NUL as the end.
/// Returns how many were converted; variables past the first failure keep their values.
template <typename... Values>
int scan(std::string_view line, Values&&... values) {
    detail::Cursor cursor{line};
    int converted = 0;
    const auto next = [&](auto& value) {
        if (!detail::take(cursor, value)) {
            return false;
        }
        converted += std::is_same_v<std::decay_t<decltype(value)>, Literal> ? 0 : 1;
        return true;
    };
    static_cast<void>((next(values) && ...));
    return converted;
}

} // namespace tintwell

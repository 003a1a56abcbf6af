#include "formats/text/scan.h"

#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <system_error>
#include <type_traits>

#include <locale.h>

namespace tintwell::detail {

namespace {

/// Formatted input reads by the thread's locale; here that is the C locale.
class CLocaleScope {
public:
    CLocaleScope()
        : m_c(newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr))),
          m_before(uselocale(m_c)) {}
    ~CLocaleScope() {
        uselocale(m_before);
        freelocale(m_c);
    }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    locale_t m_c;
    locale_t m_before;
};

constexpr const char* pattern(const int* /*type*/) {
    return "%d%n";
}
constexpr const char* pattern(const long* /*type*/) {
    return "%ld%n";
}
constexpr const char* pattern(const float* /*type*/) {
    return "%f%n";
}
constexpr const char* pattern(const double* /*type*/) {
    return "%lf%n";
}

/// Whatever the quick ways leave alone goes to the C library itself.
template <typename T>
bool takeFormatted(Cursor& cursor, T& value) {
    const std::string text(cursor.rest());
    const CLocaleScope scope;
    int length = 0;
    if (std::sscanf(text.c_str(), pattern(&value), &value, &length) != 1) {
        return false;
    }
    cursor.at += static_cast<std::size_t>(length);
    return true;
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Eight characters as a number whose lowest byte is the first character.
std::uint64_t loadEight(const char* from) {
    std::array<unsigned char, 8> bytes;
    std::memcpy(bytes.data(), from, bytes.size());
    std::uint64_t word = 0;
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        word |= std::uint64_t{bytes[n]} << (8 * n);
    }
    return word;
}

/// The decimal digits at the front of up to eight characters.
struct Digits {
    std::uint32_t value;
    unsigned count;
};

/// Finds the leading digits of eight characters and evaluates them, all at a time: the digits are
/// moved to the end of the word, then neighbours are joined to pairs, pairs to fours, fours to
/// eight.
Digits leadingDigits(std::uint64_t word) {
    word ^= 0x3030303030303030U; // digits become 0..9
    const std::uint64_t others = ((word + 0x7676767676767676U) | word) & 0x8080808080808080U;
    const unsigned count = others == 0 ? 8U : static_cast<unsigned>(__builtin_ctzll(others)) / 8U;
    if (count == 0) {
        return {0, 0};
    }
    word <<= 8U * (8U - count);
    word = word * 10 + (word >> 8U);
    constexpr std::uint64_t pairs = 0x000000FF000000FFU;
    const std::uint64_t high = (word & pairs) * (100U + (std::uint64_t{1'000'000U} << 32U));
    const std::uint64_t low = ((word >> 16U) & pairs) * (1U + (std::uint64_t{10'000U} << 32U));
    return {static_cast<std::uint32_t>((high + low) >> 32U), count};
}

/// A line as the quick ways see it.
class Reader {
public:
    explicit Reader(const Cursor& cursor)
        : m_line(cursor.line.data()), m_at(m_line + cursor.at), m_end(m_line + cursor.line.size()) {
        while (m_at != m_end && isBlank(*m_at)) {
            ++m_at;
        }
    }

    const char* position() const { return m_at; }
    bool atEnd() const { return m_at == m_end; }
    bool atBlankOrEnd() const { return atEnd() || isBlank(*m_at); }
    char front() const { return *m_at; }
    void skip() { ++m_at; }

    bool skipSign() {
        if (atEnd() || (front() != '-' && front() != '+')) {
            return false;
        }
        return *m_at++ == '-';
    }

    bool skipPoint() {
        if (atEnd() || front() != '.') {
            return false;
        }
        ++m_at;
        return true;
    }

    /// Up to eight digits.
    Digits takeDigits() {
        const Digits digits = leadingDigits(upToEight());
        m_at += digits.count;
        return digits;
    }

private:
    /// The next eight characters; past the end of the line stand NULs.
    std::uint64_t upToEight() const {
        const auto rest = static_cast<std::size_t>(m_end - m_at);
        if (rest >= 8) {
            return loadEight(m_at);
        }
        if (rest == 0) {
            return 0;
        }
        if (m_end - m_line >= 8) {
            return loadEight(m_end - 8) >> (8 * (8 - rest));
        }
        std::array<char, 8> padded{};
        std::memcpy(padded.data(), m_at, rest);
        return loadEight(padded.data());
    }

    const char* m_line;
    const char* m_at;
    const char* m_end;
};

/// Every integer up to 2^53 and each of these powers is exact in double precision, so that one
/// division gives the correctly rounded quotient.
constexpr std::array<double, 20> powersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                                1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                                1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
constexpr std::uint64_t exactBelow = std::uint64_t{1} << 53U;

constexpr std::array<std::uint64_t, 9> integerPowersOfTen = {
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};

/// What the mantissa below can count without wrapping.
constexpr unsigned MaxDigits = 19;

/// A plain decimal: digits, a point, digits.
struct Decimal {
    std::uint64_t mantissa = 0;
    unsigned decimals = 0;
    unsigned digits = 0;
};

/// False when there are more digits than the exact division can take.
bool takeDigitRun(Reader& reader, Decimal& decimal, bool afterPoint) {
    while (true) {
        const Digits digits = reader.takeDigits();
        decimal.mantissa = decimal.mantissa * integerPowersOfTen[digits.count] + digits.value;
        decimal.digits += digits.count;
        decimal.decimals += afterPoint ? digits.count : 0;
        if (digits.count < 8) {
            return true;
        }
        if (decimal.digits > MaxDigits) {
            return false;
        }
    }
}

/// Narrowing a correctly rounded double gives the correctly rounded float, unless the double lies
/// midway between two floats: then the digits that it has lost decide.
bool narrow(double exact, float& value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &exact, sizeof bits);
    if ((bits & 0x1FFFFFFFU) == 0x10000000U) {
        return false;
    }
    value = static_cast<float>(exact);
    return true;
}

bool narrow(double exact, double& value) {
    value = exact;
    return true;
}

template <typename T>
bool takePlainDecimal(Reader reader, Cursor& cursor, T& value) {
    const bool negative = reader.skipSign();
    Decimal decimal;
    if (!takeDigitRun(reader, decimal, false)) {
        return false;
    }
    if (reader.skipPoint() && !takeDigitRun(reader, decimal, true)) {
        return false;
    }
    if (decimal.digits == 0 || decimal.digits > MaxDigits || decimal.mantissa >= exactBelow ||
        !reader.atBlankOrEnd()) {
        return false;
    }
    const double exact = static_cast<double>(decimal.mantissa) / powersOfTen[decimal.decimals];
    if (!narrow(negative ? -exact : exact, value)) {
        return false;
    }
    cursor.at = static_cast<std::size_t>(reader.position() - cursor.line.data());
    return true;
}

/// Exponents and long mantissas.
template <typename T>
bool takeByCharconv(Reader reader, Cursor& cursor, T& value) {
    const bool negative = reader.skipSign();
    if (reader.atEnd() || !(isDigit(reader.front()) || reader.front() == '.')) {
        return false;
    }
    const char* const end = cursor.line.data() + cursor.line.size();
    T parsed = 0;
    const auto [stop, error] = std::from_chars(reader.position(), end, parsed);
    if (error != std::errc() || (stop != end && !isBlank(*stop))) {
        return false;
    }
    value = negative ? -parsed : parsed;
    cursor.at = static_cast<std::size_t>(stop - cursor.line.data());
    return true;
}

template <typename T>
bool takeReal(Cursor& cursor, T& value) {
    const Reader reader(cursor);
    if (reader.atEnd()) {
        return false;
    }
    if (takePlainDecimal(reader, cursor, value) || takeByCharconv(reader, cursor, value)) {
        return true;
    }
    const char first = reader.front();
    const bool mayBeNumber = isDigit(first) || std::strchr("+-.iInN", first) != nullptr;
    return mayBeNumber && takeFormatted(cursor, value);
}

template <typename T>
bool takeInteger(Cursor& cursor, T& value) {
    Reader reader(cursor);
    const bool negative = reader.skipSign();
    const Digits digits = reader.takeDigits();
    if (digits.count == 0) {
        return false;
    }
    if (digits.count == 8) {
        return takeFormatted(cursor, value);
    }
    value = static_cast<T>(digits.value);
    value = negative ? -value : value;
    cursor.at = static_cast<std::size_t>(reader.position() - cursor.line.data());
    return true;
}

} // namespace

bool take(Cursor& cursor, int& value) {
    return takeInteger(cursor, value);
}
bool take(Cursor& cursor, long& value) {
    return takeInteger(cursor, value);
}
bool take(Cursor& cursor, float& value) {
    return takeReal(cursor, value);
}
bool take(Cursor& cursor, double& value) {
    return takeReal(cursor, value);
}

} // namespace tintwell::detail

#include "formats/text/scan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <string>
#include <system_error>

#include <locale.h> // NOLINT(modernize-deprecated-headers): <clocale> has no newlocale

namespace tintwell::detail {

namespace {

/// The eight characters at \a at; NUL for those at or after \a end.
std::uint64_t eightAt(const char* at, const char* first, const char* end) {
    constexpr std::ptrdiff_t width = 8;
    const std::ptrdiff_t missing = width - (end - at);
    if (missing <= 0) {
        return loadEight(at);
    }
    if (missing < width && end - first >= width) {
        return loadEight(end - width) >> static_cast<unsigned>(8 * missing);
    }
    std::array<char, width> few{};
    std::copy(at, end, few.begin());
    return loadEight(few.data());
}

const char* parseDigits(const char* at, const char* end, Decimal& decimal) {
    for (; isDigit(at, end); ++at) {
        decimal.append(*at);
    }
    return at;
}

/// A plain decimal with few enough digits that its quotient is exact before rounding.
template <typename Real>
const char* parsePlainDecimal(const char* at, const char* end, Real& value) {
    bool negative = false;
    Decimal decimal;
    at = parseDigits(skipSign(at, end, negative), end, decimal);
    if (at != end && *at == '.') {
        const unsigned before = decimal.digits;
        at = parseDigits(at + 1, end, decimal);
        decimal.decimals = decimal.digits - before;
    }
    if (!decimal.isExact() || !isBlankOrEnd(at, end)) {
        return nullptr;
    }
    const double magnitude = decimal.quotient();
    return narrow(negative ? -magnitude : magnitude, value) ? at : nullptr;
}

template <typename Real>
const char* parseShortReal(const char* at, const char* first, const char* end, Real& value) {
    constexpr std::ptrdiff_t width = 8;
    at = skipBlanks(at, end);
    if (end - at >= width && isBlankOrEnd(at + width, end) && readSixDecimals(at, value)) {
        return at + width;
    }
    std::uint32_t integer = 0;
    const unsigned digits = evaluateInteger(eightAt(at, first, end), integer);
    if (digits > 0 && isBlankOrEnd(at + digits, end)) {
        value = static_cast<Real>(integer);
        return at + digits;
    }
    return parsePlainDecimal(at, end, value);
}

/// Sets the C locale for this thread while it lives: formatted input depends on it.
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

constexpr const char* pattern(const std::int64_t* /*type*/) {
    return "%" SCNd64 "%n";
}
constexpr const char* pattern(const float* /*type*/) {
    return "%f%n";
}
constexpr const char* pattern(const double* /*type*/) {
    return "%lf%n";
}

/// Fallback for numbers that the fast paths do not cover: calls the C library.
template <typename Number>
const char* parseFormatted(const char* at, const char* end, Number& value) {
    const std::string text(at, end);
    const CLocaleScope scope;
    int length = 0;
    return std::sscanf(text.c_str(), pattern(&value), &value, &length) == 1 ? at + length : nullptr;
}

/// For numbers with an exponent or a long mantissa.
template <typename Real>
const char* parseByCharconv(const char* at, const char* end, Real& value) {
    bool negative = false;
    at = skipSign(at, end, negative);
    if (!isDigit(at, end) && (at == end || *at != '.')) {
        return nullptr;
    }
    Real magnitude = 0;
    const auto [after, error] = std::from_chars(at, end, magnitude);
    if (error != std::errc() || !isBlankOrEnd(after, end)) {
        return nullptr;
    }
    value = negative ? -magnitude : magnitude;
    return after;
}

template <typename Real>
const char* parseUncommonReal(const char* at, const char* end, Real& value) {
    constexpr std::string_view starts = "0123456789+-.iInN";
    at = skipBlanks(at, end);
    if (at == end || starts.find(*at) == std::string_view::npos) {
        return nullptr;
    }
    const char* const after = parseByCharconv(at, end, value);
    return after != nullptr ? after : parseFormatted(at, end, value);
}

} // namespace

const char* parseCommonReal(const char* at, const char* first, const char* end, float& value) {
    return parseShortReal(at, first, end, value);
}

const char* parseCommonReal(const char* at, const char* first, const char* end, double& value) {
    return parseShortReal(at, first, end, value);
}

const char* parseAnyNumber(const char* at, const char* end, float& value) {
    return parseUncommonReal(at, end, value);
}

const char* parseAnyNumber(const char* at, const char* end, double& value) {
    return parseUncommonReal(at, end, value);
}

const char* parseAnyNumber(const char* at, const char* end, std::int64_t& value) {
    return parseFormatted(at, end, value);
}

const char* parseAnyNumber(const char* at, const char* end, int& value) {
    // Where long has 32 bits, the C library keeps what "%d" cannot hold at the limits; elsewhere it
    // keeps the lower bits, as here.
    std::int64_t wide = 0;
    const char* const after = parseFormatted(at, end, wide);
    if (after != nullptr) {
        value = static_cast<int>(wide);
    }
    return after;
}

} // namespace tintwell::detail

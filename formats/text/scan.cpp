#include "formats/text/scan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <system_error>

#include <locale.h> // NOLINT(modernize-deprecated-headers): <clocale> has no newlocale

namespace tintwell::detail {

namespace {

/// The eight characters from \a at on; NUL for those that [first, end) lacks.
std::uint64_t eightAt(const char* at, const char* first, const char* end) {
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

const char* takeDigits(const char* at, const char* end, Decimal& decimal) {
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

template <typename Real>
const char* takeShortReal(const char* at, const char* first, const char* end, Real& value) {
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
    return takePlainDecimal(at, end, value);
}

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
template <typename Number>
const char* takeFormatted(const char* at, const char* end, Number& value) {
    const std::string text(at, end);
    const CLocaleScope scope;
    int length = 0;
    return std::sscanf(text.c_str(), pattern(&value), &value, &length) == 1 ? at + length : nullptr;
}

/// Exponents and long mantissas.
template <typename Real>
const char* takeByCharconv(const char* at, const char* end, Real& value) {
    bool negative = false;
    at = skipSign(at, end, negative);
    if (!isDigit(at, end) && (at == end || *at != '.')) {
        return nullptr;
    }
    Real magnitude = 0;
    const auto [behind, error] = std::from_chars(at, end, magnitude);
    if (error != std::errc() || !isBlankOrEnd(behind, end)) {
        return nullptr;
    }
    value = negative ? -magnitude : magnitude;
    return behind;
}

template <typename Real>
const char* takeUncommonReal(const char* at, const char* end, Real& value) {
    constexpr std::string_view starts = "0123456789+-.iInN";
    at = skipBlanks(at, end);
    if (at == end || starts.find(*at) == std::string_view::npos) {
        return nullptr;
    }
    const char* const behind = takeByCharconv(at, end, value);
    return behind != nullptr ? behind : takeFormatted(at, end, value);
}

} // namespace

const char* takeCommon(const char* at, const char* first, const char* end, float& value) {
    return takeShortReal(at, first, end, value);
}

const char* takeCommon(const char* at, const char* first, const char* end, double& value) {
    return takeShortReal(at, first, end, value);
}

const char* takeAny(const char* at, const char* end, float& value) {
    return takeUncommonReal(at, end, value);
}

const char* takeAny(const char* at, const char* end, double& value) {
    return takeUncommonReal(at, end, value);
}

const char* takeAny(const char* at, const char* end, int& value) {
    return takeFormatted(at, end, value);
}

const char* takeAny(const char* at, const char* end, long& value) {
    return takeFormatted(at, end, value);
}

} // namespace tintwell::detail

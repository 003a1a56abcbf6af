#include "formats/text/scan.h"

#include <charconv>
#include <cstdio>
#include <string>
#include <system_error>

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
template <typename Number>
bool takeFormatted(Cursor& cursor, Number& value) {
    const std::string text(cursor.rest());
    const CLocaleScope scope;
    int length = 0;
    if (std::sscanf(text.c_str(), pattern(&value), &value, &length) != 1) {
        return false;
    }
    cursor.skip(static_cast<std::size_t>(length));
    return true;
}

/// Exponents and long mantissas.
template <typename Real>
bool takeByCharconv(Cursor& cursor, Real& value) {
    Cursor ahead = cursor;
    const bool negative = ahead.skipSign();
    const std::string_view text = ahead.rest();
    if (text.empty() || !(text.front() == '.' || (text.front() >= '0' && text.front() <= '9'))) {
        return false;
    }
    Real magnitude = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    ahead.skip(static_cast<std::size_t>(stop - text.data()));
    if (error != std::errc() || !ahead.atBlankOrEnd()) {
        return false;
    }
    value = negative ? -magnitude : magnitude;
    cursor = ahead;
    return true;
}

template <typename Real>
bool takeUncommonReal(Cursor& cursor, Real& value) {
    constexpr std::string_view starts = "0123456789+-.iInN";
    if (cursor.atEnd() || starts.find(cursor.front()) == std::string_view::npos) {
        return false;
    }
    return takeByCharconv(cursor, value) || takeFormatted(cursor, value);
}

template <typename Integer>
bool takeInteger(Cursor& cursor, Integer& value) {
    cursor.skipBlanks();
    Cursor ahead = cursor;
    const bool negative = ahead.skipSign();
    const Digits digits = ahead.takeDigits();
    if (digits.count == 0) {
        return false;
    }
    if (digits.count == 8) {
        return takeFormatted(cursor, value);
    }
    const auto magnitude = static_cast<Integer>(digits.value);
    value = negative ? -magnitude : magnitude;
    cursor = ahead;
    return true;
}

} // namespace

bool takeAnyReal(Cursor& cursor, float& value) {
    return takeUncommonReal(cursor, value);
}

bool takeAnyReal(Cursor& cursor, double& value) {
    return takeUncommonReal(cursor, value);
}

bool take(Cursor& cursor, int& value) {
    return takeInteger(cursor, value);
}

bool take(Cursor& cursor, long& value) {
    return takeInteger(cursor, value);
}

} // namespace tintwell::detail

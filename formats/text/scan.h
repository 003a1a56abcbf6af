#pragma once

#include "formats/text/words.h"

#include <cstddef>
#include <string_view>

namespace tintwell {

/// Matches a character that must come next, such as the comma of "%d,%d".
struct Literal {
    char character;
};

namespace detail {

/// Reads one line from front to back.
struct Cursor {
    std::string_view line;
    std::size_t at = 0;

    std::string_view rest() const { return line.substr(at); }
};

bool take(Cursor& cursor, int& value);
bool take(Cursor& cursor, long& value);
bool take(Cursor& cursor, float& value);
bool take(Cursor& cursor, double& value);

inline bool take(Cursor& cursor, Literal expected) {
    const bool matches =
        cursor.at < cursor.line.size() && cursor.line[cursor.at] == expected.character;
    cursor.at += matches ? 1 : 0;
    return matches;
}

template <typename T>
constexpr int isNumber = 1;
template <>
inline constexpr int isNumber<Literal> = 0;

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
        converted += detail::isNumber<std::decay_t<decltype(value)>>;
        return true;
    };
    static_cast<void>((next(values) && ...));
    return converted;
}

} // namespace tintwell

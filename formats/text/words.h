#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tintwell {

/// White space below 0x80, which Qt and formatted input define alike.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Whether a byte is part of a non-ASCII character.
constexpr bool isBeyondAscii(char c) {
    return (c & 0x80) != 0;
}

namespace detail {

std::string_view trimmedOfAnyBlanks(std::string_view text);

} // namespace detail

/// \a text without (Unicode) white space at its ends.
inline std::string_view trimmed(std::string_view text) {
    const char* first = text.data();
    const char* last = first + text.size();
    while (first != last && isBlank(*first)) {
        ++first;
    }
    while (first != last && isBlank(last[-1])) {
        --last;
    }
    const std::string_view rest(first, static_cast<std::size_t>(last - first));
    const bool ended = rest.empty() || !(isBeyondAscii(rest.front()) || isBeyondAscii(rest.back()));
    return ended ? rest : detail::trimmedOfAnyBlanks(rest);
}

constexpr bool startsWith(std::string_view line, std::string_view start) {
    return line.substr(0, start.size()) == start;
}

constexpr bool contains(std::string_view line, std::string_view word) {
    return line.find(word) != std::string_view::npos;
}

/// Whether a line is empty or begins with "#".
constexpr bool isBlankOrComment(std::string_view line) {
    return line.empty() || line.front() == '#';
}

/// \a line with every occurrence of \a word removed.
std::string removeAll(std::string_view line, std::string_view word);

/// \a line without any white space.
std::string withoutBlanks(std::string_view line);

/// Splits a line into words at runs of (Unicode) white space.
class WordReader {
public:
    explicit WordReader(std::string_view line) : m_rest(line) {}

    /// The next word; empty after the last.
    std::string_view next();

private:
    std::string_view m_rest;
};

std::size_t wordCount(std::string_view line);

/// Qt's conversion to an integer: surrounding white space and a plus sign are allowed, "17.0" is
/// not. 0 for anything else.
int toInt(std::string_view text);

/// Qt's conversion to a real number; 0 for anything else.
float toFloat(std::string_view text);
double toDouble(std::string_view text);

} // namespace tintwell

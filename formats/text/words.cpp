#include "formats/text/words.h"

#include "formats/text/decimal.h"

#include <QString>

#include <cstdint>

namespace tintwell {

namespace {

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// The length of the white space character at the front of \a text; 0 if another stands there.
std::size_t blankLength(std::string_view text) {
    if (static_cast<unsigned char>(text.front()) < 0x80) {
        return isBlank(text.front()) ? 1 : 0;
    }
    // Lines are well-formed UTF-8, and every white space character is of two or three bytes.
    const std::size_t length = (static_cast<unsigned char>(text.front()) & 0xE0U) == 0xC0U ? 2 : 3;
    const QString character = toQString(text.substr(0, length));
    return character.size() == 1 && character.front().isSpace() ? length : 0;
}

} // namespace

bool hasLetters(std::string_view line) {
    constexpr std::size_t width = 8;
    std::uint64_t seen = 0;
    std::size_t at = 0;
    for (; at + width <= line.size(); at += width) {
        seen |= loadEight(line.data() + at);
    }
    for (; at < line.size(); ++at) {
        seen |= static_cast<unsigned char>(line[at]);
    }
    return (seen & 0xC0C0C0C0C0C0C0C0U) != 0;
}

std::string without(std::string_view line, std::string_view word) {
    std::string rest;
    for (std::size_t at = line.find(word); at != std::string_view::npos; at = line.find(word)) {
        rest += line.substr(0, at);
        line.remove_prefix(at + word.size());
    }
    rest += line;
    return rest;
}

std::string withoutBlanks(std::string_view line) {
    std::string rest;
    for (const std::string_view word : words(line)) {
        rest += word;
    }
    return rest;
}

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> found;
    std::size_t start = 0;
    std::size_t at = 0;
    const auto endWord = [&] {
        if (at > start) {
            found.push_back(line.substr(start, at - start));
        }
    };
    while (at < line.size()) {
        const std::size_t blank = blankLength(line.substr(at));
        if (blank == 0) {
            ++at;
            continue;
        }
        endWord();
        at += blank;
        start = at;
    }
    endWord();
    return found;
}

int toInt(std::string_view text) {
    return toQString(text).toInt();
}

float toFloat(std::string_view text) {
    return toQString(text).toFloat();
}

double toDouble(std::string_view text) {
    return toQString(text).toDouble();
}

} // namespace tintwell

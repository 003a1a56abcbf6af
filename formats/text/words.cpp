#include "formats/text/words.h"

#include <QString>

#include <algorithm>

namespace tintwell {

namespace {

/// Qt drops a leading byte order mark, but within a file it is an ordinary character.
QString toQString(std::string_view text) {
    const QByteArray bytes = QByteArray(" ").append(text.data(), static_cast<int>(text.size()));
    return QString::fromUtf8(bytes.constData(), bytes.size()).mid(1);
}

/// The length of the white space character at the front of \a text; 0 if there is none.
std::size_t blankLength(std::string_view text) {
    if (!isBeyondAscii(text.front())) {
        return isBlank(text.front()) ? 1 : 0;
    }
    // Lines are well-formed UTF-8, and every white space character is of two or three bytes.
    const auto bits = [&](std::size_t at, unsigned mask) {
        return static_cast<unsigned char>(text[at]) & mask;
    };
    if (bits(0, 0xE0) == 0xC0 && text.size() >= 2) {
        return QChar::isSpace(bits(0, 0x1F) << 6U | bits(1, 0x3F)) ? 2 : 0;
    }
    if (bits(0, 0xF0) == 0xE0 && text.size() >= 3) {
        const unsigned code = bits(0, 0x0F) << 12U | bits(1, 0x3F) << 6U | bits(2, 0x3F);
        return QChar::isSpace(code) ? 3 : 0;
    }
    return 0;
}

/// The length of the white space character at the end of \a text; 0 if there is none.
std::size_t lastBlankLength(std::string_view text) {
    std::size_t start = text.size() - 1;
    while (start > 0 && (text[start] & 0xC0) == 0x80) { // inside a character
        --start;
    }
    const std::string_view last = text.substr(start);
    return blankLength(last) == last.size() ? last.size() : 0;
}

} // namespace

std::string_view detail::trimmedOfAnyBlanks(std::string_view text) {
    std::size_t blank = 0;
    while (!text.empty() && (blank = blankLength(text)) > 0) {
        text.remove_prefix(blank);
    }
    while (!text.empty() && (blank = lastBlankLength(text)) > 0) {
        text.remove_suffix(blank);
    }
    return text;
}

std::string removeAll(std::string_view line, std::string_view word) {
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
    WordReader words(line);
    for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
        rest += word;
    }
    return rest;
}

std::string_view WordReader::next() {
    std::size_t blank = 0;
    while (!m_rest.empty() && (blank = blankLength(m_rest)) > 0) {
        m_rest.remove_prefix(blank);
    }
    std::size_t length = 0;
    while (length < m_rest.size() && blankLength(m_rest.substr(length)) == 0) {
        ++length;
    }
    const std::string_view word = m_rest.substr(0, length);
    m_rest.remove_prefix(length);
    return word;
}

std::size_t wordCount(std::string_view line) {
    std::size_t count = 0;
    if (std::any_of(line.begin(), line.end(), isBeyondAscii)) {
        WordReader words(line);
        while (!words.next().empty()) {
            ++count;
        }
        return count;
    }
    bool afterBlank = true;
    for (const char c : line) {
        const bool blank = isBlank(c);
        count += afterBlank && !blank ? 1 : 0;
        afterBlank = blank;
    }
    return count;
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

#include "lut/text_file.h"

#include <charconv>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace tintwell {

namespace {

/// A pipe that nobody reads would hold the program up.
bool isPipe(const QString& path) {
    std::error_code ignored;
    return std::filesystem::is_fifo(QFile::encodeName(path).toStdString(), ignored);
}

} // namespace

TextFile::TextFile(const QString& path) : m_file(path), m_block(new char[BlockSize]) {
    if (!isPipe(path)) {
        m_file.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Unbuffered);
    }
}

TextFile::~TextFile() {
    flush();
}

TextFile& TextFile::operator<<(std::string_view text) {
    std::memcpy(room(text.size()), text.data(), text.size());
    m_used += text.size();
    return *this;
}

TextFile& TextFile::operator<<(char character) {
    *room(1) = character;
    ++m_used;
    return *this;
}

TextFile& TextFile::operator<<(std::int64_t number) {
    char* const to = room(MaxNumberText);
    m_used += static_cast<std::size_t>(std::to_chars(to, to + MaxNumberText, number).ptr - to);
    return *this;
}

void TextFile::fixedColumn(float value) {
    constexpr std::size_t width = 8;
    char* const to = room(MaxNumberText);
    auto length = static_cast<std::size_t>(printFixed(to, value) - to);
    if (length < width) { // only inf and nan are that short
        std::memmove(to + (width - length), to, length);
        std::memset(to, ' ', width - length);
        length = width;
    }
    m_used += length;
}

void TextFile::real(float value) {
    char* const to = room(MaxNumberText);
    m_used += static_cast<std::size_t>(printSmart(to, value) - to);
}

char* TextFile::room(std::size_t size) {
    if (m_used + size > BlockSize) {
        flush();
    }
    return &m_block[m_used];
}

void TextFile::flush() {
    if (isOpen() && m_used > 0) {
        m_file.write(m_block.get(), static_cast<qint64>(m_used));
    }
    m_used = 0;
}

} // namespace tintwell

#include "lut/text_file.h"

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

char* TextFile::alignRight(char* from, char* end, std::ptrdiff_t width) {
    const auto length = static_cast<std::size_t>(end - from);
    const std::size_t blanks = static_cast<std::size_t>(width) - length;
    std::memmove(from + blanks, from, length);
    std::memset(from, ' ', blanks);
    return from + width;
}

void TextFile::flush() {
    if (isOpen() && m_used > 0) {
        m_file.write(m_block.get(), static_cast<qint64>(m_used));
    }
    m_used = 0;
}

} // namespace tintwell

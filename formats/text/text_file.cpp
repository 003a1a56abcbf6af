#include "formats/text/text_file.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tintwell {

namespace {

/// Opening a pipe that has no reader would block.
bool isPipe(const QString& path) {
    std::error_code ignored;
    return std::filesystem::is_fifo(QFile::encodeName(path).toStdString(), ignored);
}

} // namespace

TextFile::TextFile(const QString& path, QString& error)
    : m_file(path), m_error(error), m_block(new char[BlockSize]) {
    if (isPipe(path)) {
        m_error = QStringLiteral("is a pipe, expected a file");
    } else if (!m_file.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Unbuffered)) {
        m_error = m_file.errorString();
    }
}

TextFile::~TextFile() {
    flush();
}

char* TextFile::alignRight(char* from, const char* end, std::ptrdiff_t width) {
    const auto length = static_cast<std::size_t>(end - from);
    const std::size_t blanks = static_cast<std::size_t>(width) - length;
    std::memmove(from + blanks, from, length);
    std::memset(from, ' ', blanks);
    return from + width;
}

void TextFile::flush() {
    const auto used = static_cast<qint64>(std::exchange(m_used, 0));
    qint64 written = 0;
    while (isOpen() && m_error.isEmpty() && written < used) {
        // A write may succeed in part and fail only at the next call.
        const qint64 count = m_file.write(m_block.get() + written, used - written);
        if (count <= 0) {
            m_error = m_file.errorString();
        }
        written += count;
    }
}

} // namespace tintwell

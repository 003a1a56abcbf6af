#include "lut/text_file.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace tintwell {

namespace {

/// A pipe that nobody reads would hold the program up.
bool isPipe(const QString& path) {
    std::error_code ignored;
    return std::filesystem::is_fifo(QFile::encodeName(path).toStdString(), ignored);
}

} // namespace

TextFile TextFile::forLattice(const QString& path, const Read_LUTFile& lut, QString& error) {
    return TextFile(path, error, lut.size3D > 0 && !lut.hasTable3D());
}

TextFile TextFile::forCurve(const QString& path, const Read_LUTFile& lut, QString& error) {
    return TextFile(path, error, lut.size1D > 0 && !lut.hasTable1D());
}

TextFile::TextFile(const QString& path, QString& error, bool tableIsMissing)
    : m_file(path), m_error(error), m_block(new char[BlockSize]) {
    if (tableIsMissing) {
        m_error = QStringLiteral("the table was not read");
    } else if (isPipe(path)) {
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
        // A write may take what there is room for, and fail the next time only.
        const qint64 count = m_file.write(m_block.get() + written, used - written);
        if (count <= 0) {
            m_error = m_file.errorString();
        }
        written += count;
    }
}

} // namespace tintwell

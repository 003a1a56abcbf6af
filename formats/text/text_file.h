#pragma once

#include "formats/text/emit.h"

#include <QFile>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace tintwell {

/// A text file being written: collects its text and passes it to the system in blocks. The
/// destructor writes the rest.
class TextFile {
public:
    /// Creates or empties the file. Pipes are not opened. \a error is set if opening or a write
    /// fails, at the latest in the destructor.
    TextFile(const QString& path, QString& error);
    /// A file that is not open.
    explicit TextFile(QString& error) : m_error(error) {}
    ~TextFile();
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

    bool isOpen() const { return m_file.isOpen(); }

    TextFile& operator<<(std::string_view text) {
        std::memcpy(room(text.size()), text.data(), text.size());
        m_used += text.size();
        return *this;
    }
    TextFile& operator<<(char character) {
        *room(1) = character;
        ++m_used;
        return *this;
    }
    TextFile& operator<<(std::int64_t number) {
        char* const to = room(MaxNumberText);
        return endAt(std::to_chars(to, to + MaxNumberText, number).ptr);
    }
    TextFile& operator<<(int number) { return *this << std::int64_t{number}; }

    // A sink for the layouts of emit.h; its own notation for real numbers is six significant
    // digits.
    void fixedColumn(float value) {
        constexpr std::ptrdiff_t width = 8;
        char* const to = room(MaxNumberText);
        char* end = printFixed(to, value);
        if (end - to < width) {
            end = alignRight(to, end, width);
        }
        endAt(end);
    }
    void real(float value) { endAt(printSmart(room(MaxNumberText), value)); }
    void integer(std::int64_t value) { *this << value; }
    void text(std::string_view sep) { *this << sep; }

private:
    static constexpr std::size_t BlockSize = std::size_t{256} * 1024;

    static char* alignRight(char* from, const char* end, std::ptrdiff_t width);
    void flush();

    char* room(std::size_t size) {
        if (m_used + size > BlockSize) {
            flush();
        }
        return &m_block[m_used];
    }
    TextFile& endAt(const char* end) {
        m_used = static_cast<std::size_t>(end - m_block.get());
        return *this;
    }

    QFile m_file;
    QString& m_error;
    std::unique_ptr<char[]> m_block;
    std::size_t m_used = 0;
};

} // namespace tintwell

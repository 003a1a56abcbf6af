#pragma once

#include "lut/emit.h"
#include "lut/read_lutfile.h"
#include "lut/strewn_planes.h"
#include "lut/write_lutfile.h"

#include <QFile>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace tintwell {

/// A text file being written: collects what is put into it and hands it to the system in blocks.
/// What is left goes out with the object.
class TextFile {
public:
    /// Creates or empties the file. A pipe is not opened. \a error is set where that or a write
    /// fails, at the latest when the object goes.
    TextFile(const QString& path, QString& error) : TextFile(path, error, false) {}
    /// The same for the table of a container. With only its size there, as after a probe, nothing
    /// is opened either.
    static TextFile forLattice(const QString& path, const Read_LUTFile& lut, QString& error);
    static TextFile forCurve(const QString& path, const Read_LUTFile& lut, QString& error);

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

    // A sink for the layouts of lut/emit.h; its own notation for real numbers is the smart one.
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
    TextFile(const QString& path, QString& error, bool tableIsMissing);

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

/// Prints the 3D table, one line a point, k fastest: what \a prefix(i, j, k) puts into the file,
/// then the cell in the writer's orders.
template <typename Prefix>
void emitLattice(TextFile& out, const Write_LUTFile& writer, const Read_LUTFile& lut,
                 std::int64_t scale, std::string_view sep, Prefix&& prefix) {
    const int n = lut.size3D;
    StrewnPlanes planes(lut.data3D, n);
    for (int i = 0; i < n; ++i) {
        const float* copy = writer.tableOrder ? nullptr : planes.copyOf(i);
        for (int j = 0; j < n; ++j) {
            for (int k = 0; k < n; ++k) {
                const float* const cell =
                    copy == nullptr ? lut.data3D[i][j][k] : std::exchange(copy, copy + 3);
                prefix(i, j, k);
                emitCell3D(out, cell, writer.dataOrder, scale, sep);
                out << '\n';
            }
        }
    }
}

/// The same without anything before the cell.
inline void emitLattice(TextFile& out, const Write_LUTFile& writer, const Read_LUTFile& lut,
                        std::int64_t scale, std::string_view sep) {
    emitLattice(out, writer, lut, scale, sep, [](int, int, int) {});
}

} // namespace tintwell

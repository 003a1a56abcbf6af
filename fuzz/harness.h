#pragma once

#include "lut/lutfile_st.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <string_view>

class QByteArray;
class Read_LUTFile;

// Shared by the fuzz targets. Each defines fuzz::run(); the harness turns Qt's messages off and
// calls it with the input.

namespace fuzz {

/// One run of a target, which must leave nothing behind.
void run(std::string_view input);

/// Reports a finding and ends the run unless \a holds.
void require(bool holds, const char* what);

/// A file in memory that holds the input of a run or receives its output.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content = {});
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// A path to the file, for code that opens files by path.
    QString path() const;
    QByteArray content() const;

private:
    int m_descriptor;
};

/// Reads choices from the front of an input, one character each: 'a' is the first.
class Choices {
public:
    explicit Choices(std::string_view input) : m_rest(input) {}

    int oneOf(int count);
    std::string_view rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

/// Checks, over its lifetime, the limit for a file under one MiB: 64 MiB of heap, counted in the C
/// library's blocks.
class HeapWatch {
public:
    static constexpr std::ptrdiff_t Limit = 64 << 20;

    HeapWatch();
    ~HeapWatch();
    HeapWatch(const HeapWatch&) = delete;
    HeapWatch& operator=(const HeapWatch&) = delete;
};

LUTFILE_ST request(const QString& path, int code);

/// Reads every cell, so that the sanitizer detects a table that is smaller than its size says. A
/// container that \a mustBeWhole has a table for each size.
void touch(const Read_LUTFile& lut, bool mustBeWhole = false);

} // namespace fuzz

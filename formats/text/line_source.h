#pragma once

#include "formats/text/decimal.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <string_view>

namespace tintwell {

/// The lines of a text file, trimmed of surrounding white space.
///
/// Yields what the toolkit's text stream would for the same bytes in a UTF-8 locale: carriage
/// returns are dropped, a byte order mark (UTF-8, UTF-16, UTF-32) decides the encoding, a last line
/// needs no line feed. The file is read once; lines are UTF-8 views into that memory and live as
/// long as their source.
class LineSource {
public:
    /// Opens and reads a regular file, and puts its path into the trace.
    explicit LineSource(const QString& path);

    bool isOpen() const { return m_open; }
    /// Why it is not open.
    QString error() const { return m_error; }
    bool atEnd() const { return m_next == m_end; }
    /// The next line; empty at the end.
    std::string_view next();
    void rewind() { m_next = m_start; }
    /// Takes the next line if it is three integers of at most seven digits, with single blanks
    /// between them: a sample of codes, as most are. False for any other line, which is still to
    /// come.
    bool takeCodes(std::array<std::uint32_t, 3>& codes);
    /// Moves on to the next line with a letter in it, or any other character from '@' on; false
    /// when none is left. What it passes are numbers: no keyword can be among them.
    bool skipToLetters();

    // For messages: the number of the line that next() gave, from 1 on, and that line. Both are
    // found by going through the text once more.
    int lineNumber() const;
    QString currentText() const;

    /// Whether the file is long enough for \a lines non-empty lines, the last of which may be
    /// missing: a table that needs more can not be filled, so it need not be allocated.
    bool canHold(std::int64_t lines) const;

private:
    /// NULs after the text, to be looked at by whoever takes several characters at a time.
    static constexpr int Padding = 4;

    bool read(const QString& path);
    /// Makes a text of so many bytes the one to be read, with room for what normalise() adds.
    void adopt(QByteArray text, std::ptrdiff_t size);
    /// Where the line that next() gave begins.
    const char* currentLine() const;
    void normalise();
    void removeReturns();
    void convertToUtf8();

    QByteArray m_text;
    char* m_start = nullptr;
    char* m_end = nullptr;
    std::int64_t m_growth = 0; ///< bytes that a conversion has added to one a character
    const char* m_next = nullptr;
    bool m_open = false;
    QString m_error;
};

inline bool LineSource::takeCodes(std::array<std::uint32_t, 3>& codes) {
    static constexpr std::array<char, 3> behind = {' ', ' ', '\n'};
    constexpr unsigned most = 7;
    const char* at = m_next;
    for (std::size_t n = 0; n < codes.size(); ++n) {
        const unsigned digits = evaluateDigits(at, codes[n]);
        at += digits;
        if (digits == 0 || digits > most || *at++ != behind[n]) {
            return false;
        }
    }
    m_next = at;
    return true;
}

} // namespace tintwell

#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace tintwell {

/// The lines of a text file, trimmed of surrounding white space.
///
/// Yields what QTextStream would for the same bytes in a UTF-8 locale: carriage returns are
/// dropped, a byte order mark (UTF-8, UTF-16, UTF-32) selects the encoding, and the last line needs
/// no line feed. The file is read once; lines are UTF-8 views into that memory and live as long as
/// their source.
class LineSource {
public:
    /// Opens and reads a regular file, and traces its path.
    explicit LineSource(const QString& path);

    bool isOpen() const { return m_open; }
    /// Why the source is not open.
    QString error() const { return m_error; }
    bool atEnd() const { return m_next == m_end; }
    /// The next line; empty at the end.
    std::string_view next();
    void rewind() { m_next = m_start; }
    /// The start of the next line, for callers that parse it themselves and then call moveTo().
    /// Four characters can be read even at the end, where they are NUL.
    const char* position() const { return m_next; }
    void moveTo(const char* position) { m_next = position; }
    /// Moves on to the next line that contains a letter, or any other character from '@' on; false
    /// if there is none. The lines it skips can only hold numbers, not keywords.
    bool skipToLetters();

    // For messages: the number of the line that next() gave last, counting from 1, and its text.
    // Both are found by scanning the text again.
    int lineNumber() const;
    std::string_view current() const;
    /// At most \a most characters of the text.
    QString currentText(int most = std::numeric_limits<int>::max()) const;
    /// Whether carriage returns stand where line feeds should: the text has returns and no line
    /// feed.
    bool hasOnlyReturns() const { return m_hasOnlyReturns; }

    /// Whether the file is long enough for \a lines non-empty lines, of which the last may be
    /// missing. A table that needs more cannot be filled and should not be allocated.
    bool canHold(std::int64_t lines) const;

private:
    /// NULs after the text, so that several characters can be read at once
    static constexpr int Padding = 4;

    bool read(const QString& path);
    /// Takes over \a size bytes of \a text and makes room for what normalise() adds.
    void adopt(QByteArray text, std::ptrdiff_t size);
    /// The start of the line that next() gave last.
    const char* currentLine() const;
    void normalise();
    void removeReturns();
    void convertToUtf8();

    QByteArray m_text;
    char* m_start = nullptr;
    char* m_end = nullptr;
    std::int64_t m_growth = 0; ///< bytes added by the conversion to UTF-8
    const char* m_next = nullptr;
    bool m_open = false;
    bool m_hasOnlyReturns = false;
    QString m_error;
};

} // namespace tintwell

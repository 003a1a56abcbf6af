#include "formats/text/line_source.h"

#include "formats/text/decimal.h"
#include "formats/text/words.h"
#include "lut/bounded_read.h"
#include "lut/trace.h"

#include <QTextCodec>

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <utility>

namespace tintwell {

namespace {

bool isAscii(const char* from, const char* to) {
    // One flag for the whole text lets the compiler process many bytes at a time.
    unsigned char seen = 0;
    for (; from != to; ++from) {
        seen |= static_cast<unsigned char>(*from);
    }
    return seen < 0x80;
}

/// Letters, as defined by skipToLetters(), are the characters from '@' on.
bool isLetter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0;
}

bool hasLetters(std::uint64_t eight) {
    return (eight & 0xC0C0C0C0C0C0C0C0U) != 0;
}

constexpr const char* byteOrderMark = "\xEF\xBB\xBF";

/// Decodes \a bytes in pieces: as one QString the whole text would take twice the size of the file,
/// or more. At the end, \a state says whether any bytes were invalid.
template <typename Take>
void decode(const QByteArray& bytes, const QTextCodec& codec, QTextCodec::ConverterState& state,
            Take&& take) {
    constexpr int pieceSize = 1 << 16;
    for (int at = 0; at < bytes.size(); at += pieceSize) {
        const int size = std::min(pieceSize, bytes.size() - at);
        take(codec.toUnicode(bytes.constData() + at, size, &state));
    }
}

bool isWellFormed(const QByteArray& bytes, const QTextCodec& codec) {
    QTextCodec::ConverterState state;
    decode(bytes, codec, state, [](const QString& /*piece*/) {});
    return state.invalidChars == 0 && state.remainingChars == 0;
}

} // namespace

LineSource::LineSource(const QString& path) {
    try {
        m_open = read(path);
    } catch (const std::bad_alloc&) {
        m_error = QStringLiteral("not enough memory for the file");
    }
}

bool LineSource::read(const QString& path) {
    std::optional<QByteArray> content = readBounded(path, m_error);
    if (!content) {
        return false;
    }
    qCDebug(formatTrace) << "file:-----" << path;
    const int size = content->size();
    adopt(std::move(*content), size);
    normalise();
    rewind();
    return true;
}

void LineSource::adopt(QByteArray text, std::ptrdiff_t size) {
    constexpr int lineFeed = 1;
    m_text = std::move(text);
    m_text.resize(static_cast<int>(size) + lineFeed + Padding);
    m_start = m_text.data();
    m_end = m_start + size;
}

void LineSource::normalise() {
    const bool hasBytes = m_end != m_start;
    if (!isAscii(m_start, m_end)) {
        convertToUtf8();
    }
    removeReturns();
    if (hasBytes && m_end == m_start) {
        *m_end++ = '\n'; // QTextStream gives one empty line if no text is left of the bytes
    }
    std::fill_n(m_end, Padding, '\0');
}

void LineSource::removeReturns() {
    const auto has = [this](char c) {
        return std::memchr(m_start, c, static_cast<std::size_t>(m_end - m_start)) != nullptr;
    };
    if (has('\r')) {
        m_hasOnlyReturns = !has('\n');
        m_end = std::remove(m_start, m_end, '\r');
    }
}

void LineSource::convertToUtf8() {
    const auto size = static_cast<int>(m_end - m_start);
    const QByteArray bytes = QByteArray::fromRawData(m_start, size);
    QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    const QTextCodec* const codec = QTextCodec::codecForUtfText(bytes, utf8);
    if (codec->mibEnum() == utf8->mibEnum() && isWellFormed(bytes, *codec)) {
        m_start += bytes.startsWith(byteOrderMark) ? std::strlen(byteOrderMark) : 0;
        return;
    }
    constexpr int growth = 3; // at most: an invalid byte becomes a replacement character
    QByteArray text(growth * size, Qt::Uninitialized);
    char* end = text.data();
    std::int64_t characters = 0;
    QTextCodec::ConverterState decoder;
    QTextCodec::ConverterState encoder(QTextCodec::IgnoreHeader);
    decode(bytes, *codec, decoder, [&](const QString& piece) {
        const QByteArray encoded = utf8->fromUnicode(piece.constData(), piece.size(), &encoder);
        end = std::copy(encoded.begin(), encoded.end(), end);
        characters += piece.size();
    });
    const std::ptrdiff_t length = end - text.constData();
    adopt(std::move(text), length);
    m_growth = length - characters;
}

std::string_view LineSource::next() {
    const char* const start = m_next;
    const auto rest = static_cast<std::size_t>(m_end - start);
    const auto* const feed = static_cast<const char*>(std::memchr(start, '\n', rest));
    m_next = feed != nullptr ? feed + 1 : m_end;
    return trimmed({start, static_cast<std::size_t>((feed != nullptr ? feed : m_end) - start)});
}

bool LineSource::skipToLetters() {
    const char* letter = m_next;
    const std::ptrdiff_t stride = 32;
    while (m_end - letter >= stride &&
           !hasLetters(loadEight(letter) | loadEight(letter + 8) | loadEight(letter + 16) |
                       loadEight(letter + 24))) {
        letter += stride;
    }
    letter = std::find_if(letter, static_cast<const char*>(m_end), isLetter);
    if (letter == m_end) {
        m_next = m_end;
        return false;
    }
    while (letter != m_next && letter[-1] != '\n') {
        --letter;
    }
    m_next = letter;
    return true;
}

const char* LineSource::currentLine() const {
    const char* start = m_next;
    while (start != m_start && (start == m_next || start[-1] != '\n')) {
        --start;
    }
    return start;
}

int LineSource::lineNumber() const {
    const char* const text = m_start;
    return static_cast<int>(std::count(text, currentLine(), '\n')) + 1;
}

std::string_view LineSource::current() const {
    const char* const start = currentLine();
    return trimmed({start, static_cast<std::size_t>(m_next - start)});
}

QString LineSource::currentText(int most) const {
    constexpr std::size_t bytes = 4; // of a character, at most
    const std::string_view line = current().substr(0, bytes * static_cast<std::size_t>(most));
    return QString::fromUtf8(line.data(), static_cast<int>(line.size())).left(most);
}

bool LineSource::canHold(std::int64_t lines) const {
    // Each line needs a number and a line feed, except that the last line and the line feed before
    // it may be missing. A byte replaced by a longer character counts only once.
    return m_end - m_start - m_growth >= 2 * (lines - 1) - 1;
}

} // namespace tintwell

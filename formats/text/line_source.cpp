#include "formats/text/line_source.h"

#include "formats/text/decimal.h"
#include "formats/text/words.h"
#include "lut/trace.h"

#include <QFileInfo>
#include <QTextCodec>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace tintwell {

namespace {

bool isAscii(const char* from, const char* to) {
    // One flag for the whole text lets the compiler take many bytes at a time.
    unsigned char seen = 0;
    for (; from != to; ++from) {
        seen |= static_cast<unsigned char>(*from);
    }
    return seen < 0x80;
}

/// Letters, as skipToLetters() has it, stand from '@' on.
bool isLetter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0;
}

bool hasLetters(std::uint64_t eight) {
    return (eight & 0xC0C0C0C0C0C0C0C0U) != 0;
}

constexpr const char* byteOrderMark = "\xEF\xBB\xBF";

/// Decodes \a bytes piece by piece: the whole text as the toolkit's string would take twice the
/// room of the file, or more. \a state tells in the end what was amiss.
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

QString tooLargeForMemory() {
    return QStringLiteral("the file is too large for the memory");
}

} // namespace

bool openToRead(QFile& file, QIODevice::OpenMode mode, std::int64_t largest, QString& error) {
    const QFileInfo info(file);
    if (info.exists() && !info.isFile()) {
        error = QStringLiteral("is no regular file");
    } else if (!file.open(QIODevice::ReadOnly | mode)) {
        error = file.errorString();
    } else if (file.size() > largest) {
        error = QStringLiteral("found %1 bytes, expected at most %2").arg(file.size()).arg(largest);
    } else {
        return true;
    }
    return false;
}

void LineSource::Free::operator()(char* text) const {
    std::free(text);
}

/// Room for a text of that size and what normalise() adds. Left uninitialised: clearing a large
/// block costs as much as reading it.
LineSource::Text LineSource::allocated(std::int64_t size) {
    constexpr std::int64_t lineFeed = 1;
    return Text(
        static_cast<char*>(std::malloc(static_cast<std::size_t>(size + lineFeed + Padding))));
}

LineSource::LineSource(const QString& path) {
    if (!read(path)) {
        return;
    }
    qCDebug(formatTrace) << "file:-----" << path;
    m_open = normalise();
    rewind();
}

bool LineSource::read(const QString& path) {
    QFile file(path);
    if (!openToRead(file, QIODevice::Unbuffered, MaxFileSize, m_error)) {
        return false;
    }
    const qint64 size = file.size();
    m_text = allocated(size);
    if (m_text == nullptr) {
        m_error = tooLargeForMemory();
        return false;
    }
    m_start = m_text.get();
    qint64 used = 0;
    while (used < size) {
        const qint64 count = file.read(m_start + used, size - used);
        if (count < 0) {
            m_error = file.errorString();
            return false;
        }
        if (count == 0) {
            break; // the file shrank meanwhile
        }
        used += count;
    }
    m_end = m_start + used;
    return true;
}

bool LineSource::normalise() {
    const bool hasBytes = m_end != m_start;
    if (!isAscii(m_start, m_end) && !convertToUtf8()) {
        return false;
    }
    removeReturns();
    if (hasBytes && m_end == m_start) {
        *m_end++ = '\n'; // the toolkit does not foresee that nothing will come of the bytes
    }
    std::fill_n(m_end, Padding, '\0');
    return true;
}

void LineSource::removeReturns() {
    if (std::memchr(m_start, '\r', static_cast<std::size_t>(m_end - m_start)) != nullptr) {
        m_end = std::remove(m_start, m_end, '\r');
    }
}

bool LineSource::convertToUtf8() {
    const auto size = static_cast<int>(m_end - m_start);
    const QByteArray bytes = QByteArray::fromRawData(m_start, size);
    QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    const QTextCodec* const codec = QTextCodec::codecForUtfText(bytes, utf8);
    if (codec->mibEnum() == utf8->mibEnum() && isWellFormed(bytes, *codec)) {
        m_start += bytes.startsWith(byteOrderMark) ? std::strlen(byteOrderMark) : 0;
        return true;
    }
    constexpr std::int64_t growth = 3; // at most: a stray byte becomes a replacement character
    Text text = allocated(growth * size);
    if (text == nullptr) {
        m_error = tooLargeForMemory();
        return false;
    }
    char* end = text.get();
    std::int64_t characters = 0;
    QTextCodec::ConverterState decoder;
    QTextCodec::ConverterState encoder(QTextCodec::IgnoreHeader);
    decode(bytes, *codec, decoder, [&](const QString& piece) {
        const QByteArray encoded = utf8->fromUnicode(piece.constData(), piece.size(), &encoder);
        end = std::copy(encoded.begin(), encoded.end(), end);
        characters += piece.size();
    });
    m_text = std::move(text);
    m_start = m_text.get();
    m_end = end;
    m_growth = m_end - m_start - characters;
    return true;
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

QString LineSource::currentText() const {
    const char* const start = currentLine();
    const std::string_view line = trimmed({start, static_cast<std::size_t>(m_next - start)});
    return QString::fromUtf8(line.data(), static_cast<int>(line.size()));
}

bool LineSource::canHold(std::int64_t lines) const {
    // A number and a line feed each; the last line may be missing, and the line feed before it. A
    // character of the file must not count for the bytes that its replacement takes.
    return m_end - m_start - m_growth >= 2 * (lines - 1) - 1;
}

} // namespace tintwell

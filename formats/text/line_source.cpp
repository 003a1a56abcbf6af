#include "formats/text/line_source.h"

#include "formats/text/decimal.h"
#include "formats/text/words.h"
#include "lut/trace.h"

#include <QFile>
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

} // namespace

void LineSource::Free::operator()(char* text) const {
    std::free(text);
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
    // Devices and pipes may never end.
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    const qint64 size = file.size();
    if (size > MaxFileSize) {
        return false;
    }
    // Left uninitialised: clearing a large block costs as much as reading it.
    m_text.reset(static_cast<char*>(std::malloc(static_cast<std::size_t>(size) + 1)));
    if (m_text == nullptr) {
        return false;
    }
    char* const text = m_text.get();
    qint64 used = 0;
    while (used < size) {
        const qint64 count = file.read(text + used, size - used);
        if (count < 0) {
            return false;
        }
        if (count == 0) {
            break; // the file shrank meanwhile
        }
        used += count;
    }
    m_end = text + used;
    return true;
}

bool LineSource::normalise() {
    const bool hasBytes = m_end != m_text.get();
    if (isAscii(m_text.get(), m_end)) {
        removeReturns();
    } else if (!convertToUtf8()) {
        return false;
    }
    if (hasBytes && m_end == m_text.get()) {
        *m_end++ = '\n'; // the toolkit does not foresee that nothing will come of the bytes
    }
    return true;
}

void LineSource::removeReturns() {
    char* const text = m_text.get();
    if (std::memchr(text, '\r', static_cast<std::size_t>(m_end - text)) != nullptr) {
        m_end = std::remove(text, m_end, '\r');
    }
}

bool LineSource::convertToUtf8() {
    const auto size = static_cast<int>(m_end - m_text.get());
    const QByteArray bytes = QByteArray::fromRawData(m_text.get(), size);
    const QTextCodec* const codec =
        QTextCodec::codecForUtfText(bytes, QTextCodec::codecForName("UTF-8"));
    QTextCodec::ConverterState state; // a sequence cut off by the end of the file is dropped
    QString decoded = codec->toUnicode(bytes.constData(), size, &state);
    decoded.remove(QLatin1Char('\r'));

    QByteArray text;
    for (const QStringRef& line : decoded.splitRef(QLatin1Char('\n'))) {
        text += line.trimmed().toUtf8();
        text += '\n';
    }
    if (decoded.isEmpty() || decoded.endsWith(QLatin1Char('\n'))) {
        text.chop(1); // no line stands behind the last line feed
    }
    const auto length = static_cast<std::size_t>(text.size());
    m_text.reset(static_cast<char*>(std::malloc(length + 1)));
    if (m_text == nullptr) {
        return false;
    }
    std::memcpy(m_text.get(), text.constData(), length);
    m_end = m_text.get() + length;
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
    const std::ptrdiff_t stride = 4 * 8;
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

bool LineSource::canHold(std::int64_t lines) const {
    // A number and a line feed each; the last line may lack, and the one before it its line feed.
    return m_end - m_text.get() >= 2 * (lines - 1) - 1;
}

} // namespace tintwell

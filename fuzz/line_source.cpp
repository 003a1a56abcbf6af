// The line source against QTextStream.

#include "harness.h"

#include "formats/text/line_source.h"
#include "formats/text/words.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>

namespace {

QByteArrayList linesByQt(const QString& path) {
    QFile file(path);
    fuzz::require(file.open(QIODevice::ReadOnly | QIODevice::Text), "the input opens");
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    QByteArrayList lines;
    while (!stream.atEnd()) {
        lines << stream.readLine().trimmed().toUtf8();
    }
    return lines;
}

QByteArrayList linesOf(tintwell::LineSource& source) {
    QByteArrayList lines;
    while (!source.atEnd()) {
        const std::string_view line = source.next();
        lines << QByteArray(line.data(), static_cast<int>(line.size()));
    }
    return lines;
}

std::string_view view(const QByteArray& line) {
    return {line.data(), static_cast<std::size_t>(line.size())};
}

bool hasLetter(const QByteArray& line) {
    return std::any_of(line.begin(), line.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= '@'; });
}

void compareLettered(tintwell::LineSource& source, const QByteArrayList& lines) {
    QByteArrayList lettered;
    source.rewind();
    while (source.skipToLetters()) {
        const std::string_view line = source.next();
        lettered << QByteArray(line.data(), static_cast<int>(line.size()));
    }
    fuzz::require(source.atEnd(), "no letters are left");
    const auto removeOthers = [](QByteArrayList list) { // it may stop at a non-ASCII blank
        list.erase(std::remove_if(list.begin(), list.end(), std::not_fn(hasLetter)), list.end());
        return list;
    };
    fuzz::require(removeOthers(lettered) == removeOthers(lines), "each line with letters is found");
}

void compareWords(const QByteArray& line) {
    const std::string_view text = view(line);
    const QByteArray afterBlank = ' ' + line; // or a byte order mark would be dropped
    const QStringList expected = QString::fromUtf8(afterBlank.constData(), afterBlank.size())
                                     .simplified()
                                     .split(QLatin1Char(' '), Qt::SkipEmptyParts);
    tintwell::WordReader words(text);
    for (const QString& word : expected) {
        const std::string_view found = words.next();
        fuzz::require(word.toUtf8() == QByteArray(found.data(), static_cast<int>(found.size())),
                      "words are the same as Qt's");
    }
    fuzz::require(words.next().empty(), "there are no more words");
    fuzz::require(tintwell::wordCount(text) == static_cast<std::size_t>(expected.size()),
                  "the words are counted correctly");
}

/// Whether a text in UTF-32 holds numbers beyond Unicode. The toolkit makes halves of characters of
/// them, and what becomes of those depends on where a text is cut.
bool isBeyondUnicode(std::string_view bytes) {
    const bool little = bytes.substr(0, 4) == std::string_view("\xFF\xFE\0\0", 4);
    const bool big = bytes.substr(0, 4) == std::string_view("\0\0\xFE\xFF", 4);
    for (std::size_t at = 4; (little || big) && at + 4 <= bytes.size(); at += 4) {
        const auto byte = [&](std::size_t n) {
            return static_cast<unsigned char>(bytes[at + (little ? n : 3 - n)]);
        };
        if (byte(3) != 0 || byte(2) > 0x10) {
            return true;
        }
    }
    return false;
}

} // namespace

void fuzz::run(std::string_view input) {
    if (isBeyondUnicode(input)) {
        return;
    }
    const MemoryFile file(input);
    tintwell::LineSource source(file.path());
    require(source.isOpen(), "a regular file opens");
    const QByteArrayList lines = linesOf(source);
    require(lines == linesByQt(file.path()), "lines are the same as Qt's");
    source.rewind();
    require(linesOf(source) == lines, "a second pass gives the same lines");
    compareLettered(source, lines);
    for (const QByteArray& line : lines) {
        compareWords(line);
    }
}

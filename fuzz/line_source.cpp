// The line source against the toolkit's text stream.

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

QByteArrayList linesByToolkit(const QString& path) {
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
    const auto removeOthers = [](QByteArrayList list) { // it may stop for a blank beyond ASCII
        list.erase(std::remove_if(list.begin(), list.end(), std::not_fn(hasLetter)), list.end());
        return list;
    };
    fuzz::require(removeOthers(lettered) == removeOthers(lines), "each line with letters is found");
}

void compareCodes(tintwell::LineSource& source, const QByteArrayList& lines) {
    source.rewind();
    for (const QByteArray& line : lines) {
        std::array<std::uint32_t, 3> codes{};
        if (!source.takeCodes(codes)) {
            fuzz::require(source.next() == view(line), "a line that is no sample is still to come");
            continue;
        }
        const QByteArrayList words = line.split(' ');
        fuzz::require(words.size() == 3, "a sample has three codes");
        for (int n = 0; n < words.size(); ++n) {
            fuzz::require(words[n].toUInt() == codes[static_cast<std::size_t>(n)],
                          "codes are those of the line");
        }
    }
    fuzz::require(source.atEnd(), "there are no more lines");
}

void compareWords(const QByteArray& line) {
    const std::string_view text = view(line);
    const QByteArray behindBlank = ' ' + line; // or a byte order mark would be dropped
    const QStringList expected = QString::fromUtf8(behindBlank.constData(), behindBlank.size())
                                     .simplified()
                                     .split(QLatin1Char(' '), Qt::SkipEmptyParts);
    tintwell::WordReader words(text);
    for (const QString& word : expected) {
        const std::string_view found = words.next();
        fuzz::require(word.toUtf8() == QByteArray(found.data(), static_cast<int>(found.size())),
                      "words are those of the toolkit");
    }
    fuzz::require(words.next().empty(), "there are no more words");
    fuzz::require(tintwell::wordCount(text) == static_cast<std::size_t>(expected.size()),
                  "as many words are counted");
}

} // namespace

void fuzz::run(std::string_view input) {
    const MemoryFile file(input);
    tintwell::LineSource source(file.path());
    require(source.isOpen(), "a regular file opens");
    const QByteArrayList lines = linesOf(source);
    require(lines == linesByToolkit(file.path()), "lines are those of the toolkit");
    source.rewind();
    require(linesOf(source) == lines, "a second pass sees the same");
    compareLettered(source, lines);
    compareCodes(source, lines);
    for (const QByteArray& line : lines) {
        compareWords(line);
    }
}

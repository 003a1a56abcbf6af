#include "lut/header_lines.h"

#include "lut/bounded_read.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>

namespace tintwell {

namespace {

/// Not part of an XML document. Bytes in an encoding other than UTF-8 do no harm.
bool isPlain(const QString& text) {
    return !text.startsWith(QLatin1Char('<')) && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('\t') || c.isPrint();
    });
}

bool isWord(const QString& text) {
    bool isNumber = false; // "nan" and "1e-5" are
    static_cast<void>(text.toDouble(&isNumber));
    return !isNumber && std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

/// Lines of samples have no words.
bool hasWords(const QString& text) {
    static const QRegularExpression gapsAndSigns(QStringLiteral("(?:^|[\\s,]+)[-+]?"));
    const QStringList parts = text.split(gapsAndSigns, Qt::SkipEmptyParts);
    return std::any_of(parts.begin(), parts.end(), isWord);
}

} // namespace

QStringList headerLines(const QString& path) {
    constexpr int longestHead = 1 << 14;
    constexpr int enough = 12;
    constexpr int longest = 100;
    QString error;
    QByteArray head = readHead(path, longestHead, error).value_or(QByteArray());
    if (head.size() == longestHead) {
        head.truncate(head.lastIndexOf('\n')); // the last line may be cut
    }
    QTextStream lines(head.replace("\r", ""));
    lines.setCodec("UTF-8");
    QStringList header;
    while (!lines.atEnd() && header.size() < enough) {
        const QString line = lines.readLine().trimmed().left(longest);
        if (hasWords(line) && isPlain(line)) {
            header += line;
        } else if (!line.isEmpty() && !line.startsWith(QLatin1Char('#'))) {
            break;
        }
    }
    return header;
}

} // namespace tintwell

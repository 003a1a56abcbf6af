#include "lut/words.h"

namespace tintwell {

namespace {

/// The length of "LINE: " at the front of a message; 0 if there is none.
int lineLength(const QString& what) {
    int digits = 0;
    while (digits < what.size() && what[digits].isDigit()) {
        ++digits;
    }
    const QString end = QStringLiteral(": ");
    return digits > 0 && what.midRef(digits).startsWith(end) ? digits + end.size() : 0;
}

} // namespace

QString counted(std::int64_t count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

QString counted(std::int64_t count, const char* noun) {
    return counted(count, noun, QByteArray(noun).append('s').constData());
}

QString inFile(const QString& path, const QString& what, const QString& kind) {
    const int length = lineLength(what);
    return path + (length > 0 ? QStringLiteral(":") : QStringLiteral(": ")) + what.left(length) +
           kind + what.mid(length);
}

QString formatted(float value) {
    return QString::number(static_cast<double>(value), 'g', 6);
}

QString formatted(const std::array<float, 3>& values) {
    const bool same = values[0] == values[1] && values[1] == values[2];
    return same ? formatted(values[0])
                : QStringLiteral("%1 %2 %3")
                      .arg(formatted(values[0]), formatted(values[1]), formatted(values[2]));
}

QString formatted(const std::array<float, 3>& from, const std::array<float, 3>& to) {
    return formatted(from) + QStringLiteral(" to ") + formatted(to);
}

} // namespace tintwell

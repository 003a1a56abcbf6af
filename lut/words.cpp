#include "lut/words.h"

namespace tintwell {

QString counted(std::int64_t count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

QString counted(std::int64_t count, const char* noun) {
    return counted(count, noun, QByteArray(noun).append('s').constData());
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

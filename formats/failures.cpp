#include "formats/failures.h"

#include <utility>

namespace tintwell {

bool failAtLine(Read_LUTFile& lut, const LineSource& lines, const QString& expected) {
    constexpr int enough = 60;
    QString found = lines.currentText();
    if (found.size() > enough) {
        found = found.left(enough) + QStringLiteral("...");
    }
    return lut.fail(QStringLiteral("%1: found \"%2\", expected %3")
                        .arg(QString::number(lines.lineNumber()), found, expected));
}

bool failUnsized(Read_LUTFile& lut, const char* expected) {
    return lut.fail(
        QStringLiteral("found no size, expected %1 with one").arg(QLatin1String(expected)));
}

bool failShort(Read_LUTFile& lut, const LineSource& lines, std::int64_t found,
               std::int64_t expected) {
    return lut.fail(QStringLiteral("%1: the file ends after %2 samples, expected %3")
                        .arg(lines.lineNumber())
                        .arg(found)
                        .arg(expected));
}

void warnShort(Read_LUTFile& lut, std::int64_t found, std::int64_t expected) {
    if (found < expected) {
        lut.remarks +=
            QStringLiteral("found %1 of %2 samples; the rest is black").arg(found).arg(expected);
    }
}

bool acceptWithRemark(Read_LUTFile& lut) {
    if (!lut.lastError.isEmpty()) {
        lut.remarks += std::exchange(lut.lastError, QString());
    }
    return true;
}

} // namespace tintwell

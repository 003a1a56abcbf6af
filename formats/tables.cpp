#include "formats/tables.h"

#include <cstdint>

namespace tintwell {

namespace {

bool failTooShort(Read_LUTFile& lut, std::int64_t samples, int size) {
    return lut.fail(QStringLiteral("the file is too short for the %1 samples of its size %2")
                        .arg(samples)
                        .arg(size));
}

} // namespace

bool takeRange(std::string_view text, float (&min)[3], float (&max)[3]) {
    float from = 0;
    float to = 0;
    const int count = scan(text, from, to);
    if (count > 0) {
        setDomain(min, from);
    }
    if (count > 1) {
        setDomain(max, to);
    }
    return count > 0;
}

bool allocateLattice(Read_LUTFile& lut, const LineSource& lines, Body body) {
    if (lut.data3D != nullptr) {
        return true;
    }
    const std::int64_t n = lut.size3D;
    const bool couldBeRead = n >= 1 && n <= Read_LUTFile::MaxSize3D;
    if (couldBeRead && !lines.canHold(n * n * n) &&
        (body == Body::Complete || n > MaxEmptySize3D)) {
        return failTooShort(lut, n * n * n, lut.size3D);
    }
    return lut.allocate3D();
}

bool allocateCurve(Read_LUTFile& lut, const LineSource& lines, Body body) {
    if (lut.data1D != nullptr) {
        return true;
    }
    const std::int64_t n = lut.size1D;
    const bool couldBeRead = n >= 1 && n <= Read_LUTFile::MaxSize1D;
    if (couldBeRead && !lines.canHold(n) && (body == Body::Complete || n > MaxEmptySize1D)) {
        return failTooShort(lut, n, lut.size1D);
    }
    return lut.allocate1D();
}

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

void noteShort(Read_LUTFile& lut, std::int64_t found, std::int64_t expected) {
    if (found < expected) {
        lut.lastError =
            QStringLiteral("found %1 of %2 samples; the rest is black").arg(found).arg(expected);
    }
}

} // namespace tintwell

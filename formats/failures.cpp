#include "formats/failures.h"

#include "lut/words.h"

#include <algorithm>
#include <utility>

namespace tintwell {

namespace {

/// Old systems ended lines in a carriage return alone, which readers drop.
QString onlyReturns() {
    return QStringLiteral("the lines end in carriage returns alone, expected line feeds");
}

} // namespace

QString quotedLine(const LineSource& lines) {
    constexpr int enough = 60;
    QString text = lines.currentText(enough + 1);
    if (text.size() > enough) {
        text = text.left(enough) + QStringLiteral("...");
    }
    return QLatin1Char('"') + text + QLatin1Char('"');
}

bool failAtLine(Read_LUTFile& lut, const LineSource& lines, const QString& expected) {
    if (lines.hasOnlyReturns()) {
        return lut.fail(onlyReturns());
    }
    return lut.fail(QStringLiteral("%1: found %2, expected %3")
                        .arg(QString::number(lines.lineNumber()), quotedLine(lines), expected));
}

bool failUnsized(Read_LUTFile& lut, const LineSource& lines, const char* expected) {
    return lines.hasOnlyReturns() ? lut.fail(onlyReturns()) : failUnsized(lut, expected);
}

bool failUnsized(Read_LUTFile& lut, const char* expected) {
    return lut.fail(
        QStringLiteral("found no size, expected %1 with one").arg(QLatin1String(expected)));
}

bool failShort(Read_LUTFile& lut, const LineSource& lines, std::int64_t found,
               std::int64_t expected) {
    if (lines.hasOnlyReturns()) {
        return lut.fail(onlyReturns());
    }
    return lut.fail(QStringLiteral("%1: the file ends after %2, expected %3")
                        .arg(lines.lineNumber())
                        .arg(counted(found, "sample"))
                        .arg(expected));
}

bool isTold(const Read_LUTFile& lut, const QString& end) {
    return std::any_of(lut.remarks.cbegin(), lut.remarks.cend(),
                       [&](const QString& told) { return told.endsWith(end); });
}

void remarkOnce(Read_LUTFile& lut, qint64 line, const QString& what) {
    const QString rest = QStringLiteral(": ") + what;
    if (!isTold(lut, rest)) {
        lut.remarks += QString::number(line) + rest;
    }
}

void remarkOnReturns(Read_LUTFile& lut) {
    lut.remarks += onlyReturns();
}

bool acceptWithRemark(Read_LUTFile& lut) {
    if (!lut.lastError.isEmpty()) {
        lut.remarks += std::exchange(lut.lastError, QString());
    }
    return true;
}

} // namespace tintwell

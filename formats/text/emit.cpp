#include "formats/text/emit.h"

#include <QByteArray>
#include <QLocale>

#include <algorithm>

namespace tintwell {

namespace {

bool printsPlainly(const QTextStream& out) {
    const auto notation = out.realNumberNotation();
    return out.realNumberPrecision() == 6 && out.numberFlags() == QTextStream::NumberFlags() &&
           (notation == QTextStream::FixedNotation || notation == QTextStream::SmartNotation) &&
           out.fieldAlignment() != QTextStream::AlignAccountingStyle &&
           out.locale() == QLocale::c();
}

} // namespace

char* printByToolkit(char* to, float value, QTextStream::RealNumberNotation notation) {
    QByteArray text;
    QTextStream stream(&text);
    stream.setRealNumberNotation(notation);
    stream << value << Qt::flush;
    return std::copy(text.cbegin(), text.cend(), to);
}

char* printSmart(char* to, float value) {
    const float magnitude = std::fabs(value);
    if (magnitude == 0) {
        *to = '0';
        return to + 1;
    }
    if (!(magnitude >= 1e-4F && magnitude < 999'999.0F)) {
        return printByToolkit(to, value, QTextStream::SmartNotation);
    }
    // The power of ten that leaves six digits before the point; as in printFixed, nothing is lost.
    static constexpr std::array<double, 10> powers = {1e0, 1e1, 1e2, 1e3, 1e4,
                                                      1e5, 1e6, 1e7, 1e8, 1e9};
    std::size_t decimals = powers.size() - 1;
    while (static_cast<double>(magnitude) * powers[decimals] >= 1e6) {
        --decimals;
    }
    auto digits =
        static_cast<std::uint32_t>(static_cast<double>(magnitude) * powers[decimals] + 0.5);
    while (decimals > 0 && digits % 10 == 0) {
        digits /= 10;
        --decimals;
    }
    const auto unit = static_cast<std::uint32_t>(powers[decimals]);
    if (value < 0) {
        *to++ = '-';
    }
    to = std::to_chars(to, to + MaxNumberText, digits / unit).ptr;
    if (decimals == 0) {
        return to;
    }
    *to = '.';
    std::uint32_t rest = digits % unit;
    for (std::size_t n = decimals; n > 0; --n) {
        to[n] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    return to + decimals + 1;
}

void StreamSink::fixedColumn(float value) {
    out.setFieldWidth(8);
    real(value);
    out.setFieldWidth(0);
}

void StreamSink::real(float value) {
    if (!printsPlainly(out)) {
        out << value;
        return;
    }
    std::array<char, MaxNumberText> printed{};
    const char* const end = out.realNumberNotation() == QTextStream::FixedNotation
                                ? printFixed(printed.data(), value)
                                : printSmart(printed.data(), value);
    out << QLatin1String(printed.data(), static_cast<int>(end - printed.data()));
}

void StreamSink::integer(std::int64_t value) {
    out << static_cast<qlonglong>(value);
}

void StreamSink::text(const QString& sep) {
    out << sep;
}

} // namespace tintwell

#pragma once

#include "lut/truncate.h"

#include <QString>
#include <QTextStream>

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tintwell {

/// Enough space for any printed number.
inline constexpr std::size_t MaxNumberText = 64;

/// Fallback for values that the fast paths do not cover: prints through QTextStream.
char* printByToolkit(char* to, float value, QTextStream::RealNumberNotation notation);

/// The numbers 00 to 99, two digits each.
inline constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t n = 0; n < 100; ++n) {
        pairs[2 * n] = static_cast<char>('0' + n / 10);
        pairs[2 * n + 1] = static_cast<char>('0' + n % 10);
    }
    return pairs;
}();

inline void printSixDigits(char* to, std::uint32_t value) {
    std::memcpy(to, &digitPairs[std::size_t{2} * (value / 10'000)], 2);
    std::memcpy(to + 2, &digitPairs[std::size_t{2} * (value / 100 % 100)], 2);
    std::memcpy(to + 4, &digitPairs[std::size_t{2} * (value % 100)], 2);
}

// Both print a float as QTextStream does at its default precision of 6: the exact value correctly
// rounded, ties away from zero; negative zero without its sign, tiny negative values with it. There
// must be space for MaxNumberText characters; the result points past the last one written.

/// Six decimals: "0.007813".
inline char* printFixed(char* to, float value) {
    // Below 2^32 a float times 10^6 has at most 38 significant bits: the product is exact in double
    // precision, and so is the sum with 0.5 wherever it decides the rounding.
    constexpr float exactBelow = 4294967296.0F;
    const float magnitude = std::fabs(value);
    if (!(magnitude < exactBelow)) {
        return printByToolkit(to, value, QTextStream::FixedNotation);
    }
    const auto millionths = static_cast<std::uint64_t>(static_cast<double>(magnitude) * 1e6 + 0.5);
    if (value < 0) {
        *to++ = '-';
    }
    std::uint64_t rest = millionths;
    if (millionths < 10'000'000) {
        const auto whole = static_cast<std::uint32_t>(millionths) / 1'000'000;
        *to++ = static_cast<char>('0' + whole);
        rest -= std::uint64_t{whole} * 1'000'000;
    } else {
        to = std::to_chars(to, to + MaxNumberText, millionths / 1'000'000).ptr;
        rest %= 1'000'000;
    }
    *to = '.';
    printSixDigits(to + 1, static_cast<std::uint32_t>(rest));
    return to + 7;
}

/// Six significant digits, shortest form: "1e-05".
char* printSmart(char* to, float value);

/// How a sink prints real numbers: with six decimals in three columns of eight, or in its own
/// notation.
///
/// A sink has `fixedColumn(float)`, `real(float)`, `integer(int64)` and `text(separator)`; the
/// layout of a table entry is defined below, once for every sink.
template <typename Sink, typename Separator>
void emitValue(Sink& sink, float value, std::int64_t scale, const Separator& sep) {
    if (scale < 2) {
        sink.real(value);
    } else {
        sink.integer(scaledInteger(value, scale));
    }
    sink.text(sep);
}

/// Three values in the order given by \a rgb, with a separator after each.
template <typename Sink, typename Separator>
void emitCell1D(Sink& sink, const float* cell, bool rgb, std::int64_t scale, const Separator& sep) {
    emitValue(sink, cell[rgb ? 0 : 2], scale, sep);
    emitValue(sink, cell[1], scale, sep);
    emitValue(sink, cell[rgb ? 2 : 0], scale, sep);
}

/// Real numbers are in columns with separators between them, integers laid out as in a 1D entry.
template <typename Sink, typename Separator>
void emitCell3D(Sink& sink, const float* cell, bool rgb, std::int64_t scale, const Separator& sep) {
    if (scale >= 2) {
        emitCell1D(sink, cell, rgb, scale, sep);
        return;
    }
    sink.fixedColumn(cell[rgb ? 0 : 2]);
    sink.text(sep);
    sink.fixedColumn(cell[1]);
    sink.text(sep);
    sink.fixedColumn(cell[rgb ? 2 : 0]);
}

/// Prints to a text stream, using whatever state its owner has set.
struct StreamSink {
    QTextStream& out;

    void fixedColumn(float value);
    void real(float value);
    void integer(std::int64_t value);
    void text(const QString& sep);
};

} // namespace tintwell

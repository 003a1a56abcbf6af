#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <string_view>

class QTextStream;

namespace tintwell {

/// Room enough for any printed number.
inline constexpr std::size_t MaxNumberText = 64;

/// Print a float as the toolkit's text stream does at its default precision of 6: the exact value
/// correctly rounded, ties away from zero. \a to has room for MaxNumberText characters; the result
/// is one past the last one written.
char* printFixed(char* to, float value); ///< six decimals: "0.007813"
char* printSmart(char* to, float value); ///< six significant digits, shortest form: "1e-05"

/// Truncates toward zero. What no 64-bit integer holds (NaN included) gives the smallest one.
std::int64_t truncated(float value);

/// value x scale in single precision, truncated.
inline std::int64_t scaledInteger(float value, std::int64_t scale) {
    return truncated(value * static_cast<float>(scale));
}

/// How a sink prints real numbers: fixed in three columns of eight, or in its own notation.
///
/// A sink has `fixedColumn(float)`, `real(float)`, `integer(int64)` and `text(separator)`; below
/// stands the layout of a table entry, once for every sink.
template <typename Sink, typename Separator>
void emitValue(Sink& sink, float value, std::int64_t scale, const Separator& sep) {
    if (scale < 2) {
        sink.real(value);
    } else {
        sink.integer(scaledInteger(value, scale));
    }
    sink.text(sep);
}

/// Three values in the order that \a rgb tells, a separator after each.
template <typename Sink, typename Separator>
void emitCell1D(Sink& sink, const float* cell, bool rgb, std::int64_t scale, const Separator& sep) {
    emitValue(sink, cell[rgb ? 0 : 2], scale, sep);
    emitValue(sink, cell[1], scale, sep);
    emitValue(sink, cell[rgb ? 2 : 0], scale, sep);
}

/// Real numbers stand in columns with separators between them; integers as in a 1D entry.
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

/// Prints to a text stream, in whatever state its owner left it.
struct StreamSink {
    QTextStream& out;

    void fixedColumn(float value);
    void real(float value);
    void integer(std::int64_t value);
    void text(const QString& sep);
};

} // namespace tintwell

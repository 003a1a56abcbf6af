#pragma once

#include <QString>

#include <optional>

namespace cli {

/// Takes a number off the front of a text: what C reads in the C locale, with blanks before it, and
/// with a blank or the end of the text after it. None, with \a text unchanged, if there is no such
/// number. It is rounded to single precision; what is too large for that is infinite.
std::optional<float> takeNumber(const char*& text);

/// A number that is the whole text.
std::optional<float> parseNumber(const QString& text);

/// The fewest digits that read as the same number.
QByteArray shortest(float value);

} // namespace cli

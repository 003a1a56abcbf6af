#pragma once

#include <QString>

namespace cli {

/// A text for a terminal: characters that could move the cursor, feign a line or turn the direction
/// of writing stand as \uXXXX, which is how JSON has them, too. File names and what files hold may
/// have any.
QString printable(const QString& text);

} // namespace cli

#pragma once

#include <QString>

namespace cli {

/// A text made safe for a terminal: characters that could move the cursor, fake a line or change
/// the writing direction are replaced by \uXXXX, which is also valid in JSON. File names and the
/// contents of files may have any of them.
QString printable(const QString& text);

} // namespace cli

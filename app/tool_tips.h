#pragma once

#include <QString>

namespace tintwell {

// Tool tips in lines of a readable width. Plain text would be one line, however long.

/// Shows \a path as it is. Empty for an empty path.
QString pathToolTip(const QString& path);

QString sentenceToolTip(const QString& sentence);

} // namespace tintwell

#pragma once

#include <QString>

namespace tintwell {

/// A tool tip that shows \a path as it is, in lines of a readable width. Empty for an empty path.
QString pathToolTip(const QString& path);

} // namespace tintwell

#pragma once

#include <QString>
#include <QStringList>

namespace tintwell {

/// The first lines of a text file before its samples, such as titles, comments and keywords: at
/// most a dozen, each cut to a hundred characters. Only the front of the file is read.
QStringList headerLines(const QString& path);

} // namespace tintwell

#pragma once

#include "calc/measure.h"
#include "lut/table_kind.h"

#include <QString>

namespace cli {

// Words that several commands share.

QString formatted(float value);
/// "0.5", or all three where they differ.
QString formatted(const tintwell::Channels& values);

/// "1 file" or "2 files".
QString counted(qint64 count, const char* one, const char* several);

/// "1024 entries"
QString entriesText(int size);

/// "33 points per axis" or "1024 entries".
QString sizeText(tintwell::TableKind kind, int size);

QString unknownFormat(const QString& name);
/// Why no format follows from the path. \a option would name one.
QString unknownExtension(const QString& path, const char* option);
QString isFolder();

} // namespace cli

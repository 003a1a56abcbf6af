#pragma once

#include "lut/table_kind.h"

#include <QString>

#include <array>

namespace cli {

// Words that several commands share.

inline constexpr std::array<const char*, 3> channelNames = {"red", "green", "blue"};

/// "1024 entries"
QString entriesText(int size);

/// "33 points per axis" or "1024 entries".
QString sizeText(tintwell::TableKind kind, int size);

QString unknownFormat(const QString& name);
/// Why no format follows from the path. \a option would name one.
QString unknownExtension(const QString& path, const char* option);
QString isFolder();

} // namespace cli

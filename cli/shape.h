#pragma once

#include "lut/catalogue.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <optional>

namespace cli {

/// The largest size of a kind that --size takes; the least is 2.
constexpr int largestSize(tintwell::TableKind kind) {
    return kind == tintwell::TableKind::ThreeD ? Read_LUTFile::MaxSize3D : Read_LUTFile::MaxSize1D;
}

/// The size of a table in a format: as asked, the only one that the format has, or \a otherwise.
int sizeIn(const tintwell::Format& format, std::optional<int> asked, int otherwise);

/// The size of a new table where nothing says another.
constexpr int usualSize(tintwell::TableKind kind) {
    return kind == tintwell::TableKind::ThreeD ? 33 : 1024;
}

/// "1024 entries"
QString entriesText(int size);

/// Gives a container a table of zeros; false, with its `lastError` set, when memory runs out.
bool allocate(tintwell::TableKind kind, int size, Read_LUTFile& lut);

/// Notes that of a file with tables of both kinds only that of \a kind is taken.
void noteBothKinds(const QString& path, tintwell::TableKind kind);

/// A table in the kind of a format and in a size: \a lut as it is where it fits already, else
/// \a shaped, filled from it. Null, with the error reported for \a path, when memory runs out. What
/// is lost or made up on the way is noted there.
Read_LUTFile* shapeFor(const tintwell::Format& format, std::optional<int> size, const QString& path,
                       Read_LUTFile& lut, Read_LUTFile& shaped);

} // namespace cli

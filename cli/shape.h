#pragma once

#include "cli/report.h"
#include "lut/catalogue.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <functional>
#include <optional>

namespace cli {

/// The largest --size of a kind; the smallest is 2.
constexpr int largestSize(tintwell::TableKind kind) {
    return kind == tintwell::TableKind::ThreeD ? Read_LUTFile::MaxSize3D : Read_LUTFile::MaxSize1D;
}

/// The default size of a new table.
constexpr int usualSize(tintwell::TableKind kind) {
    return kind == tintwell::TableKind::ThreeD ? 33 : 1024;
}

/// The size of a table in a format: \a asked or, without it, the format's fixed size or, without
/// that, \a otherwise.
int sizeIn(const tintwell::Format& format, std::optional<int> asked, int otherwise);

/// Notes, for a file with tables of both kinds, that only that of \a kind is used.
void noteBothKinds(const QString& path, tintwell::TableKind kind, Notes& notes);

/// What a note adds on how to avoid an error; asked for only if the note is made.
using Remedy = std::function<QString()>;

/// Notes how far a new table is off between its points, if that can be seen in eight bits.
void noteError(const QString& path, float error, Notes& notes, const Remedy& remedy = {});

/// A table in the kind of a format and in a size: \a lut itself if it fits already, else \a made,
/// filled from it. Null, with the error reported for \a path, if memory runs out. Anything lost or
/// invented is noted.
Read_LUTFile* reshaped(const tintwell::Format& format, std::optional<int> size, const QString& path,
                       Read_LUTFile& lut, Read_LUTFile& made, Notes& notes);

} // namespace cli

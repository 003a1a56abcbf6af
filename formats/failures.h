#pragma once

#include "formats/text/line_source.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <cstdint>

// How readers report what is wrong with a file.

namespace tintwell {

// For a file that is not accepted. Each sets the container's `lastError` and returns false, which
// the reader returns in turn.

/// The line read last is not as expected.
bool failAtLine(Read_LUTFile& lut, const LineSource& lines, const QString& expected);

/// There is no usable size: \a expected describes the line that states it.
bool failUnsized(Read_LUTFile& lut, const LineSource& lines, const char* expected);
bool failUnsized(Read_LUTFile& lut, const char* expected);

/// The file ended after \a found of \a expected samples.
bool failShort(Read_LUTFile& lut, const LineSource& lines, std::int64_t found,
               std::int64_t expected);

// For a file that is accepted.

/// Turns the failure into a remark: the file is accepted as far as it was read. Does nothing after
/// a read without one. Returns true.
bool acceptWithRemark(Read_LUTFile& lut);

/// Whether there is a remark that ends so. A file may have any number of lines worth the same one.
bool isTold(const Read_LUTFile& lut, const QString& end);

/// Adds the remark "LINE: what", unless an earlier line has the same.
void remarkOnce(Read_LUTFile& lut, qint64 line, const QString& what);

/// Adds the remark that the file has no line ends.
void remarkOnReturns(Read_LUTFile& lut);

/// The text of the line read last, in quotes, cut to sixty characters.
QString quotedLine(const LineSource& lines);

} // namespace tintwell

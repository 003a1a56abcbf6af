#pragma once

#include <QString>

namespace cli {

// Messages on standard error, a line each, from any thread.

/// "tintwell-cli: what"
void report(const QString& what);

/// "tintwell-cli: FILE: what", or "tintwell-cli: FILE:LINE: what" for a text of the library that
/// begins with the line.
void reportFile(const QString& path, const QString& what);

/// "tintwell-cli: FILE: note: what"
void noteFile(const QString& path, const QString& what);

/// "tintwell-cli: FILE: out of memory", without the file if there is no memory for that.
void reportNoMemory(const QString& path) noexcept;
void reportNoMemory() noexcept;

/// Shows how far a batch is, on a terminal only, in place of what it showed before.
void showProgress(int done, int total);
void endProgress();

} // namespace cli

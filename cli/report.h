#pragma once

#include <QString>

namespace cli {

// Messages on standard error, one line each, from any thread.

/// "tintwell-cli: what"
void report(const QString& what);

/// "tintwell-cli: FILE: what", or "tintwell-cli: FILE:LINE: what" if \a what begins with a line
/// number.
void reportFile(const QString& path, const QString& what);

/// "tintwell-cli: FILE: note: what"
void noteFile(const QString& path, const QString& what);

/// "tintwell-cli: FILE: out of memory", without the file name if there is no memory for it.
void reportNoMemory(const QString& path) noexcept;
void reportNoMemory() noexcept;

/// Shows the progress of a batch, on a terminal only, in place of the previous figure.
void showProgress(int done, int total);
void endProgress();

} // namespace cli

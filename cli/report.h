#pragma once

#include <QString>

namespace cli {

// Messages on standard error, one line each, from any thread.

/// "tintwell-cli: what"
void report(const QString& what);

/// "tintwell-cli: FILE: what", or "tintwell-cli: FILE:LINE: what" if \a what begins with a line
/// number.
void reportFile(const QString& path, const QString& what);

/// The notes of one job: what is lost or may surprise. They are printed as they come.
class Notes {
public:
    /// With \a areFailures, as --strict wants, a job with any note must not write its result.
    explicit Notes(bool areFailures) : m_areFailures(areFailures) {}

    /// "tintwell-cli: FILE: note: what", or "tintwell-cli: FILE:LINE: note: what" if \a what begins
    /// with a line number.
    void add(const QString& path, const QString& what);
    /// Whether the result may be written; if not, why is in reason().
    bool allowWriting() const { return !m_areFailures || m_count == 0; }
    QString reason() const;

private:
    bool m_areFailures;
    int m_count = 0;
};

/// "tintwell-cli: FILE: out of memory", without the file name if there is no memory for it.
void reportNoMemory(const QString& path) noexcept;
void reportNoMemory() noexcept;

/// Shows the progress of a batch, on a terminal only, in place of the previous figure.
void showProgress(int done, int total);
void endProgress();

} // namespace cli

#pragma once

#include <QString>
#include <QStringList>

namespace cli {

// Messages on standard error, one line each, from any thread.

/// "tintwell-cli: what"
void report(const QString& what);

/// "tintwell-cli: FILE: what", or "tintwell-cli: FILE:LINE: what" if \a what begins with a line
/// number.
void reportFile(const QString& path, const QString& what);

/// The notes of one job, on what is lost or may surprise, and why it failed. They are printed as
/// they come, and kept as "FILE: what" or "FILE:LINE: what".
class Notes {
public:
    /// With \a areFailures, as --strict wants, a job with any note must not write its result.
    /// \a isQuiet, as --quiet wants, prints errors only, which notes that are failures are.
    explicit Notes(bool areFailures, bool isQuiet = false)
        : m_areFailures(areFailures), m_isQuiet(isQuiet) {}

    /// "tintwell-cli: FILE: note: what", or "tintwell-cli: FILE:LINE: note: what" if \a what begins
    /// with a line number.
    void add(const QString& path, const QString& what);
    /// Tells of a success; this is no note.
    void tell(const QString& path, const QString& what) const;
    /// "tintwell-cli: FILE: what", as reportFile(). Returns false.
    bool fail(const QString& path, const QString& what);
    /// Whether the result may be written; if not, why is in reason().
    bool allowWriting() const { return !m_areFailures || m_texts.isEmpty(); }
    QString reason() const;

    const QStringList& texts() const { return m_texts; }
    /// The first error; empty if there is none.
    const QString& failure() const { return m_failure; }

private:
    bool m_areFailures;
    bool m_isQuiet;
    QStringList m_texts;
    QString m_failure;
};

/// "tintwell-cli: FILE: out of memory", without the file name if there is no memory for it.
void reportNoMemory(const QString& path) noexcept;
void reportNoMemory() noexcept;

/// Shows the progress of a batch, on a terminal only, in place of the previous figure.
void showProgress(int done, int total);
void endProgress();

} // namespace cli

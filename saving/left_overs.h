#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace tintwell {

/// The temporary name of an unfinished file. The file is removed with the object, and by the
/// signals of removeTemporaryFilesOnSignals().
class TemporaryName {
public:
    TemporaryName() = default;
    ~TemporaryName();
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;

    /// Tries names in \a folder as long as \a make(name) fails with EEXIST. False, with the reason
    /// in `errno`, where it fails otherwise.
    bool choose(const QByteArray& folder, const std::function<bool(const char* name)>& make);

    bool isChosen() const { return !m_name.isEmpty(); }
    const QByteArray& name() const { return m_name; }

    /// Leaves the file alone from now on: it has its final name.
    void giveUp();

private:
    QByteArray m_name;
    int m_slot = -1;
};

/// Marks a file as unfinished until it is closed, however this process ends. False when another
/// process is about to remove it as a left-over.
bool claim(int file);

/// Removes the unfinished files of killed programs from a folder, and returns how many these were.
/// Those that may belong to a running program stay; so do all where the file system has no locks.
int removeLeftOvers(const QString& folder);

/// Makes SIGINT, SIGTERM and SIGHUP remove the temporary files of this process before they end it,
/// unless they are ignored.
void removeTemporaryFilesOnSignals();

} // namespace tintwell

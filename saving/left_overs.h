#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace tintwell {

/// The temporary name of an unfinished file. The file is removed by the destructor and by the
/// signals of removeTemporaryFilesOnSignals().
class TemporaryName {
public:
    TemporaryName() = default;
    ~TemporaryName();
    TemporaryName(const TemporaryName&) = delete;
    TemporaryName& operator=(const TemporaryName&) = delete;

    /// Tries names in \a folder while \a make(name) fails with EEXIST. False, with the reason in
    /// `errno`, if it fails otherwise.
    bool choose(const QByteArray& folder, const std::function<bool(const char* name)>& make);

    bool isChosen() const { return !m_name.isEmpty(); }
    const QByteArray& name() const { return m_name; }

    /// Stops tracking the file, which now has its final name.
    void giveUp();

private:
    QByteArray m_name;
    int m_slot = -1;
};

/// Marks a file as unfinished until it is closed, however this process ends. False if another
/// process is about to remove it as a left-over.
bool claim(int file);

/// Removes unfinished files of killed programs from a folder, and returns how many there were.
/// Files that may belong to a running program are kept, as are all files on a file system without
/// locks.
int removeLeftOvers(const QString& folder);

/// Makes SIGINT, SIGTERM and SIGHUP, unless they are ignored, remove the temporary files of this
/// process before they end it.
void removeTemporaryFilesOnSignals();

} // namespace tintwell

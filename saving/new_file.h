#pragma once

#include "saving/descriptors.h"
#include "saving/left_overs.h"

#include <QByteArray>
#include <QFileInfo>

#include <optional>

#include <sys/stat.h>

namespace tintwell {

/// What to do with an existing file.
enum class IfExists { Keep, Replace };

/// A new file next to its target. If the file system allows it, the file has no name before it is
/// complete, so that nothing is left if the program is killed.
class NewFile {
public:
    explicit NewFile(const QFileInfo& target);

    /// If not, `errno` says why.
    bool isOpen() const { return m_file.isOpen(); }
    const Descriptor& descriptor() const { return m_file; }

    /// Syncs it to the disk and moves it to its target, with the target's owner, group and
    /// permissions. False, with the reason in `errno`, if that fails: EEXIST if the target exists
    /// by now and must be kept.
    bool publish(IfExists ifExists);

private:
    Descriptor openWithoutName() const;
    Descriptor openWithName();
    void takeRights() const;
    int linkTo(const char* name) const;
    bool moveToTarget(IfExists ifExists);
    void syncFolder() const;

    QByteArray m_folder;
    QByteArray m_target;
    std::optional<struct stat> m_old; ///< the target; none if it does not exist yet
    Descriptor m_file;
    TemporaryName m_name;
};

} // namespace tintwell

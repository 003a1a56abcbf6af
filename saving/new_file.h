#pragma once

#include "saving/descriptors.h"
#include "saving/left_overs.h"

#include <QByteArray>
#include <QFileInfo>

#include <optional>

#include <sys/stat.h>

namespace tintwell {

/// What becomes of a file that is there already.
enum class IfExists { Keep, Replace };

/// A new file beside its target. Where the file system can, it has no name before it is complete,
/// so that nothing of it remains when the program is killed.
class NewFile {
public:
    explicit NewFile(const QFileInfo& target);

    /// When not, `errno` says why.
    bool isOpen() const { return m_file.isOpen(); }
    const Descriptor& descriptor() const { return m_file; }

    /// Puts it on the disk and into the place of its target, with the owner, group and permissions
    /// of that. False, with the reason in `errno`, where it fails: EEXIST for a target that is
    /// there by now and must stay.
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
    std::optional<struct stat> m_old; ///< the target; none: it is not there yet
    Descriptor m_file;
    TemporaryName m_name;
};

} // namespace tintwell

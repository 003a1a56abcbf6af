#pragma once

#include <QByteArray>
#include <QString>

#include <utility>

namespace tintwell {

/// Opens the missing ones of the descriptors 0 to 2, so that no file gets such a number and with it
/// what is printed. Reading 0 and writing 1 and 2 fails, as with closed ones. False when they
/// cannot be opened.
bool openMissingStandardDescriptors();

/// What `errno` says.
QString systemError();

/// A file descriptor, closed with the object. Below 0: none, opening failed.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor();

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    /// Where this process can open the same file once more, even one without a name.
    QByteArray path() const { return "/proc/self/fd/" + QByteArray::number(m_number); }

private:
    int m_number;
};

// False, with the reason in `errno`, where these fail.

/// Copies what follows the position of \a from, to its end.
bool copyRest(int from, int to);

/// Whether all that was written has arrived: some servers and quotas report a full disk at a close
/// only. The descriptor stays open.
bool isDelivered(int descriptor);

/// The same, after waiting until everything is on the disk, if there is one.
bool isOnDisk(int descriptor);

} // namespace tintwell

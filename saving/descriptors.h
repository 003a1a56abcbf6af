#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <utility>

namespace tintwell {

/// Opens those of the descriptors 0 to 2 that are closed, so that no file gets such a number and,
/// with it, printed output. As with closed ones, reading 0 and writing 1 and 2 fails. False if they
/// cannot be opened.
bool openMissingStandardDescriptors();

/// The text for `errno`.
QString systemError();

/// Takes the status of a call whose failure changes nothing; some C libraries want it to be used.
inline void ignore(int /*status*/) {}

/// A file descriptor, closed by the destructor. Negative if opening failed.
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
    /// A path at which this process can open the same file again, even one without a name.
    QByteArray path() const { return "/proc/self/fd/" + QByteArray::number(m_number); }

private:
    int m_number;
};

// False, with the reason in `errno`, if these fail.

/// Copies everything from the position of \a from to its end.
bool copyRest(int from, int to);

/// The same, but no more than \a most bytes.
bool copyUpTo(int from, int to, std::int64_t most);

/// Whether everything written has arrived: some servers and quotas report a full disk only when a
/// descriptor is closed. This one stays open.
bool isDelivered(int descriptor);

/// The same, after waiting until everything is on the disk, if there is one.
bool isOnDisk(int descriptor);

} // namespace tintwell

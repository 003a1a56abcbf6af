#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace tintwell {

enum class ByteOrder { Little, Big };

/// The whole number without a sign in the \a size bytes, up to 8, at \a place. None if not all of
/// them are within the content.
inline std::optional<std::uint64_t> numberAt(const QByteArray& content, std::int64_t place,
                                             int size, ByteOrder order) {
    if (place < 0 || place > content.size() - size) {
        return std::nullopt;
    }
    const char* const from = content.constData() + place;
    std::uint64_t number = 0;
    for (int n = 0; n < size; ++n) {
        const char byte = from[order == ByteOrder::Big ? n : size - 1 - n];
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}

} // namespace tintwell

#include "lut/pixel_check.h"

#include "lut/bytes.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace tintwell {

namespace {

/// Whether a PNG file has 16-bit RGB pixels of which one colour is transparent. The decoder makes
/// them RGBA, but takes them for RGB.
bool hasTransparentDeepColour(const QByteArray& content) {
    const auto at = [&](std::int64_t place, int size) {
        return numberAt(content, place, size, ByteOrder::Big);
    };
    constexpr std::uint64_t deepRgb = 0x1002; // 16 bits, colour type 2
    if (at(24, 2) != deepRgb) {
        return false;
    }
    std::int64_t chunk = 8;
    while (const std::optional<std::uint64_t> length = at(chunk, 4)) {
        const QByteArray name = content.mid(static_cast<int>(chunk) + 4, 4);
        if (name == "IDAT") {
            return false;
        }
        if (name == "tRNS" && *length == 6) { // decoders ignore one of another length
            return true;
        }
        chunk += 12 + static_cast<std::int64_t>(*length);
    }
    return false;
}

/// Whether a BMP file ends within its pixels. Compressed ones have no size to compare with.
bool isCutBmp(const QByteArray& content, const QSize& size) {
    const auto at = [&](std::int64_t place, int bytes) {
        const auto number = numberAt(content, place, bytes, ByteOrder::Little);
        return static_cast<std::int64_t>(number.value_or(0));
    };
    constexpr std::int64_t fileHeader = 14;
    constexpr std::int64_t oldHeader = 12; // of OS/2, with two bytes for each side
    constexpr std::int64_t bitFields = 3;
    const std::int64_t header = at(fileHeader, 4);
    const std::int64_t bits = header == oldHeader ? at(24, 2) : at(28, 2);
    const std::int64_t compression = header == oldHeader ? 0 : at(30, 4);
    if (compression != 0 && compression != bitFields) {
        return false;
    }
    // The decoder goes on after the headers if the place of the pixels is before that.
    const std::int64_t place = static_cast<std::int32_t>(at(10, 4));
    const std::int64_t start = std::max(place, fileHeader + header);
    const std::int64_t row = (size.width() * bits + 31) / 32 * 4;
    return start + row * size.height() > content.size();
}

/// Whether a JPEG file ends before its end marker. Goes from marker to marker, because metadata can
/// hold a small JPEG image that has an end of its own.
bool isCutJpeg(const QByteArray& content) {
    constexpr std::uint64_t end = 0xD9;
    std::int64_t place = 2;
    while (true) {
        const int marker = content.indexOf('\xFF', static_cast<int>(place));
        if (marker < 0) {
            return true;
        }
        place = marker + 1;
        const std::uint64_t code = numberAt(content, place, 1, ByteOrder::Big).value_or(0);
        if (code == end) {
            return false;
        }
        // 0 is a byte 255 of pixels, 255 fills; those between 0xD0 and the end are restarts.
        const bool isAlone = code <= 1 || code == 0xFF || (code >= 0xD0 && code < end);
        if (isAlone) {
            place += code == 0xFF ? 0 : 1;
        } else {
            const auto length = numberAt(content, place + 1, 2, ByteOrder::Big).value_or(0);
            place += 1 + static_cast<std::int64_t>(length);
        }
    }
}

} // namespace

QString problemOfPixels(const QByteArray& content, const QByteArray& type, const QSize& size) {
    if (type == "png" && hasTransparentDeepColour(content)) {
        return QStringLiteral(
            "holds 16-bit colours with a transparent one (tRNS), which cannot be read");
    }
    const bool isJpeg = type == "jpg" || type == "jpeg";
    return (type == "bmp" && isCutBmp(content, size)) || (isJpeg && isCutJpeg(content))
               ? QStringLiteral("the file ends before its last pixel")
               : QString();
}

} // namespace tintwell

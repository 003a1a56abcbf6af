#include "lut/tiff_samples.h"

#include <QtEndian>

#include <cstdint>
#include <cstring>
#include <optional>

namespace tintwell {

namespace {

constexpr std::uint16_t BitsPerSample = 258;
constexpr std::uint16_t SampleFormat = 339;

/// The numbers in a TIFF file, in its byte order. None beyond its end.
class TiffNumbers {
public:
    explicit TiffNumbers(const QByteArray& content)
        : m_content(content), m_isLittle(content.startsWith('I')) {}

    std::optional<std::uint32_t> at16(std::int64_t place) const { return at<std::uint16_t>(place); }
    std::optional<std::uint32_t> at32(std::int64_t place) const { return at<std::uint32_t>(place); }

private:
    template <typename Number>
    std::optional<std::uint32_t> at(std::int64_t place) const {
        if (place + std::int64_t{sizeof(Number)} > m_content.size()) {
            return std::nullopt;
        }
        const char* const from = m_content.constData() + place;
        return m_isLittle ? qFromLittleEndian<Number>(from) : qFromBigEndian<Number>(from);
    }

    const QByteArray& m_content;
    bool m_isLittle;
};

/// The first of the 16-bit numbers of an entry, which has two bytes of a tag, two of a type, four
/// of a count, and four that hold up to two numbers or the place of more.
std::optional<std::uint32_t> firstNumber(const TiffNumbers& numbers, std::int64_t entry) {
    const std::optional<std::uint32_t> count = numbers.at32(entry + 4);
    const std::optional<std::uint32_t> place = numbers.at32(entry + 8);
    return count && place && *count > 2 ? numbers.at16(*place) : numbers.at16(entry + 8);
}

} // namespace

bool isTiff(const QByteArray& content) {
    return content.startsWith(QByteArray("II*\0", 4)) || content.startsWith(QByteArray("MM\0*", 4));
}

TiffSamples tiffSamples(const QByteArray& content) {
    if (!isTiff(content)) {
        return {};
    }
    constexpr std::int64_t entrySize = 12;
    const TiffNumbers numbers(content);
    const std::int64_t directory = numbers.at32(4).value_or(0);
    const std::uint32_t count = numbers.at16(directory).value_or(0);
    TiffSamples samples;
    for (std::uint32_t n = 0; n < count; ++n) {
        const std::int64_t entry = directory + 2 + entrySize * n;
        const std::optional<std::uint32_t> tag = numbers.at16(entry);
        if (tag == BitsPerSample) {
            samples.bits = static_cast<int>(firstNumber(numbers, entry).value_or(0));
        } else if (tag == SampleFormat) {
            samples.kind = static_cast<int>(firstNumber(numbers, entry).value_or(1));
        }
    }
    return samples;
}

QString problemOf(const TiffSamples& samples) {
    const bool isWhole =
        samples.kind == TiffSamples::Unsigned || samples.kind == TiffSamples::Untold;
    if (isWhole && (samples.bits <= 8 || samples.bits == 16)) {
        return {};
    }
    const char* const kind = isWhole                               ? "integer"
                             : samples.kind == TiffSamples::Float  ? "floating-point"
                             : samples.kind == TiffSamples::Signed ? "signed"
                                                                   : "complex";
    return QStringLiteral("holds %1-bit %2 samples, expected unsigned integers of 8 or 16 bits")
        .arg(samples.bits)
        .arg(QLatin1String(kind));
}

} // namespace tintwell

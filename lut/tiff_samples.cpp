#include "lut/tiff_samples.h"

#include "lut/bytes.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace tintwell {

namespace {

constexpr std::uint64_t BitsPerSample = 258;
constexpr std::uint64_t SampleFormat = 339;

/// The numbers in a TIFF file, in its byte order. None beyond its end.
class TiffNumbers {
public:
    explicit TiffNumbers(const QByteArray& content)
        : m_content(content),
          m_order(content.startsWith('I') ? ByteOrder::Little : ByteOrder::Big) {}

    std::optional<std::uint64_t> at(std::int64_t place, int size) const {
        return numberAt(m_content, place, size, m_order);
    }

private:
    const QByteArray& m_content;
    ByteOrder m_order;
};

/// The bytes of a number of an entry's type; 0 for types of anything but whole numbers.
int sizeOfType(std::uint64_t type) {
    switch (type) {
    case 1: // BYTE
    case 6: // SBYTE
        return 1;
    case 3: // SHORT
    case 8: // SSHORT
        return 2;
    case 4: // LONG
    case 9: // SLONG
        return 4;
    case 16: // LONG8
    case 17: // SLONG8
        return 8;
    default:
        return 0;
    }
}

/// The first of the whole numbers of an entry, which has two bytes of a tag, two of a type, four of
/// a count, and four that hold the numbers or, if they do not fit, their place. 65535 is the most.
std::optional<int> firstNumber(const TiffNumbers& numbers, std::int64_t entry) {
    const int size = sizeOfType(numbers.at(entry + 2, 2).value_or(0));
    const std::uint64_t count = numbers.at(entry + 4, 4).value_or(0);
    const std::optional<std::uint64_t> place = numbers.at(entry + 8, 4);
    if (size == 0 || count == 0 || !place) {
        return std::nullopt;
    }
    const bool fits = count * static_cast<std::uint64_t>(size) <= 4;
    const std::optional<std::uint64_t> number =
        numbers.at(fits ? entry + 8 : static_cast<std::int64_t>(*place), size);
    constexpr std::uint64_t most = 65'535;
    return number ? std::optional(static_cast<int>(std::min(*number, most))) : std::nullopt;
}

QByteArray nameOf(const TiffSamples& samples) {
    switch (samples.kind) {
    case TiffSamples::Unsigned:
    case TiffSamples::Untold:
        return "integer samples";
    case TiffSamples::Signed:
        return "signed samples";
    case TiffSamples::Float:
        return "floating-point samples";
    case TiffSamples::ComplexInteger:
    case TiffSamples::ComplexFloat:
        return "complex samples";
    default:
        return "samples of an unknown kind (" + QByteArray::number(samples.kind) + ")";
    }
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
    const std::int64_t directory = static_cast<std::int64_t>(numbers.at(4, 4).value_or(0));
    const auto count = static_cast<std::int64_t>(numbers.at(directory, 2).value_or(0));
    TiffSamples samples;
    for (std::int64_t n = 0; n < count; ++n) {
        const std::int64_t entry = directory + 2 + entrySize * n;
        const std::optional<std::uint64_t> tag = numbers.at(entry, 2);
        if (tag == BitsPerSample) {
            samples.bits = firstNumber(numbers, entry).value_or(0);
        } else if (tag == SampleFormat) {
            samples.kind = firstNumber(numbers, entry).value_or(TiffSamples::Unsigned);
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
    return QStringLiteral("holds %1-bit %2, expected unsigned integers of 8 or 16 bits")
        .arg(samples.bits)
        .arg(QString::fromLatin1(nameOf(samples)));
}

} // namespace tintwell

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

// The quick ways to read plain decimals.

namespace tintwell {

/// Eight characters as a number whose lowest byte is the first character.
inline std::uint64_t loadEight(const char* from) {
    std::uint64_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? word : __builtin_bswap64(word);
}

/// Four characters likewise.
inline std::uint32_t loadFour(const char* from) {
    std::uint32_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? word : __builtin_bswap32(word);
}

/// Eight digits, each as its value in a byte of its own, the first in the lowest: neighbours are
/// joined to pairs, pairs to fours, fours to eight.
inline std::uint32_t joined(std::uint64_t digits) {
    digits = digits * 10 + (digits >> 8U);
    constexpr std::uint64_t pairs = 0x000000FF000000FFU;
    const std::uint64_t high = (digits & pairs) * (100U + (std::uint64_t{1'000'000U} << 32U));
    const std::uint64_t low = ((digits >> 16U) & pairs) * (1U + (std::uint64_t{10'000U} << 32U));
    return static_cast<std::uint32_t>((high + low) >> 32U);
}

/// Four digits likewise.
inline std::uint32_t joined(std::uint32_t digits) {
    digits = digits * 10 + (digits >> 8U);
    return ((digits & 0x00FF00FFU) * (1U + (100U << 16U))) >> 16U;
}

/// A word of four or eight bytes that all are \a byte.
template <typename Word>
constexpr Word inEachByte(unsigned char byte) {
    return std::numeric_limits<Word>::max() / 0xFFU * byte;
}

/// The value of each character that is a digit; at least 10 for any other.
template <typename Word>
Word digitValues(Word characters) {
    return characters ^ inEachByte<Word>('0');
}

/// The top bit of each byte that is no digit value, and possibly of some behind it.
template <typename Word>
Word otherThanDigits(Word values) {
    return ((values + inEachByte<Word>(0x76)) | values) & inEachByte<Word>(0x80);
}

/// Evaluates the eight characters of "0.123456", as most programs write their samples, to
/// millionths. False for any other form.
inline bool evaluateSixDecimals(std::uint64_t characters, std::uint32_t& millionths) {
    constexpr std::uint64_t point = 0xFF00U;
    const std::uint64_t values = digitValues(characters);
    if ((characters & point) != std::uint64_t{'.'} << 8U || otherThanDigits(values & ~point) != 0) {
        return false;
    }
    millionths = joined((values & ~std::uint64_t{0xFFFFU}) | (values & 0xFFU) << 8U);
    return true;
}

/// Evaluates the digits, at most seven, that stand at the front of eight characters. Returns how
/// many they are; 0 for none and for eight.
inline unsigned evaluateInteger(std::uint64_t characters, std::uint32_t& integer) {
    const std::uint64_t values = digitValues(characters);
    const std::uint64_t others = otherThanDigits(values);
    const unsigned digits = others != 0 ? static_cast<unsigned>(__builtin_ctzll(others)) / 8 : 0;
    if (digits == 0) {
        return 0;
    }
    integer = joined(values << (64 - 8 * digits)); // zeros lead
    return digits;
}

/// Evaluates the digits at \a from, where four characters at least must be readable. Returns how
/// many they are; \a integer has wrapped if that is more than nine. Quickest for codes: the
/// processor foretells where one number ends and the next begins, while evaluateInteger() would
/// have the next one wait for it.
inline unsigned evaluateDigits(const char* from, std::uint32_t& integer) {
    const auto digitAt = [](const char* at) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(*at)) - '0';
    };
    const char* at = from;
    std::uint32_t value = 0;
    const std::uint32_t four = digitValues(loadFour(at));
    if (otherThanDigits(four) == 0) {
        value = joined(four);
        at += sizeof four;
    }
    for (std::uint32_t digit = digitAt(at); digit < 10; digit = digitAt(++at)) {
        value = value * 10 + digit;
    }
    integer = value;
    return static_cast<unsigned>(at - from);
}

/// Digits, a point, digits: mantissa / 10^decimals.
struct Decimal {
    /// What the mantissa can count without wrapping.
    static constexpr unsigned MaxDigits = 19;

    std::uint64_t mantissa = 0;
    unsigned decimals = 0;
    unsigned digits = 0;

    void append(char digit) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(digit - '0');
        ++digits;
    }

    /// Whether `quotient` is the correctly rounded value: both operands are exact in double
    /// precision, so that a single rounding takes place.
    bool isExact() const {
        return digits > 0 && digits <= MaxDigits && mantissa < std::uint64_t{1} << 53U;
    }

    double quotient() const {
        static constexpr std::array<double, MaxDigits + 1> powers = {
            1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
            1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
        const auto whole = static_cast<double>(mantissa);
        return decimals == 0 ? whole : whole / powers[decimals];
    }
};

/// Narrowing a correctly rounded double gives the correctly rounded float, unless the double lies
/// midway between two floats: then the digits that it has lost decide, and the result is false.
inline bool narrow(double exact, float& value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &exact, sizeof bits);
    if ((bits & 0x1FFFFFFFU) == 0x10000000U) {
        return false;
    }
    value = static_cast<float>(exact);
    return true;
}

inline bool narrow(double exact, double& value) {
    value = exact;
    return true;
}

} // namespace tintwell

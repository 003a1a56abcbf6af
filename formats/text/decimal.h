#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

// Fast parsing of plain decimals, several digits at a time.

namespace tintwell {

/// Eight characters as one number, the first in the lowest byte.
inline std::uint64_t loadEight(const char* from) {
    std::uint64_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? word : __builtin_bswap64(word);
}

/// The same for four.
inline std::uint32_t loadFour(const char* from) {
    std::uint32_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? word : __builtin_bswap32(word);
}

/// The number that eight digits make, given as their values, one per byte, the first in the lowest:
/// neighbours are combined into pairs, pairs into fours, fours into eight.
inline std::uint32_t combineDigits(std::uint64_t digits) {
    digits = digits * 10 + (digits >> 8U);
    constexpr std::uint64_t pairs = 0x000000FF000000FFU;
    const std::uint64_t high = (digits & pairs) * (100U + (std::uint64_t{1'000'000U} << 32U));
    const std::uint64_t low = ((digits >> 16U) & pairs) * (1U + (std::uint64_t{10'000U} << 32U));
    return static_cast<std::uint32_t>((high + low) >> 32U);
}

/// The same for four.
inline std::uint32_t combineDigits(std::uint32_t digits) {
    digits = digits * 10 + (digits >> 8U);
    return ((digits & 0x00FF00FFU) * (1U + (100U << 16U))) >> 16U;
}

/// A word that has \a byte in each of its four or eight bytes.
template <typename Word>
constexpr Word repeatByte(unsigned char byte) {
    return std::numeric_limits<Word>::max() / 0xFFU * byte;
}

/// The value of each character that is a digit; at least 10 for any other.
template <typename Word>
Word digitValues(Word characters) {
    return characters ^ repeatByte<Word>('0');
}

/// Sets the top bit of each byte that does not hold the value of a digit, and possibly of bytes
/// after the first of these.
template <typename Word>
Word nonDigitMask(Word values) {
    return ((values + repeatByte<Word>(0x76)) | values) & repeatByte<Word>(0x80);
}

/// Evaluates the eight characters of "0.123456", the form in which most programs write samples, to
/// millionths. False for any other form.
inline bool evaluateSixDecimals(std::uint64_t characters, std::uint32_t& millionths) {
    constexpr std::uint64_t point = 0xFF00U;
    const std::uint64_t values = digitValues(characters);
    if ((characters & point) != std::uint64_t{'.'} << 8U || nonDigitMask(values & ~point) != 0) {
        return false;
    }
    millionths = combineDigits((values & ~std::uint64_t{0xFFFFU}) | (values & 0xFFU) << 8U);
    return true;
}

/// Evaluates the digits, up to seven, at the front of eight characters. Returns their number; 0 if
/// there are none or eight.
inline unsigned evaluateInteger(std::uint64_t characters, std::uint32_t& integer) {
    const std::uint64_t values = digitValues(characters);
    const std::uint64_t others = nonDigitMask(values);
    const unsigned digits = others != 0 ? static_cast<unsigned>(__builtin_ctzll(others)) / 8 : 0;
    if (digits == 0) {
        return 0;
    }
    integer = combineDigits(values << (64 - 8 * digits)); // zeros lead
    return digits;
}

/// Evaluates the digits at \a from, where at least four characters must be readable. Returns their
/// number; if they are more than nine, \a integer has wrapped. Faster than evaluateInteger() for a
/// series of short integers: branch prediction finds where each one ends, so the next need not wait
/// for its evaluation.
inline unsigned evaluateDigits(const char* from, std::uint32_t& integer) {
    const auto digitAt = [](const char* at) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(*at)) - '0';
    };
    const char* at = from;
    std::uint32_t value = 0;
    const std::uint32_t four = digitValues(loadFour(at));
    if (nonDigitMask(four) == 0) {
        value = combineDigits(four);
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
    /// How many digits the mantissa holds without wrapping.
    static constexpr unsigned MaxDigits = 19;

    std::uint64_t mantissa = 0;
    unsigned decimals = 0;
    unsigned digits = 0;

    void append(char digit) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(digit - '0');
        ++digits;
    }

    /// Whether `quotient` is the correctly rounded value: both operands are exact in double
    /// precision, so there is only one rounding.
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

/// Narrows a correctly rounded double to the correctly rounded float. False if the double is midway
/// between two floats: there the digits lost in the double would decide.
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

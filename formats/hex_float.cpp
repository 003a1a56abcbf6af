#include "formats/hex_float.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

bool hexasciitoint(char& out, char c) {
    out = 0;
    if (c >= '0' && c <= '9') {
        out = static_cast<char>(c - '0');
    } else if (c >= 'A' && c <= 'F') {
        out = static_cast<char>(c - 'A' + 10);
    } else if (c >= 'a' && c <= 'f') {
        out = static_cast<char>(c - 'a' + 10);
    } else {
        return false;
    }
    return true;
}

bool hexasciitofloat(float& out, const char* text) {
    std::uint32_t bits = 0;
    for (std::size_t byte = 0; byte < 4; ++byte) {
        char high = 0;
        char low = 0;
        if (!hexasciitoint(high, text[2 * byte]) || !hexasciitoint(low, text[2 * byte + 1])) {
            return false;
        }
        bits |= static_cast<std::uint32_t>(high * 16 + low) << (8 * byte);
    }
    std::memcpy(&out, &bits, sizeof out);
    return true;
}

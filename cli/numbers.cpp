#include "cli/numbers.h"

#include <QByteArray>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include <locale.h> // NOLINT(modernize-deprecated-headers): <clocale> has no newlocale

namespace cli {

std::optional<float> takeNumber(const char*& text) {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    char* end = nullptr;
    const float value = strtof_l(text, &end, c);
    if (end == text || std::strchr(" \t\r\n\v\f", *end) == nullptr) {
        return std::nullopt;
    }
    text = end;
    return value;
}

std::optional<float> parseNumber(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const char* at = bytes.constData();
    const std::optional<float> value = takeNumber(at);
    return at == bytes.constData() + bytes.size() ? value : std::nullopt;
}

QByteArray shortest(float value) {
    if (std::isnan(value)) {
        return QByteArrayLiteral("nan"); // whatever its sign
    }
    std::array<char, 32> text; // more than any float needs
    const char* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), static_cast<int>(end - text.data())};
}

} // namespace cli

#include "platform/foundation/TextConversion.h"

#include <cstddef>
#include <cstdint>

namespace orv::platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t c)
{
    return c >= 0xD800 && c < 0xDC00;
}

bool isLowSurrogate(char32_t c)
{
    return c >= 0xDC00 && c < 0xE000;
}

int sequenceLength(std::uint8_t lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

struct Decoded {
    char32_t code;
    std::size_t length;
};

Decoded decode(std::string_view text, std::size_t at)
{
    const auto lead = static_cast<std::uint8_t>(text[at]);
    const int length = sequenceLength(lead);
    if (length == 1) {
        return {lead, 1};
    }
    if (length == 0 || at + static_cast<std::size_t>(length) > text.size()) {
        return {kReplacement, 1};
    }
    char32_t code = lead & (0xFFU >> static_cast<unsigned>(length + 1));
    for (int i = 1; i < length; ++i) {
        const auto byte = static_cast<std::uint8_t>(text[at + static_cast<std::size_t>(i)]);
        if ((byte & 0xC0U) != 0x80U) {
            return {kReplacement, 1};
        }
        code = (code << 6U) | (byte & 0x3FU);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = isHighSurrogate(code) || isLowSurrogate(code);
    if (overlong || surrogate || code > 0x10FFFF) {
        return {kReplacement, 1};
    }
    return {code, static_cast<std::size_t>(length)};
}

void appendUtf8(std::string &out, char32_t c)
{
    const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0U | (c >> 6U));
        put(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        put(0xE0U | (c >> 12U));
        put(0x80U | ((c >> 6U) & 0x3FU));
        put(0x80U | (c & 0x3FU));
    } else {
        put(0xF0U | (c >> 18U));
        put(0x80U | ((c >> 12U) & 0x3FU));
        put(0x80U | ((c >> 6U) & 0x3FU));
        put(0x80U | (c & 0x3FU));
    }
}

} // namespace

std::u16string utf16FromUtf8(std::string_view text)
{
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const Decoded next = decode(text, i);
        i += next.length;
        if (next.code >= 0x10000) {
            const char32_t rest = next.code - 0x10000;
            out += static_cast<char16_t>(0xD800 + (rest >> 10U));
            out += static_cast<char16_t>(0xDC00 + (rest & 0x3FFU));
        } else {
            out += static_cast<char16_t>(next.code);
        }
    }
    return out;
}

std::string utf8FromUtf16(std::u16string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        if (isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            appendUtf8(out, 0x10000 + ((unit - 0xD800) << 10U) + (text[i + 1] - 0xDC00U));
            ++i;
        } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
            appendUtf8(out, kReplacement);
        } else {
            appendUtf8(out, unit);
        }
    }
    return out;
}

} // namespace orv::platform

#include "common/Arguments.h"

#include "common/ScriptError.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <limits>

namespace orv::apps {

namespace {

constexpr std::size_t kShownCharacters = 40;

// A value as a message shows it: never a whole page.
std::string shown(const Json &value)
{
    std::string text = value.dump(-1, ' ', true, Json::error_handler_t::replace);
    if (text.size() > kShownCharacters) {
        text.resize(kShownCharacters);
        text += "...";
    }
    return text;
}

[[noreturn]] void refuse(const std::string &name, std::string_view wanted, const Json &value)
{
    throw ScriptError(fmt::format("\"{}\" is not {}: {}", name, wanted, shown(value)));
}

int digitValue(char c)
{
    constexpr int ten = 10;
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    return std::tolower(static_cast<unsigned char>(c)) - 'a' + ten;
}

} // namespace

const Json *member(const Json &object, std::string_view key)
{
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

const Json &required(const Json &object, std::string_view key, const std::string &name)
{
    const Json *value = member(object, key);
    if (value == nullptr) {
        throw ScriptError(fmt::format("\"{}\" is missing", name));
    }
    return *value;
}

void checkKeys(const Json &object, const std::string &name,
               std::initializer_list<std::string_view> keys)
{
    if (!object.is_object()) {
        refuse(name, "an object", object);
    }
    for (const auto &[key, value] : object.items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            throw ScriptError(fmt::format(R"("{}" has the unknown key "{}")", name, key));
        }
    }
}

std::string asText(const Json &value, const std::string &name)
{
    if (!value.is_string()) {
        refuse(name, "a text", value);
    }
    return value.get<std::string>();
}

bool asBool(const Json &value, const std::string &name)
{
    if (!value.is_boolean()) {
        refuse(name, "true or false", value);
    }
    return value.get<bool>();
}

double asNumber(const Json &value, const std::string &name)
{
    if (!value.is_number()) {
        refuse(name, "a number", value);
    }
    return value.get<double>();
}

std::int64_t asInteger(const Json &value, const std::string &name, std::int64_t least,
                       std::int64_t most)
{
    const auto wanted = fmt::format("a whole number from {} to {}", least, most);
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (!value.is_number_integer() ||
        (value.is_number_unsigned() && value.get<std::uint64_t>() > largest)) {
        refuse(name, wanted, value);
    }
    const auto number = value.get<std::int64_t>();
    if (number < least || number > most) {
        refuse(name, wanted, value);
    }
    return number;
}

std::uint32_t asWord(const Json &value, const std::string &name)
{
    return static_cast<std::uint32_t>(asInteger(value, name,
                                                std::numeric_limits<std::int32_t>::min(),
                                                std::numeric_limits<std::uint32_t>::max()));
}

std::vector<double> asNumbers(const Json &value, const std::string &name, std::size_t count)
{
    const bool fits =
        value.is_array() && value.size() == count &&
        std::all_of(value.begin(), value.end(), [](const Json &item) { return item.is_number(); });
    if (!fits) {
        refuse(name, fmt::format("a list of {} numbers", count), value);
    }
    return value.get<std::vector<double>>();
}

std::vector<std::string> asTexts(const Json &value, const std::string &name)
{
    const bool fits =
        value.is_array() &&
        std::all_of(value.begin(), value.end(), [](const Json &item) { return item.is_string(); });
    if (!fits) {
        refuse(name, "a list of texts", value);
    }
    return value.get<std::vector<std::string>>();
}

std::vector<std::uint8_t> asBytes(const Json &value, const std::string &name, std::size_t size)
{
    constexpr unsigned bitsOfADigit = 4;
    const std::string text = asText(value, name);
    const bool fits = text.size() % 2 == 0 && text.size() <= 2 * size &&
                      std::all_of(text.begin(), text.end(),
                                  [](unsigned char c) { return std::isxdigit(c) != 0; });
    if (!fits) {
        refuse(name, fmt::format("pairs of hexadecimal digits for up to {} bytes", size), value);
    }
    std::vector<std::uint8_t> bytes(size);
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto &byte = bytes[i / 2];
        byte = static_cast<std::uint8_t>(static_cast<unsigned>(byte) << bitsOfADigit |
                                         static_cast<unsigned>(digitValue(text[i])));
    }
    return bytes;
}

} // namespace orv::apps

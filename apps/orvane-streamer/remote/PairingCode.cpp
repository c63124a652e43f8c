#include "orvane-streamer/remote/PairingCode.h"

#include "orvane-streamer/remote/Secrets.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace orv::apps {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEFGHJKMNPQRSTVWXYZ";
constexpr std::size_t kLength = 16;
constexpr std::size_t kGroup = 4;
// A code as people type it; what is longer is none.
constexpr std::size_t kLongestTyped = 64;

char normalised(char typed)
{
    const char large = typed >= 'a' && typed <= 'z' ? static_cast<char>(typed - 'a' + 'A') : typed;
    switch (large) {
    case 'O':
        return '0';
    case 'I':
    case 'L':
        return '1';
    default:
        return large;
    }
}

} // namespace

std::string makePairingCode()
{
    std::array<std::uint8_t, kLength> random{};
    fillWithRandom(random);
    std::string code;
    for (const std::uint8_t byte : random) {
        code += kDigits[byte % kDigits.size()];
    }
    return code;
}

std::string shownPairingCode(std::string_view code)
{
    std::string shown;
    for (std::size_t i = 0; i < code.size(); ++i) {
        if (i > 0 && i % kGroup == 0) {
            shown += '-';
        }
        shown += code[i];
    }
    return shown;
}

std::string normalisedPairingCode(std::string_view typed)
{
    std::string code;
    for (const char letter : typed.substr(0, kLongestTyped)) {
        if (letter != '-' && letter != ' ') {
            code += normalised(letter);
        }
    }
    return code;
}

} // namespace orv::apps

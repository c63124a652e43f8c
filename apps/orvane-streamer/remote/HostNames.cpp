#include "orvane-streamer/remote/HostNames.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace orv::apps {

namespace {

constexpr std::size_t kLongestPort = 5;
// What a machine's name may have, by POSIX.
constexpr std::size_t kLongestName = 256;

char small(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool isPortOrNothing(std::string_view rest)
{
    if (rest.empty()) {
        return true;
    }
    return rest.size() >= 2 && rest.size() <= kLongestPort + 1 && rest.front() == ':' &&
           rest.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

bool isAddress(int family, std::string_view text)
{
    in6_addr address{};
    return ::inet_pton(family, std::string(text).c_str(), &address) == 1;
}

} // namespace

bool isSameName(std::string_view one, std::string_view other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return small(a) == small(b); });
}

bool isHostOfThisMachine(std::string_view host, std::string_view machine)
{
    if (host.find('\0') != std::string_view::npos) {
        return false;
    }
    if (host.starts_with('[')) {
        const std::size_t end = host.find(']');
        return end != std::string_view::npos && isPortOrNothing(host.substr(end + 1)) &&
               isAddress(AF_INET6, host.substr(1, end - 1));
    }
    const std::size_t end = std::min(host.find(':'), host.size());
    if (!isPortOrNothing(host.substr(end))) {
        return false;
    }
    const std::string_view name = host.substr(0, end);
    if (isAddress(AF_INET, name) || isSameName(name, "localhost")) {
        return true;
    }
    return !machine.empty() &&
           (isSameName(name, machine) || isSameName(name, std::string(machine) + ".local"));
}

std::string machineName()
{
    std::array<char, kLongestName> name{};
    // The last byte stays 0, whatever the system cuts off.
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace orv::apps

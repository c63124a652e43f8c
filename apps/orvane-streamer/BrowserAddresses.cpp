#include "orvane-streamer/BrowserAddresses.h"

#include <fmt/format.h>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace orv::apps {

namespace {

constexpr std::uint32_t kLoopbackNetwork = 127;
constexpr unsigned kFirstByte = 24;

std::optional<in_addr> ipv4Of(const std::string &text)
{
    in_addr address{};
    return ::inet_pton(AF_INET, text.c_str(), &address) == 1 ? std::optional(address)
                                                             : std::nullopt;
}

std::optional<in6_addr> ipv6Of(const std::string &text)
{
    in6_addr address{};
    return ::inet_pton(AF_INET6, text.c_str(), &address) == 1 ? std::optional(address)
                                                              : std::nullopt;
}

bool isEveryAddress(const std::string &text)
{
    const auto v4 = ipv4Of(text);
    const auto v6 = ipv6Of(text);
    return (v4 && v4->s_addr == INADDR_ANY) || (v6 && IN6_IS_ADDR_UNSPECIFIED(&*v6));
}

std::string hostText(const ifaddrs &entry)
{
    std::array<char, INET_ADDRSTRLEN> text{};
    sockaddr_in address{};
    std::copy_n(reinterpret_cast<const char *>(entry.ifa_addr), sizeof address,
                reinterpret_cast<char *>(&address));
    ::inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size());
    return text.data();
}

/// Of all interfaces that are up, those of this machine alone last. What listens on every IPv6
/// address takes IPv4 as well, and that is shorter to type.
std::vector<std::string> ownHosts()
{
    ifaddrs *first = nullptr;
    if (::getifaddrs(&first) != 0) {
        return {"127.0.0.1"};
    }
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> all(first, &::freeifaddrs);
    std::vector<std::string> hosts;
    for (const ifaddrs *entry = first; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_INET &&
            (entry->ifa_flags & IFF_UP) != 0) {
            hosts.push_back(hostText(*entry));
        }
    }
    std::stable_partition(hosts.begin(), hosts.end(), isOpenToOthers);
    return hosts;
}

} // namespace

bool isOpenToOthers(const std::string &address)
{
    if (const auto v4 = ipv4Of(address)) {
        return (ntohl(v4->s_addr) >> kFirstByte) != kLoopbackNetwork;
    }
    const auto v6 = ipv6Of(address);
    return v6 && !IN6_IS_ADDR_LOOPBACK(&*v6);
}

std::vector<std::string> browserAddresses(const std::string &address, std::uint16_t port,
                                          const std::string &pairingCode)
{
    std::vector<std::string> hosts;
    if (isEveryAddress(address)) {
        hosts = ownHosts();
    } else if (ipv6Of(address)) {
        hosts = {"[" + address + "]"};
    } else if (ipv4Of(address)) {
        hosts = {address};
    }
    std::vector<std::string> addresses;
    addresses.reserve(hosts.size());
    for (const std::string &host : hosts) {
        addresses.push_back(fmt::format("http://{}:{}/?code={}", host, port, pairingCode));
    }
    return addresses;
}

} // namespace orv::apps

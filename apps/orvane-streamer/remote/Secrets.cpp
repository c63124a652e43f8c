#include "orvane-streamer/remote/Secrets.h"

#include <sys/random.h>

#include <cerrno>
#include <cstddef>
#include <stdexcept>

namespace orv::apps {

void fillWithRandom(std::span<std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::getrandom(bytes.data(), bytes.size(), 0);
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throw std::runtime_error("The system gives no random numbers.");
        }
    }
}

bool isSameSecret(std::string_view one, std::string_view other)
{
    if (one.size() != other.size()) {
        return false;
    }
    // Volatile, or the compiler may stop at the first difference.
    volatile unsigned difference = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
        difference = difference |
                     (static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]));
    }
    return difference == 0;
}

} // namespace orv::apps

#include "orvane-streamer/StopSignal.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace orv::apps {

StopSignal::StopSignal() : event_(::eventfd(0, EFD_CLOEXEC))
{
    if (!event_) {
        throw std::runtime_error("The system has no file descriptor left.");
    }
}

void StopSignal::raise()
{
    // Stays readable until the end: every wait from now on answers at once.
    ::eventfd_write(event_.get(), 1);
}

bool StopSignal::waitForInput(int descriptor) const
{
    std::array<pollfd, 2> waited{{{event_.get(), POLLIN, 0}, {descriptor, POLLIN, 0}}};
    while (::poll(waited.data(), waited.size(), -1) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return waited[0].revents == 0;
}

} // namespace orv::apps

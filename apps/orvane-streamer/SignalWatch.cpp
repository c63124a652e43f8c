#include "orvane-streamer/SignalWatch.h"

#include <sys/signalfd.h>

#include <csignal>
#include <stdexcept>
#include <utility>

namespace orv::apps {

SignalWatch::SignalWatch()
{
    sigset_t watched;
    ::sigemptyset(&watched);
    ::sigaddset(&watched, SIGINT);
    ::sigaddset(&watched, SIGTERM);
    if (::pthread_sigmask(SIG_BLOCK, &watched, nullptr) == 0) {
        signals_ = FileDescriptor(::signalfd(-1, &watched, SFD_CLOEXEC));
    }
    if (!signals_) {
        throw std::runtime_error("The signals that end the program cannot be watched.");
    }
}

SignalWatch::~SignalWatch()
{
    stop();
}

void SignalWatch::stop()
{
    stop_.raise();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void SignalWatch::start(std::function<void()> quit)
{
    thread_ = std::thread([this, quit = std::move(quit)] {
        if (stop_.waitForInput(signals_.get())) {
            quit();
        }
    });
}

} // namespace orv::apps

#pragma once

#include "orvane-streamer/remote/ConnectionUser.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace orv::apps {

/// The port, its connections, and the thread that serves them all.
///
/// Borrows  the user. It must hold no link any more when this is destroyed.
/// Thread   `post` from any.
class Network {
public:
    /// Begins to listen. Throws `std::runtime_error` that names the address when it cannot.
    Network(const std::string &address, std::uint16_t port, ConnectionUser &user);
    ~Network();
    Network(const Network &) = delete;
    Network &operator=(const Network &) = delete;

    [[nodiscard]] std::uint16_t port() const;
    void start();
    /// Runs the task on the network thread; never when that has ended.
    void post(std::function<void()> task);
    /// Lets nobody in any more, runs `farewell` on the network thread, and waits until the links
    /// have ended, or the time is over. The thread has ended then.
    void finish(const std::function<void()> &farewell, std::chrono::milliseconds limit);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orv::apps

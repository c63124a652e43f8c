#pragma once

#include <xcb/xcb.h>

#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace orv::bench {

/// What all threads of a process have run so far, in nanoseconds, by the scheduler's own count.
/// Throws `std::runtime_error` when there is no such process.
inline std::uint64_t processorNanoseconds(pid_t process)
{
    const std::filesystem::path tasks = "/proc/" + std::to_string(process) + "/task";
    std::error_code error;
    std::uint64_t sum = 0;
    for (const auto &task : std::filesystem::directory_iterator(tasks, error)) {
        std::uint64_t ran = 0;
        std::ifstream(task.path() / "schedstat") >> ran;
        sum += ran;
    }
    if (error || sum == 0) {
        throw std::runtime_error("no process " + std::to_string(process) + " is running");
    }
    return sum;
}

/// The process of the X server at the other end of a local connection.
inline pid_t serverProcess(xcb_connection_t *x)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::getsockopt(xcb_get_file_descriptor(x), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) {
        throw std::runtime_error("the X server is not on this machine");
    }
    return peer.pid;
}

} // namespace orv::bench

#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>

namespace orv::apps {

/// Counts wrong pairing codes, so that nobody can try many.
///
/// Remembers the wrong codes of the last minute and no more than may be tried in it.
/// Thread   one at a time.
class PairingLimit {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    static constexpr std::chrono::seconds period{60};
    static constexpr std::size_t mostOfOneAddress = 10;
    static constexpr std::size_t mostOfAll = 100;

    explicit PairingLimit(Clock clock) : clock_(std::move(clock)) {}

    /// How long no code of this address is looked at; 0 when the next one may come.
    [[nodiscard]] std::chrono::seconds waitFor(const std::string &address);
    void noteWrongCode(const std::string &address);

private:
    struct WrongCode {
        std::chrono::steady_clock::time_point time;
        std::string address;
    };

    Clock clock_;
    std::deque<WrongCode> wrong_;
};

} // namespace orv::apps

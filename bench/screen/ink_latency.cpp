// Draws on a program that shows ink and tells how soon the ink is on the screen, and what it costs.
//
//   ink_latency [--area X Y WIDTH HEIGHT] [--strokes N]
//               [--records PORT | --remote PORT CODE SETTLED] PROCESS
//
// By the mouse of the X server, or by records to a host's port, or to a streamer's, on which
// SETTLED strokes are drawn first. Prints one line of JSON: the milliseconds from each motion to
// its first changed pixel, the motions of which nothing was seen, the part of quick motions that is
// in the ink, and the microseconds of processor time a motion for the PROCESS, the X server and the
// compositor.

#include "InkLatency.h"
#include "MousePointer.h"
#include "ProcessorTime.h"
#include "RecordPointer.h"
#include "SocketPointer.h"

#include <nlohmann/json.hpp>

#include <sys/prctl.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using orv::bench::InkArea;
using orv::bench::InkPointer;

using Clock = std::chrono::steady_clock;

constexpr int kMotionsASecond = 240;
constexpr int kSeconds = 5;
constexpr auto kRest = 500ms;

class BadCall : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    InkArea area{40, 40, 1840, 1000};
    int strokes = 20;
    std::optional<std::uint16_t> hostsPort;
    std::optional<std::uint16_t> streamersPort;
    std::string pairingCode;
    unsigned settled = 0;
    pid_t process = 0;
};

class Words {
public:
    explicit Words(std::span<char *const> words) : words_(words) {}

    [[nodiscard]] bool isEmpty() const { return words_.empty(); }
    std::string_view text()
    {
        if (words_.empty()) {
            throw BadCall("an argument is missing");
        }
        const std::string_view first = words_.front();
        words_ = words_.subspan(1);
        return first;
    }
    template <typename Number> Number number()
    {
        const std::string_view word = text();
        Number value{};
        const auto read = std::from_chars(word.data(), word.data() + word.size(), value);
        if (read.ec != std::errc{} || read.ptr != word.data() + word.size()) {
            throw BadCall("\"" + std::string(word) + "\" is no number that fits");
        }
        return value;
    }

private:
    std::span<char *const> words_;
};

Options readOptions(Words words)
{
    Options options;
    bool hasProcess = false;
    while (!words.isEmpty()) {
        Words ahead = words;
        const std::string_view word = ahead.text();
        if (word == "--area") {
            for (int *part :
                 {&options.area.x, &options.area.y, &options.area.width, &options.area.height}) {
                *part = ahead.number<int>();
            }
        } else if (word == "--strokes") {
            options.strokes = ahead.number<int>();
        } else if (word == "--records") {
            options.hostsPort = ahead.number<std::uint16_t>();
        } else if (word == "--remote") {
            options.streamersPort = ahead.number<std::uint16_t>();
            options.pairingCode = ahead.text();
            options.settled = ahead.number<unsigned>();
        } else {
            options.process = words.number<pid_t>();
            hasProcess = true;
            continue;
        }
        words = ahead;
    }
    if (!hasProcess || options.strokes < 1) {
        throw BadCall("a process and at least one stroke are needed");
    }
    return options;
}

/// One long stroke; nobody watches the screen meanwhile. `processes` and the answer go together:
/// microseconds of processor time a motion.
std::vector<double> cost(InkPointer &pointer, const InkArea &area,
                         const std::vector<pid_t> &processes)
{
    constexpr int kMotions = kMotionsASecond * kSeconds;
    const auto at = [&area](int step) {
        return orv::bench::ScreenPoint{
            area.x + static_cast<int>(area.width * (0.5 + 0.49 * std::cos(step / 60.0))),
            area.y + static_cast<int>(area.height * (0.5 + 0.49 * std::sin(step / 41.0)))};
    };
    pointer.press(at(0));
    pointer.waitUntil(Clock::now() + kRest);
    std::vector<double> before;
    before.reserve(processes.size());
    for (const pid_t process : processes) {
        before.push_back(static_cast<double>(orv::bench::processorNanoseconds(process)));
    }
    const auto begin = Clock::now();
    for (int step = 1; step <= kMotions; ++step) {
        pointer.waitUntil(begin + step * std::chrono::nanoseconds(1s) / kMotionsASecond);
        pointer.move(at(step));
    }
    pointer.waitUntil(Clock::now() + kRest);
    std::vector<double> spent;
    spent.reserve(processes.size());
    for (std::size_t i = 0; i < processes.size(); ++i) {
        const auto after = static_cast<double>(orv::bench::processorNanoseconds(processes[i]));
        spent.push_back((after - before[i]) / 1000.0 / kMotions);
    }
    pointer.release(at(kMotions));
    return spent;
}

std::vector<pid_t> processesOf(const Options &options)
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x(
        xcb_connect(nullptr, nullptr), xcb_disconnect);
    std::vector<pid_t> processes{options.process, orv::bench::serverProcess(x.get())};
    if (const char *compositor = std::getenv("ORV_TEST_COMPOSITOR_PID")) {
        processes.push_back(std::stoi(compositor));
    }
    return processes;
}

std::unique_ptr<InkPointer> makePointer(const Options &options)
{
    if (options.hostsPort) {
        return std::make_unique<orv::bench::SocketPointer>(*options.hostsPort);
    }
    if (!options.streamersPort) {
        return std::make_unique<orv::bench::MousePointer>();
    }
    auto pointer =
        std::make_unique<orv::bench::RecordPointer>(*options.streamersPort, options.pairingCode);
    pointer->prepare(options.settled);
    return pointer;
}

/// The times, and the part of quick motions that is in the ink.
std::pair<orv::bench::InkLatency::Result, double> watch(InkPointer &pointer, const Options &options)
{
    orv::bench::InkLatency latency(pointer, options.area);
    latency.requireStillScreen();
    auto measured = latency.measure(options.strokes);
    const double kept = latency.partKept(options.strokes);
    return {std::move(measured), kept};
}

void run(const Options &options)
{
    const auto pointer = makePointer(options);
    pointer->waitUntil(Clock::now() + kRest);
    const auto [measured, kept] = watch(*pointer, options);
    const auto spent = cost(*pointer, options.area, processesOf(options));

    nlohmann::json line{{"lost", measured.lost}, {"kept", kept}};
    for (const auto &seen : measured.seen) {
        line["milliseconds"].push_back(seen.count());
    }
    constexpr std::array kNames{"process", "server", "compositor"};
    for (std::size_t i = 0; i < spent.size(); ++i) {
        line["microseconds"][kNames.at(i)] = spent[i];
    }
    std::cout << line.dump() << std::endl;
}

} // namespace

int main(int argc, char **argv)
{
    // A motion is to come when it is due.
    ::prctl(PR_SET_TIMERSLACK, 1);
    try {
        run(readOptions(Words(std::span(argv, static_cast<std::size_t>(argc)).subspan(1))));
        return 0;
    } catch (const BadCall &error) {
        std::cerr << "ink_latency: " << error.what() << '\n';
        return 2;
    } catch (const std::exception &error) {
        std::cerr << "ink_latency: " << error.what() << '\n';
        return 1;
    }
}

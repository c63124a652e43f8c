#include "OrvAnnotation/AnnotationController.h"
#include "platform/virtual/VirtualPlatform.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <chrono>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>

// What a mouse record costs from the controller's door to the queued call, beside a plain switch
// with a queue in the same run.

namespace {

using namespace orv;

int ignoreRecord(const void * /*bytes*/, std::size_t /*length*/, std::uint32_t /*pluginID*/)
{
    return 0;
}

stCommand_mgs mouseMove(std::uint32_t i)
{
    stCommand_mgs record;
    record.pluginID = 17;
    record.wparam = 0xEFFD;
    record.lparam = 10;
    record.ext[3] = static_cast<std::uint8_t>(i | 1U);
    return record;
}

/// The least that any design does: look at the number, put a call into a queue.
class PlainSwitch {
public:
    void handle(const stCommand_mgs &record)
    {
        switch (record.wparam & 0xEFFFU) {
        case 0xEFFD:
        case 0xEFFE: {
            const std::lock_guard lock(mutex_);
            queue_.emplace_back([record, this] { sum_ += record.ext[3]; });
            break;
        }
        default:
            break;
        }
    }
    void drain()
    {
        for (auto &task : queue_) {
            task();
        }
        queue_.clear();
        benchmark::DoNotOptimize(sum_);
    }

private:
    std::mutex mutex_;
    std::deque<std::function<void()>> queue_;
    std::uint64_t sum_ = 0;
};

constexpr int kBatch = 1000;

template <class Send> double nanosecondsARecord(Send &&send)
{
    const auto start = std::chrono::steady_clock::now();
    for (std::uint32_t i = 0; i < kBatch; ++i) {
        send(mouseMove(i));
    }
    const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
    return taken.count() / kBatch;
}

void dispatch(benchmark::State &state)
{
    std::string home = (std::filesystem::temp_directory_path() / "orv-bench-XXXXXX").string();
    platform::VirtualSettings settings;
    settings.home = ::mkdtemp(home.data());
    settings.resources = ORV_BUILT_RESOURCES;
    {
        platform::VirtualPlatform desk(settings);
        platform::Platform::install(&desk);
        AnnotationController controller;
        controller.SetClientCommandCHSender(ignoreRecord);
        controller.SetActiveOpt(0, 17);
        controller.setM_dpID(1);
        controller.setM_clientDimension({1440.0, 900.0});
        stCommand_mgs open;
        open.pluginID = 17;
        open.ext[0] = 1;
        controller.CommandClient2App(open);
        desk.mainThread().drain();
        PlainSwitch plain;
        double ours = 0.0;
        double theirs = 0.0;
        for (auto _ : state) {
            ours += nanosecondsARecord(
                [&](const stCommand_mgs &record) { controller.CommandClient2App(record); });
            theirs +=
                nanosecondsARecord([&](const stCommand_mgs &record) { plain.handle(record); });
            state.PauseTiming();
            desk.mainThread().drain();
            plain.drain();
            state.ResumeTiming();
        }
        const auto rounds = static_cast<double>(state.iterations());
        state.counters["ns_a_record"] = ours / rounds;
        state.counters["ns_plain_switch"] = theirs / rounds;
        state.counters["ratio"] = ours / theirs;
    }
    platform::Platform::install(nullptr);
    std::filesystem::remove_all(settings.home);
}
BENCHMARK(dispatch);

} // namespace

BENCHMARK_MAIN();

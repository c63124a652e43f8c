#include "platform/raster/Pictures.h"

#include <benchmark/benchmark.h>
#include <turbojpeg.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// What writing a snapshot of 3840x2160 costs, as a ratio within one run to libjpeg-turbo called
// directly: the same pixels, quality and colour sampling, and its bytes written to a file.

namespace {

using namespace orv;

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;
constexpr float kQuality = 0.95F;
constexpr int kPercent = 95;

/// Windows with text in them over a gradient, as a desk looks; where `transparent`, with a strip of
/// half of a colour.
platform::Image desk(bool transparent)
{
    platform::Image image(kWidth, kHeight);
    std::uint32_t random = 1;
    for (int y = 0; y < kHeight; ++y) {
        std::uint32_t *row = image.row(y);
        for (int x = 0; x < kWidth; ++x) {
            random = random * 1664525U + 1013904223U;
            const bool window = (x / 600 + y / 400) % 3 != 0;
            const bool letter = y / 10 % 2 == 0 && x / 6 % 9 != 0 && random >> 30U == 0;
            const auto shade = static_cast<std::uint32_t>(x * 120 / kWidth + y * 100 / kHeight);
            const std::uint32_t ground = window ? 0xFFF4F4F0 : 0xFF102040 + shade * 0x00010101;
            row[x] = window && letter ? 0xFF202428 : ground;
        }
        if (transparent && y > kHeight / 2 && y < kHeight / 2 + 100) {
            std::fill_n(row, kWidth, 0x80800000);
        }
    }
    return image;
}

/// Of this thread: what others do on the machine at the same time counts less.
template <class Work> double cpuSecondsOf(Work &&work)
{
    const auto now = [] {
        std::timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    };
    const double start = now();
    work();
    return now() - start;
}

class Bench {
public:
    explicit Bench(bool transparent) : image_(desk(transparent))
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "orv-bench-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~Bench()
    {
        tjDestroy(coder_);
        std::filesystem::remove_all(folder_);
    }
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    bool write()
    {
        return platform::writePicture(folder_ + "/ours.jpg", image_, platform::PictureKind::jpeg,
                                      kQuality);
    }
    bool writeDirectly()
    {
        unsigned char *bytes = nullptr;
        unsigned long size = 0;
        const int failed = tjCompress2(
            coder_, reinterpret_cast<const unsigned char *>(image_.data()), kWidth, kWidth * 4,
            kHeight, TJPF_BGRX, &bytes, &size, TJSAMP_420, kPercent, TJFLAG_ACCURATEDCT);
        const std::unique_ptr<unsigned char, decltype(&tjFree)> owner(bytes, &tjFree);
        const std::unique_ptr<std::FILE, decltype(&std::fclose)> file(
            std::fopen((folder_ + "/direct.jpg").c_str(), "wb"), &std::fclose);
        return failed == 0 && file != nullptr && std::fwrite(bytes, 1, size, file.get()) == size;
    }

private:
    platform::Image image_;
    std::string folder_;
    tjhandle coder_ = tjInitCompress();
};

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void jpeg(benchmark::State &state)
{
    Bench bench(state.range(0) != 0);
    std::vector<double> ours;
    std::vector<double> direct;
    bool written = bench.write() && bench.writeDirectly();
    for (auto _ : state) {
        const double seconds = cpuSecondsOf([&] { written = bench.write() && written; });
        direct.push_back(cpuSecondsOf([&] { written = bench.writeDirectly() && written; }));
        ours.push_back(seconds);
        state.SetIterationTime(seconds);
    }
    if (!written) {
        state.SkipWithError("a picture was not written");
        return;
    }
    state.counters["ratio_to_direct"] = median(ours) / median(direct);
}
BENCHMARK(jpeg)
    ->ArgName("transparent")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Iterations(40)
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

#include "platform/raster/ImageSampler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace orv::platform {

namespace {

constexpr int kMaxSamplesPerSide = 16;
constexpr std::uint32_t kWeightOne = 256;

using Sums = std::array<std::uint32_t, 4>;

/// A place along one side: the two neighbouring pixels and the weight of the second.
struct Step {
    int first;
    int second;
    std::uint32_t weight;
};

Step stepAt(double position, int count)
{
    const double inside = std::clamp(position - 0.5, 0.0, static_cast<double>(count - 1));
    const int first = static_cast<int>(inside);
    const auto weight =
        static_cast<std::uint32_t>(std::lround((inside - first) * double{kWeightOne}));
    return {first, std::min(first + 1, count - 1), weight};
}

/// Adds the smoothed pixel at `at`, in 65536ths.
void addSample(Sums &sums, const Image &picture, Point at)
{
    const Step x = stepAt(at.x, picture.width());
    const Step y = stepAt(at.y, picture.height());
    const std::uint32_t *upper = picture.row(y.first);
    const std::uint32_t *lower = picture.row(y.second);
    for (unsigned channel = 0; channel < 4; ++channel) {
        const unsigned shift = channel * 8;
        const auto mixed = [&](const std::uint32_t *row) {
            return ((row[x.first] >> shift) & 0xFFU) * (kWeightOne - x.weight) +
                   ((row[x.second] >> shift) & 0xFFU) * x.weight;
        };
        sums[channel] += (mixed(upper) * (kWeightOne - y.weight) + mixed(lower) * y.weight) >> 8U;
    }
}

int samplesPerSide(double step)
{
    return std::clamp(static_cast<int>(std::ceil(step - 1e-9)), 1, kMaxSamplesPerSide);
}

/// How many samples a device pixel takes each way, and the way back to the picture.
struct Sampling {
    AffineTransform back;
    int columns;
    int rows;

    explicit Sampling(const AffineTransform &toDevice)
        : back(toDevice.inverted()), columns(samplesPerSide(std::hypot(back.a, back.b))),
          rows(samplesPerSide(std::hypot(back.c, back.d)))
    {
    }
};

std::uint32_t meanAt(const Image &picture, const Sampling &sampling, int x, int y)
{
    Sums sums{};
    for (int i = 0; i < sampling.rows; ++i) {
        for (int j = 0; j < sampling.columns; ++j) {
            const Point place{x + (j + 0.5) / sampling.columns, y + (i + 0.5) / sampling.rows};
            addSample(sums, picture, sampling.back.apply(place));
        }
    }
    const auto divisor = static_cast<std::uint32_t>(sampling.rows * sampling.columns) * kWeightOne;
    std::uint32_t pixel = 0;
    for (unsigned channel = 0; channel < 4; ++channel) {
        pixel |= ((sums[channel] + divisor / 2) / divisor) << (channel * 8);
    }
    return pixel;
}

} // namespace

Image sampled(const Image &picture, const AffineTransform &toDevice, const PixelRect &area)
{
    const Sampling sampling(toDevice);
    Image out(area.width, area.height);
    for (int y = 0; y < area.height; ++y) {
        for (int x = 0; x < area.width; ++x) {
            out.row(y)[x] = meanAt(picture, sampling, area.x + x, area.y + y);
        }
    }
    return out;
}

} // namespace orv::platform

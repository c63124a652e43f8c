#include "platform/raster/BandPainter.h"

#include "platform/raster/DrawingExtent.h"
#include "platform/raster/RasterContext.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <thread>

namespace orv::platform {

namespace {

/// High enough for most strokes to lie in few of them, low enough to keep the last ones short.
constexpr int kRowsOfABand = 64;
/// Fewer things are painted sooner than threads start.
constexpr std::size_t kFewThings = 16;
constexpr unsigned kMostThreads = 8;

/// The rows from the first that a thing may touch up to the one below its last.
struct Rows {
    int first = 0;
    int end = 0;
};

Rows rowsOf(const DrawingRecord &thing)
{
    Rows rows;
    for (const PixelRect &box : extentOf(thing)) {
        const bool isFirst = rows.first == rows.end;
        rows.first = isFirst ? box.y : std::min(rows.first, box.y);
        rows.end = isFirst ? box.y + box.height : std::max(rows.end, box.y + box.height);
    }
    return rows;
}

class Bands {
public:
    Bands(Image &picture, const PixelGrid &grid, const DrawingRecord &prelude,
          const std::vector<DrawingRecord> &things)
        : picture_(picture), grid_(grid), prelude_(prelude), things_(things)
    {
        rows_.reserve(things.size());
        std::transform(things.begin(), things.end(), std::back_inserter(rows_), rowsOf);
    }

    [[nodiscard]] int count() const
    {
        return (picture_.height() + kRowsOfABand - 1) / kRowsOfABand;
    }
    /// Takes bands and paints them until none is left.
    void work()
    {
        for (int band = next_++; band < count(); band = next_++) {
            paint(band * kRowsOfABand);
        }
    }

private:
    void paint(int top) const
    {
        const PixelRect area{0, top, picture_.width(), kRowsOfABand};
        RasterContext context(picture_, grid_, area);
        replay(prelude_, 0, prelude_.calls.size(), context);
        for (std::size_t i = 0; i < things_.size(); ++i) {
            if (rows_[i].first < top + kRowsOfABand && rows_[i].end > top) {
                replay(things_[i], 0, things_[i].calls.size(), context);
            }
        }
    }

    Image &picture_;
    const PixelGrid &grid_;
    const DrawingRecord &prelude_;
    const std::vector<DrawingRecord> &things_;
    std::vector<Rows> rows_;
    std::atomic<int> next_ = 0;
};

} // namespace

void paintThings(Image &picture, const PixelGrid &grid, const DrawingRecord &prelude,
                 const std::vector<DrawingRecord> &things)
{
    Bands bands(picture, grid, prelude, things);
    const unsigned processors = std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
    const unsigned helpers = things.size() > kFewThings ? processors - 1 : 0;
    std::vector<std::future<void>> helping;
    for (unsigned i = 0; i < helpers; ++i) {
        helping.push_back(std::async(std::launch::async, [&bands] { bands.work(); }));
    }
    bands.work();
    for (std::future<void> &helper : helping) {
        helper.get();
    }
}

} // namespace orv::platform

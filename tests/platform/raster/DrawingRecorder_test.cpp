#include "platform/raster/DrawingRecorder.h"

#include <gtest/gtest.h>

#include <utility>

namespace orv::platform {
namespace {

TEST(DrawingRecorder, HasNothingOfTheRecordInWhoseMemoryItWrites)
{
    const PixelGrid grid{{10.0, 10.0}, 1.0};
    DrawingRecorder first(grid);
    first.fillRect(Rect::make(0.0, 0.0, 5.0, 5.0), CompositingOperation::sourceOver);
    DrawingRecord used = first.take();
    ASSERT_EQ(used.marks.size(), 1U);

    DrawingRecorder second(grid, first.state(), std::move(used));
    second.saveState();

    EXPECT_EQ(second.record().calls.size(), 1U);
    EXPECT_TRUE(second.record().marks.empty());
}

} // namespace
} // namespace orv::platform

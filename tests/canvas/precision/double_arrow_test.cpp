#include "canvas/BackgroundDrawings.h"
#include "support/RecordingContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::test {
namespace {

TEST(DoubleArrow, HasHeadsOfSinglePrecision)
{
    RecordingContext context;

    backgrounds::drawDoubleArrow(context, {0.0, 0.0}, {60.0, 80.0});

    EXPECT_THAT(context.lines, testing::Contains(fmt::format(
                                   "stroke 0({},{}) 1({},{})", double{7.2F}, double{9.6F},
                                   60.0 - double{7.2F}, 80.0 - double{9.6F})));
}

} // namespace
} // namespace orv::test

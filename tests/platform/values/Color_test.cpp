#include "platform/values/Color.h"

#include <gtest/gtest.h>

namespace orv::platform {
namespace {

TEST(Color, hexValueTruncatesEachComponent)
{
    EXPECT_EQ(Color(1.0, 0.5, 0.0).hexValue(), "#ff7f00");
    EXPECT_EQ(Color(0.0, 0.0, 1.0 / 255.0).hexValue(), "#000001");
    EXPECT_EQ(Color(0.999, 0.0039, 0.004).hexValue(), "#ff0001");
    EXPECT_EQ(Color(2.0, -1.0, 0.0).hexValue(), "#ff0000") << "kept within a byte";
}

TEST(Color, aHexTextReadsWithAndWithoutItsSign)
{
    const Color wanted(1.0, 128 / 255.0, 3 / 255.0, 1.0);

    EXPECT_EQ(Color::colorFromHexValue("#ff8003"), wanted);
    EXPECT_EQ(Color::colorFromHexValue("FF8003"), wanted);
    EXPECT_EQ(Color::colorFromHexValue("12ff8003"), wanted) << "bits above 23 do not count";
    EXPECT_EQ(Color::colorFromHexValue("f"), Color(0.0, 0.0, 15 / 255.0));
}

TEST(Color, aTextThatIsNoNumberIsBlack)
{
    EXPECT_EQ(Color::colorFromHexValue(""), Color(0.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(Color::colorFromHexValue("#"), Color(0.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(Color::colorFromHexValue("purple"), Color(0.0, 0.0, 0.0, 1.0));
}

TEST(Color, everyByteSurvivesTheWayThroughHex)
{
    for (int byte = 0; byte < 256; ++byte) {
        const Color color(byte / 255.0, 0.0, (255 - byte) / 255.0);

        EXPECT_EQ(Color::colorFromHexValue(color.hexValue()), color) << byte;
    }
}

TEST(Color, lighteningStopsAtOneAndDarkeningAtZero)
{
    const Color color(0.25, 0.5, 0.9, 0.3);

    EXPECT_EQ(color.lightenColorByValue(0.25F), Color(0.5, 0.75, 1.0, 0.3));
    EXPECT_EQ(color.darkenColorByValue(0.5F), Color(0.0, 0.0, 0.9 - 0.5, 0.3));
}

TEST(Color, settingAlphaKeepsTheRest)
{
    const Color color = Color(0.1, 0.2, 0.3, 0.4).setAlphaValue(0.5F);

    EXPECT_EQ(color, Color(0.1, 0.2, 0.3, 0.5));
}

TEST(Color, isLightAboveAMeanOfFourFifths)
{
    EXPECT_TRUE(Color(1.0, 1.0, 0.5).isLightColor());
    EXPECT_FALSE(Color(1.0, 1.0, 0.25).isLightColor());
    EXPECT_TRUE(Color::gray(0.81, 1.0).isLightColor());
    EXPECT_FALSE(Color::gray(0.8, 1.0).isLightColor());
}

TEST(Color, aGrayHasTwoComponents)
{
    EXPECT_EQ(Color::gray(0.5, 1.0).componentCount(), 2);
    EXPECT_EQ(Color(0.5, 0.5, 0.5).componentCount(), 4);
    EXPECT_EQ(Color::clear().alpha(), 0.0);
    EXPECT_EQ(Color::orange().hexValue(), "#ff7f00");
}

} // namespace
} // namespace orv::platform

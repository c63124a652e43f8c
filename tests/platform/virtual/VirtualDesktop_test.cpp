#include "Desk.h"

#include "platform/foundation/Exception.h"
#include "platform/raster/Pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::platform {
namespace {

VirtualSettings twoDisplays()
{
    VirtualSettings settings;
    settings.displays = {{1, Rect::make(0.0, 0.0, 40.0, 30.0), 1.0},
                         {7, Rect::make(40.0, -10.0, 20.0, 20.0), 2.0}};
    settings.desktop = "#336699";
    return settings;
}

class VirtualDesktopTest : public testing::Test {
protected:
    [[nodiscard]] ImagePtr shown(DisplayID display)
    {
        desk_.platform.mainThread().drain();
        return desk_.platform.desktop().composePicture(display);
    }

    Desk desk_{twoDisplays()};
    VirtualWindowServer &server_ = desk_.platform.windowServer();
};

TEST_F(VirtualDesktopTest, ShowsItsColourInDevicePixels)
{
    EXPECT_EQ(shown(1)->width(), 40);
    EXPECT_EQ(shown(1)->pixel(0, 0), 0xFF336699U);
    EXPECT_EQ(shown(7)->width(), 40);
    EXPECT_EQ(shown(7)->height(), 40);
    EXPECT_EQ(shown(7)->pixel(39, 39), 0xFF336699U);
    EXPECT_EQ(shown(2), nullptr);
}

TEST_F(VirtualDesktopTest, ShowsWindowsByLevelAndWithTheirAlpha)
{
    const NotingWindow upper(server_, Rect::make(0.0, 0.0, 10.0, 10.0), {1.0, 1.0, 1.0});
    const NotingWindow lower(server_, Rect::make(5.0, 5.0, 10.0, 10.0), {0.0, 0.0, 0.0});
    const NotingWindow hidden(server_, Rect::make(0.0, 0.0, 40.0, 30.0), {1.0, 0.0, 0.0});
    upper.surface().setLevel(3);
    upper.surface().setAlpha(0.6);
    upper.surface().orderFront();
    lower.surface().orderFront();

    const ImagePtr picture = shown(1);

    EXPECT_EQ(picture->pixel(0, 29), 0xFFADC2D6U); // .6 white over the desktop
    EXPECT_EQ(picture->pixel(7, 22), 0xFF999999U); // .6 white over the lower window
    EXPECT_EQ(picture->pixel(12, 17), 0xFF000000U);
    EXPECT_EQ(picture->pixel(20, 5), 0xFF336699U);
}

TEST_F(VirtualDesktopTest, AWindowAcrossTwoDisplaysIsOnBoth)
{
    const NotingWindow wide(server_, Rect::make(30.0, 0.0, 20.0, 5.0), {1.0, 0.0, 0.0});
    wide.surface().orderFront();

    EXPECT_EQ(shown(1)->pixel(39, 29), 0xFFFF0000U);
    EXPECT_EQ(shown(1)->pixel(29, 29), 0xFF336699U);
    // Display 7 lies 10 lower and has two pixels a point: rows 10 to 20 are 5 to 0 points up.
    EXPECT_EQ(shown(7)->pixel(0, 19), 0xFFFF0000U);
    EXPECT_EQ(shown(7)->pixel(19, 12), 0xFFFF0000U);
    EXPECT_EQ(shown(7)->pixel(0, 21), 0xFF336699U);
    EXPECT_EQ(shown(7)->pixel(22, 15), 0xFF336699U);
}

TEST_F(VirtualDesktopTest, MayShowAPicture)
{
    Image picture(1, 1);
    *picture.data() = 0xFF00FF00;
    const std::string path = desk_.home.path() + "/green.png";
    ASSERT_TRUE(writePng(path, picture));

    desk_.platform.desktop().setDesktop(path);
    EXPECT_EQ(shown(1)->pixel(20, 20), 0xFF00FF00U);
    desk_.platform.desktop().setDesktop("#000000");

    EXPECT_EQ(shown(1)->pixel(20, 20), 0xFF000000U);
}

TEST_F(VirtualDesktopTest, RefusesWhatIsNeitherAndKeepsTheOld)
{
    for (const char *desktop : {"#12345", "#12345G", "/no/such/picture.png", ""}) {
        try {
            desk_.platform.desktop().setDesktop(desktop);
            FAIL() << desktop;
        } catch (const Exception &exception) {
            EXPECT_THAT(exception.what(), testing::HasSubstr(desktop));
        }
    }

    EXPECT_EQ(shown(1)->pixel(0, 0), 0xFF336699U);
}

} // namespace
} // namespace orv::platform

#include "Desk.h"

#include "platform/foundation/NotificationCenter.h"

#include <gtest/gtest.h>

#include <thread>

namespace orv::platform {
namespace {

const Screen kMain{1, Rect::make(0.0, 0.0, 1440.0, 900.0), 1.0};
const Screen kUpperRight{2, Rect::make(1440.0, 100.0, 1000.0, 1000.0), 2.0};

class VirtualDisplaysTest : public testing::Test {
protected:
    VirtualDisplaysTest()
    {
        NotificationCenter::local().addObserver(
            this, NSApplicationDidChangeScreenParametersNotification,
            [this](std::string_view, const UserInfo &) {
                ++changes_;
                onMain_ = desk_.platform.mainThread().isCurrent();
            });
    }
    ~VirtualDisplaysTest() override { NotificationCenter::local().removeObserver(this); }

    Desk desk_;
    VirtualDisplays &displays_ = desk_.platform.displays();
    int changes_ = 0;
    bool onMain_ = false;
};

TEST_F(VirtualDisplaysTest, BeginAsTheSettingsSay)
{
    EXPECT_EQ(displays_.screens(), std::vector<Screen>{kMain});
    EXPECT_EQ(displays_.mainDisplayID(), 1U);
    EXPECT_EQ(changes_, 0);
}

TEST_F(VirtualDisplaysTest, AnnounceAChangeAtOnce)
{
    displays_.setDisplays({kMain, kUpperRight});

    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(displays_.screen(2), kUpperRight);
    EXPECT_EQ(displays_.testHitScreen({1500.0, 200.0}), kUpperRight);
}

TEST_F(VirtualDisplaysTest, AnnounceOnTheMainThreadWhoeverChangesThem)
{
    std::thread other([this] { displays_.setDisplays({kUpperRight}); });
    while (changes_ == 0) {
        desk_.platform.mainThread().waitAndDrain(std::chrono::seconds(10));
    }
    other.join();

    EXPECT_TRUE(onMain_);
    EXPECT_EQ(displays_.mainDisplayID(), 2U);
}

TEST_F(VirtualDisplaysTest, BoundsCountFromTheTopLeftOfTheMainDisplay)
{
    displays_.setDisplays({kMain, kUpperRight});

    EXPECT_EQ(displays_.bounds(1), Rect::make(0.0, 0.0, 1440.0, 900.0));
    EXPECT_EQ(displays_.bounds(2), Rect::make(1440.0, -200.0, 1000.0, 1000.0));
    EXPECT_EQ(displays_.bounds(3), Rect{});
}

TEST_F(VirtualDisplaysTest, MayBeNone)
{
    displays_.setDisplays({});

    EXPECT_EQ(displays_.mainDisplayID(), 0U);
    EXPECT_EQ(displays_.bounds(1), Rect{});
    EXPECT_EQ(displays_.currentScreenForMouseLocation(), std::nullopt);
}

TEST_F(VirtualDisplaysTest, ThePointerIsWhereItWasPut)
{
    displays_.setMouseLocation({12.0, 34.0});

    EXPECT_EQ(displays_.mouseLocation(), (Point{12.0, 34.0}));
    EXPECT_EQ(displays_.currentScreenForMouseLocation(), kMain);
}

} // namespace
} // namespace orv::platform

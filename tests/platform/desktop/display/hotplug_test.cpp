#include "platform/desktop/display/Desk.h"

#include "platform/foundation/NotificationCenter.h"

#include <QProcess>

#include <optional>

namespace orv::platform::test {

namespace {

constexpr const char *kLeftHalf = "960/254x1080/286+0+0";
constexpr const char *kRightPart = "960/254x800/286+960+0";

void xrandr(const QStringList &arguments)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"), arguments), 0);
}

/// The machine's only display at 1280 by 720 pixels, for the length of a scope.
class SmallMode {
public:
    SmallMode()
    {
        xrandr(QStringLiteral("--newmode small 50 1280 1300 1320 1340 720 730 740 750")
                   .split(QLatin1Char(' ')));
        xrandr({QStringLiteral("--addmode"), output_, name_});
        xrandr({QStringLiteral("--output"), output_, QStringLiteral("--mode"), name_});
    }
    ~SmallMode()
    {
        xrandr({QStringLiteral("--output"), output_, QStringLiteral("--mode"),
                QStringLiteral("1920x1080")});
        xrandr({QStringLiteral("--delmode"), output_, name_});
        xrandr({QStringLiteral("--rmmode"), name_});
    }
    SmallMode(const SmallMode &) = delete;
    SmallMode &operator=(const SmallMode &) = delete;

private:
    QString output_ = QStringLiteral("screen");
    QString name_ = QStringLiteral("small");
};

} // namespace

class AnyDisplayHotplug : public Desk {
protected:
    void SetUp() override
    {
        Desk::SetUp();
        NotificationCenter::local().addObserver(this,
                                                NSApplicationDidChangeScreenParametersNotification,
                                                [this](std::string_view, const UserInfo &) {
                                                    ++told;
                                                    whenTold = displays.screens().size();
                                                });
    }
    void TearDown() override { NotificationCenter::local().removeObserver(this); }
    [[nodiscard]] bool comesToHave(std::size_t count)
    {
        return pumpUntil([&] { return displays.screens().size() == count && whenTold == count; });
    }
    [[nodiscard]] bool comesToBe(DisplayID id, const Rect &frame)
    {
        return pumpUntil([&] {
            const auto screen = displays.screen(id);
            return told > 0 && screen && screen->frame == frame;
        });
    }

    const Displays &displays = ports().displays();
    int told = 0;
    /// How many displays there were when a change was told last.
    std::size_t whenTold = 0;
};

TEST_F(AnyDisplayHotplug, tellsWhenDisplaysComeAndGoAndKeepsTheirIDs)
{
    const DisplayID before = displays.mainDisplayID();
    DisplayID left = 0;
    DisplayID right = 0;
    {
        const PluggedDisplay leftHalf("left", kLeftHalf, true);
        const PluggedDisplay rightPart("right", kRightPart, false);
        ASSERT_TRUE(comesToHave(2));
        const std::vector<Screen> screens = displays.screens();
        left = screens.front().displayID;
        right = screens.back().displayID;
        EXPECT_EQ(left, displays.mainDisplayID());
        EXPECT_EQ(screens.front().frame, Rect::make(0, 0, 960, 1080));
        EXPECT_EQ(screens.back().frame, Rect::make(960, 280, 960, 800));
        EXPECT_EQ(displays.bounds(right), Rect::make(960, 0, 960, 800));
        EXPECT_NE(left, right);
    }
    ASSERT_TRUE(pumpUntil([&] { return displays.mainDisplayID() == before; }));
    ASSERT_TRUE(comesToHave(1));

    const PluggedDisplay leftAgain("left", kLeftHalf, true);
    const PluggedDisplay rightAgain("right", kRightPart, false);
    ASSERT_TRUE(comesToHave(2));
    EXPECT_EQ(displays.screens().front().displayID, left);
    EXPECT_EQ(displays.screens().back().displayID, right);
}

TEST_F(AnyDisplayHotplug, keepsTheMainDisplayWhileAnotherGoesAndComesElsewhere)
{
    const PluggedDisplay leftHalf("left", kLeftHalf, true);
    std::optional<PluggedDisplay> right(std::in_place, "right", kRightPart, false);
    ASSERT_TRUE(comesToHave(2));
    const Screen main = displays.screens().front();
    const DisplayID other = displays.screens().back().displayID;

    right.reset();
    ASSERT_TRUE(comesToHave(1));
    EXPECT_EQ(displays.screens().front(), main);
    EXPECT_EQ(displays.screen(other), std::nullopt);
    EXPECT_EQ(displays.bounds(other), Rect{});

    right.emplace("right", "500/130x400/106+1000+600", false);
    ASSERT_TRUE(comesToHave(2));
    EXPECT_EQ(displays.screens().front(), main);
    EXPECT_EQ(displays.screens().back().displayID, other) << "its name is the same";
    EXPECT_EQ(displays.screens().back().frame, Rect::make(1000, 80, 500, 400));
}

TEST_F(AnyDisplayHotplug, givesADisplayOfAnotherNameAnotherID)
{
    const PluggedDisplay leftHalf("left", kLeftHalf, true);
    std::optional<PluggedDisplay> right(std::in_place, "right", kRightPart, false);
    ASSERT_TRUE(comesToHave(2));
    const DisplayID first = displays.screens().back().displayID;
    right.reset();
    ASSERT_TRUE(comesToHave(1));

    right.emplace("wall", kRightPart, false);

    ASSERT_TRUE(comesToHave(2));
    EXPECT_NE(displays.screens().back().displayID, first);
}

TEST_F(AnyDisplayHotplug, tellsWhenADisplayChangesItsModeAndKeepsItsID)
{
    const DisplayID id = displays.mainDisplayID();
    const int before = told;
    {
        const SmallMode small;

        EXPECT_TRUE(comesToBe(id, Rect::make(0, 0, 1280, 720)));
        EXPECT_GT(told, before);
        EXPECT_EQ(displays.bounds(id), Rect::make(0, 0, 1280, 720));
    }
    EXPECT_TRUE(comesToBe(id, Rect::make(0, 0, 1920, kScreenHeight)));
}

TEST_F(AnyDisplayHotplug, movesWindowsWithTheMainDisplaysBottomLeftCorner)
{
    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.background = {1.0, 0.0, 0.0, 1.0};
    overlay.surface().orderFront();
    ASSERT_TRUE(comesToShow(50, kScreenHeight - 50, 0xff0000));

    const PluggedDisplay upperRight("left", "960/254x500/132+960+0", true);

    EXPECT_TRUE(comesToShow(960 + 50, 500 - 50, 0xff0000));
}

} // namespace orv::platform::test

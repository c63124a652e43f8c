#include "platform/desktop/display/Desk.h"

#include "platform/foundation/NotificationCenter.h"

#include <QProcess>

namespace orv::platform::test {

namespace {

void xrandr(const QStringList &arguments)
{
    ASSERT_EQ(QProcess::execute(QStringLiteral("xrandr"), arguments), 0);
}

/// Two displays side by side instead of one, for the length of a scope.
class TwoDisplays {
public:
    TwoDisplays()
    {
        xrandr({QStringLiteral("--setmonitor"), QStringLiteral("*left"),
                QStringLiteral("960/254x1080/286+0+0"), QStringLiteral("screen")});
        xrandr({QStringLiteral("--setmonitor"), QStringLiteral("right"),
                QStringLiteral("960/254x800/286+960+0"), QStringLiteral("none")});
    }
    ~TwoDisplays()
    {
        xrandr({QStringLiteral("--delmonitor"), QStringLiteral("right")});
        xrandr({QStringLiteral("--delmonitor"), QStringLiteral("left")});
    }
    TwoDisplays(const TwoDisplays &) = delete;
    TwoDisplays &operator=(const TwoDisplays &) = delete;
};

} // namespace

class AnyDisplayHotplug : public Desk {};

TEST_F(AnyDisplayHotplug, tellsWhenDisplaysComeAndGoAndKeepsTheirIDs)
{
    const Displays &displays = ports().displays();
    const DisplayID before = displays.mainDisplayID();
    int told = 0;
    NotificationCenter::local().addObserver(this,
                                            NSApplicationDidChangeScreenParametersNotification,
                                            [&](std::string_view, const UserInfo &) { ++told; });

    DisplayID right = 0;
    {
        const TwoDisplays two;
        ASSERT_TRUE(pumpUntil([&] { return displays.screens().size() == 2; }));
        const std::vector<Screen> screens = displays.screens();
        right = screens.back().displayID;
        EXPECT_GT(told, 0);
        EXPECT_EQ(screens.front().frame, Rect::make(0, 0, 960, 1080));
        EXPECT_EQ(screens.back().frame, Rect::make(960, 280, 960, 800));
        EXPECT_EQ(displays.bounds(right), Rect::make(960, 0, 960, 800));
        EXPECT_NE(screens.front().displayID, right);
    }
    ASSERT_TRUE(pumpUntil(
        [&] { return displays.screens().size() == 1 && displays.mainDisplayID() == before; }));
    const TwoDisplays again;
    ASSERT_TRUE(pumpUntil([&] { return displays.screens().size() == 2; }));
    EXPECT_EQ(displays.screens().back().displayID, right);

    NotificationCenter::local().removeObserver(this);
}

} // namespace orv::platform::test

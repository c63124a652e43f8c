#include "orvane-streamer/desk/Diagnosis.h"

#include <gmock/gmock.h>

namespace orv::apps::test {

namespace {

using testing::HasSubstr;
using testing::Not;

DesktopFacts wholeDesktop()
{
    DesktopFacts facts;
    facts.displayName = ":0";
    facts.sessionType = "x11";
    facts.isConnected = true;
    facts.vendor = "The X.Org Foundation";
    facts.version = "release 21.1.7";
    for (const char *name :
         {"Composite", "DAMAGE", "MIT-SHM", "XFIXES", "SHAPE", "RANDR", "XTEST", "XKEYBOARD"}) {
        facts.extensions.push_back({name, true});
    }
    facts.displays = {{"HDMI-1", 0, 0, 1920, 1080, 508, 286, true},
                      {"DP-2", 1920, -120, 2560, 1440, 0, 0, false}};
    facts.windowManager = "Openbox";
    facts.hasCompositor = true;
    facts.hasAlphaVisual = true;
    return facts;
}

void takeAway(DesktopFacts &facts, const std::string &extension)
{
    for (auto &each : facts.extensions) {
        each.isPresent = each.isPresent && each.name != extension;
    }
}

} // namespace

TEST(Diagnosis, tellsWhatAWholeDesktopHas)
{
    const DesktopFacts facts = wholeDesktop();

    const std::string text = diagnosis(facts);

    EXPECT_EQ(text, "Session           x11, DISPLAY :0\n"
                    "X server          The X.Org Foundation, release 21.1.7\n"
                    "Extensions        Composite, DAMAGE, MIT-SHM, XFIXES, SHAPE, RANDR, XTEST, "
                    "XKEYBOARD\n"
                    "Missing           none\n"
                    "Window manager    Openbox\n"
                    "Compositor        running\n"
                    "Scale             not set: programs draw at 96 dpi or as the displays' sizes "
                    "suggest\n"
                    "Display           HDMI-1: 1920 x 1080 pixels at 0, 0, 508 x 286 mm (96 dpi), "
                    "primary\n"
                    "Display           DP-2: 2560 x 1440 pixels at 1920, -120\n"
                    "\n"
                    "Overlays          yes, blended by the compositor\n"
                    "Click-through     yes\n"
                    "Live picture      fast\n"
                    "Keys and mouse    yes\n");
}

TEST(Diagnosis, tellsTheScaleThatTheDesktopAsksFor)
{
    DesktopFacts facts = wholeDesktop();
    facts.fontDpi = 144.0;

    const std::string text = diagnosis(facts);

    EXPECT_THAT(text, HasSubstr("Scale             1.50 (Xft.dpi 144)\n"));
}

TEST(Diagnosis, saysWhyOverlaysAreShaped)
{
    DesktopFacts withoutCompositor = wholeDesktop();
    withoutCompositor.hasCompositor = false;
    DesktopFacts withoutAlpha = wholeDesktop();
    withoutAlpha.hasAlphaVisual = false;

    const std::string first = diagnosis(withoutCompositor);
    const std::string second = diagnosis(withoutAlpha);

    EXPECT_THAT(first, HasSubstr("yes, but shaped to their ink: no compositor is running\n"));
    EXPECT_THAT(first, HasSubstr("Hint              No compositor is running"));
    EXPECT_THAT(second,
                HasSubstr("yes, but shaped to their ink: the screen has no visual with alpha"));
    EXPECT_THAT(second, Not(HasSubstr("Hint")));
}

TEST(Diagnosis, saysWhyThePictureIsSlow)
{
    DesktopFacts withoutDamage = wholeDesktop();
    takeAway(withoutDamage, "DAMAGE");
    DesktopFacts withoutMemory = wholeDesktop();
    takeAway(withoutMemory, "MIT-SHM");

    const std::string first = diagnosis(withoutDamage);
    const std::string second = diagnosis(withoutMemory);

    EXPECT_THAT(first, HasSubstr("Live picture      slow, five times a second"));
    EXPECT_THAT(first, HasSubstr("Missing           DAMAGE\n"));
    EXPECT_THAT(second, HasSubstr("Live picture      slow: the X server shares no memory"));
}

TEST(Diagnosis, saysWhyThereAreNoKeysAndMouse)
{
    DesktopFacts withoutInput = wholeDesktop();
    takeAway(withoutInput, "XTEST");
    DesktopFacts withoutLayout = wholeDesktop();
    takeAway(withoutLayout, "XKEYBOARD");

    const std::string first = diagnosis(withoutInput);
    const std::string second = diagnosis(withoutLayout);

    EXPECT_THAT(first, HasSubstr("Keys and mouse    no: the X server takes no input"));
    EXPECT_THAT(second, HasSubstr("Keys and mouse    no: the X server does not tell its keyboard"));
}

TEST(Diagnosis, saysNothingOfAServerThatIsNotThere)
{
    const DesktopFacts nothing;

    const std::string text = diagnosis(nothing);

    EXPECT_EQ(text,
              "Session           of unknown type, DISPLAY not set\n"
              "\n"
              "Overlays          no. There is no display to draw on: the environment variable "
              "DISPLAY is not set.\n");
}

TEST(Obstacle, isNoneOnAWholeDesktop)
{
    const DesktopFacts facts = wholeDesktop();

    const auto reason = obstacle(facts);

    EXPECT_EQ(reason, std::nullopt);
}

TEST(Obstacle, isNoneWithoutACompositorOrAWindowManager)
{
    DesktopFacts facts = wholeDesktop();
    facts.hasCompositor = false;
    facts.windowManager.clear();

    const auto reason = obstacle(facts);

    EXPECT_EQ(reason, std::nullopt);
}

TEST(Obstacle, isWaylandAloneOrAroundTheServer)
{
    DesktopFacts alone;
    alone.waylandDisplay = "wayland-0";
    DesktopFacts around = wholeDesktop();
    around.waylandDisplay = "wayland-0";
    around.isXwayland = true;

    const auto first = obstacle(alone);
    const auto second = obstacle(around);

    EXPECT_THAT(first.value_or(""), HasSubstr("a Wayland session without an X server"));
    EXPECT_THAT(second.value_or(""), HasSubstr("This is a Wayland session, where ink"));
}

TEST(Obstacle, isNotAWaylandSessionThatTheServerIsNoPartOf)
{
    DesktopFacts facts = wholeDesktop();
    facts.waylandDisplay = "wayland-0";

    const auto reason = obstacle(facts);

    EXPECT_EQ(reason, std::nullopt);
}

TEST(Obstacle, isAServerThatDoesNotAnswer)
{
    DesktopFacts facts;
    facts.displayName = "far:7";

    const auto reason = obstacle(facts);

    EXPECT_THAT(reason.value_or(""), HasSubstr("The X display \"far:7\" cannot be connected to"));
}

TEST(Obstacle, isAServerThatShapesNoWindows)
{
    DesktopFacts facts = wholeDesktop();
    takeAway(facts, "SHAPE");

    const auto reason = obstacle(facts);

    EXPECT_THAT(reason.value_or(""), HasSubstr("has no SHAPE extension"));
}

TEST(Warning, isTheMissingCompositorAlone)
{
    DesktopFacts without = wholeDesktop();
    without.hasCompositor = false;

    const auto none = warning(wholeDesktop());
    const auto missing = warning(without);
    const auto afterAnObstacle = warning(DesktopFacts());

    EXPECT_EQ(none, std::nullopt);
    EXPECT_EQ(missing,
              "No compositor is running, so ink has hard edges and highlighters are opaque; "
              "start one, such as picom.");
    EXPECT_EQ(afterAnObstacle, std::nullopt);
}

} // namespace orv::apps::test

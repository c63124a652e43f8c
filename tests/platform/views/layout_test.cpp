#include "platform/foundation/Exception.h"
#include "platform/views/Button.h"
#include "platform/views/LayoutReader.h"
#include "support/VirtualDesk.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using platform::Rect;
using ::testing::HasSubstr;

class Layouts : public VirtualDesk {
protected:
    Layouts()
    {
        bindings.windowClasses["Panel"] = [](const Rect &frame, std::uint32_t styleMask) {
            return std::make_shared<platform::Window>(frame, styleMask);
        };
        bindings.windowOutlets["panel"] = [this](const auto &found) { panel = found; };
        bindings.viewOutlets["ok"] = [this](const auto &found) { ok = found; };
        bindings.actions["press"] = [this](platform::View &sender) { pressed = &sender; };
    }
    std::string messageOf(const std::string &json)
    {
        try {
            platform::loadLayout(json, "panel.json", bindings);
        } catch (const platform::Exception &exception) {
            return exception.what();
        }
        return "nothing was thrown";
    }

    platform::LayoutBindings bindings;
    std::shared_ptr<platform::Window> panel;
    std::shared_ptr<platform::View> ok;
    platform::View *pressed = nullptr;
};

TEST_F(Layouts, BuildsBindsAndNestsWhatItDescribes)
{
    platform::loadLayout(R"({"windows": [{"class": "Panel", "outlet": "panel", "title": "Panel",
        "frame": [1, 2, 300, 200], "styleMask": 128, "views": [
            {"class": "View", "frame": [0, 0, 300, 100], "hidden": true, "views": [
                {"class": "Button", "outlet": "ok", "frame": [10, 20, 30, 40], "title": "OK",
                 "tag": 7, "action": "press", "autoresizingMask": 18}]}]}]})",
                         "panel.json", bindings);

    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->frame(), Rect::make(1.0, 2.0, 300.0, 200.0));
    EXPECT_EQ(panel->styleMask(), 128U);
    EXPECT_EQ(panel->title(), "Panel");
    EXPECT_EQ(panel->outlet(), "panel");
    const auto button = std::dynamic_pointer_cast<platform::Button>(ok);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->title(), "OK");
    EXPECT_EQ(button->tag(), 7);
    EXPECT_EQ(button->outlet(), "ok");
    EXPECT_EQ(button->autoresizingMask(), 18U);
    EXPECT_TRUE(button->superview()->isHidden());
    button->performClick();
    EXPECT_EQ(pressed, button.get());
}

TEST_F(Layouts, RefusesWhatDoesNotFitAndNamesIt)
{
    const std::string open = R"({"windows": [{"class": "Panel", "outlet": "panel",
        "frame": [0, 0, 1, 1], "views": [)";
    const std::string button = R"({"class": "Button", "outlet": "ok", "frame": [0, 0, 1, 1]})";
    const std::string close = "]}]}";

    EXPECT_THAT(messageOf("no json"), HasSubstr("layout panel.json: "));
    EXPECT_THAT(messageOf("[1]"), HasSubstr("the description lacks \"windows\""));
    EXPECT_THAT(messageOf(R"({"windows": [{"class": "Door", "frame": [0, 0, 1, 1]}]})"),
                HasSubstr("unknown window class \"Door\""));
    EXPECT_THAT(messageOf(R"({"windows": [{"class": "Panel"}]})"),
                HasSubstr("Panel lacks \"frame\""));
    EXPECT_THAT(messageOf(R"({"windows": [{"class": "Panel", "frame": [1, 2]}]})"),
                HasSubstr("the frame of Panel is not a list of four numbers"));
    EXPECT_THAT(messageOf(open + R"({"class": "Knob", "frame": [0, 0, 1, 1]})" + close),
                HasSubstr("unknown view class \"Knob\""));
    EXPECT_THAT(
        messageOf(open + R"({"class": "View", "outlet": "cancel", "frame": [0, 0, 1, 1]})" + close),
        HasSubstr("no counterpart for the outlet \"cancel\""));
    EXPECT_THAT(
        messageOf(open + R"({"class": "Button", "action": "jump", "frame": [0, 0, 1, 1]})" + close),
        HasSubstr("no counterpart for the action \"jump\""));
    EXPECT_THAT(messageOf(open + close), HasSubstr("the outlet \"ok\" is missing"));
    EXPECT_THAT(
        messageOf(open + R"({"class": "View", "hidden": "yes", "frame": [0, 0, 1, 1]})" + close),
        HasSubstr("layout panel.json: "));
    EXPECT_EQ(messageOf(open + button + close), "nothing was thrown");
}

} // namespace
} // namespace orv::test

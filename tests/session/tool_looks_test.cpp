#include "SessionDesk.h"

#include "annotations/TextAnnotation.h"
#include "platform/ports/Pictures.h"
#include "platform/views/ImageView.h"
#include "session/ToolPictures.h"

#include <gmock/gmock.h>

#include <set>

namespace orv::test {
namespace {

using ::testing::IsEmpty;

class ToolLooks : public SessionDesk {
protected:
    [[nodiscard]] platform::Button &button(const std::string &outlet)
    {
        return *manager->outlets().button(outlet);
    }
    [[nodiscard]] std::string imageOf(const std::string &outlet)
    {
        return button(outlet).image()->name();
    }
    [[nodiscard]] std::string pressedImageOf(const std::string &outlet)
    {
        return button(outlet).alternateImage()->name();
    }
    [[nodiscard]] AnnotationTool &tool(const std::string &name)
    {
        return *manager->tools().at(name);
    }
    void click(const std::string &outlet)
    {
        const platform::Point at = button(outlet).frameInWindow().center() +
                                   manager->outlets().toolboxWindow->frame().origin;
        desk.input().sendMouse(platform::EventType::leftMouseDown, at);
        desk.input().sendMouse(platform::EventType::leftMouseUp, at);
        drain();
    }
    std::shared_ptr<platform::View> giveMenu(const std::string &name, const platform::Rect &frame)
    {
        auto view = std::make_shared<platform::View>(frame);
        tool(name).menuController()->setView(view);
        return view;
    }
};

bool isThere(const std::string &name)
{
    const auto picture =
        platform::Platform::current().pictures().picture(platform::pathForImageResource(name));
    return picture && picture->finer();
}

void namesIn(const platform::View &view, std::set<std::string> &names)
{
    if (const auto *button = dynamic_cast<const platform::Button *>(&view)) {
        names.insert(button->image() ? button->image()->name() : "no picture: " + view.outlet());
        names.insert(button->alternateImage() ? button->alternateImage()->name()
                                              : "no pressed picture: " + view.outlet());
    } else if (const auto *imageView = dynamic_cast<const platform::ImageView *>(&view)) {
        names.insert(imageView->image() ? imageView->image()->name()
                                        : "no picture: " + view.outlet());
    }
    for (const auto &subview : view.subviews()) {
        namesIn(*subview, names);
    }
}

TEST_F(ToolLooks, EveryPictureThatToolsAskForIsThereAtBothResolutions)
{
    open(12);
    std::size_t count = 0;
    for (const auto &[title, one] : manager->tools()) {
        const ToolPictures pictures = picturesOfTool(one->name());
        EXPECT_FALSE(pictures.off.empty()) << one->name();
        for (const auto *names : {&pictures.off, &pictures.offAlt, &pictures.on, &pictures.onAlt}) {
            for (const std::string &name : *names) {
                EXPECT_TRUE(isThere(name)) << name;
                ++count;
            }
        }
        for (const std::string &name : cursorsOfTool(one->name())) {
            EXPECT_TRUE(isThere(name)) << name;
        }
    }
    EXPECT_EQ(count, 9U * 2U + (5U + 5U + 1U + 5U + 5U + 5U + 20U + 6U) * 4U);
    for (const char *kind : {"pointer", "star", "heart", "smile", "check", "x"}) {
        for (const char *size : {"1.png", "2.png", "3.png", "4.png"}) {
            EXPECT_TRUE(isThere(std::string(kind) + size)) << kind << size;
        }
    }
}

TEST_F(ToolLooks, EveryButtonAndBackgroundOfTheToolboxHasAPictureThatIsThere)
{
    open(12);
    std::set<std::string> names;
    namesIn(*manager->outlets().toolboxWindow->contentView(), names);
    EXPECT_GT(names.size(), 30U);
    for (const std::string &name : names) {
        EXPECT_TRUE(isThere(name)) << name;
    }
}

TEST_F(ToolLooks, AButtonShowsTheChoiceOfItsToolAndWhetherItIsSelected)
{
    open(12);
    EXPECT_EQ(imageOf("penButton"), "pen_red_f_d");
    EXPECT_EQ(pressedImageOf("penButton"), "pen_red_f_p");
    EXPECT_EQ(imageOf("circleButton"), "circle_blue_d");
    EXPECT_EQ(pressedImageOf("circleButton"), "circle_blue_p");
    EXPECT_EQ(imageOf("lineButton"), "line_s1_blue_d");
    EXPECT_EQ(imageOf("stampButton"), "stamp_star_d");
    EXPECT_EQ(imageOf("eraserButton"), "erase_d");
    EXPECT_EQ(imageOf("snapshotButton"), "ss_d");
    EXPECT_EQ(pressedImageOf("flipchartButton"), "fb_p");

    click("circleButton");
    EXPECT_EQ(imageOf("penButton"), "pen_red_d");
    EXPECT_EQ(imageOf("circleButton"), "circle_blue_f_d");

    applyTraits({3, 0, 2}, tool("line"));
    EXPECT_EQ(imageOf("lineButton"), "line_s3_green_d");
    applyTraits({5, 0, 0}, tool("stamp"));
    EXPECT_EQ(imageOf("stampButton"), "stamp_x_d");
}

TEST_F(ToolLooks, TheIconButtonMirrorsTheSelectedToolAndKeepsItsLook)
{
    open(12);
    EXPECT_EQ(imageOf("iconButton"), "pen_red_f_d");
    EXPECT_EQ(pressedImageOf("iconButton"), "pen_red_f_d") << "plain by design";

    click("highlighterButton");
    EXPECT_EQ(imageOf("iconButton"), "high_yellow_f_d");
    click("galleryButton");
    EXPECT_EQ(imageOf("iconButton"), "high_yellow_f_d");
    manager->closeAnnotationToolbox();
    EXPECT_EQ(imageOf("highlighterButton"), "high_yellow_d");
    EXPECT_EQ(imageOf("iconButton"), "high_yellow_f_d");
}

TEST_F(ToolLooks, AChangeOfColourShowsAtOnceAndASizeDoesNot)
{
    open(12);
    tool("pen").menuController()->selectColorAtIndex(2);
    EXPECT_EQ(imageOf("penButton"), "pen_blue_f_d");
    EXPECT_EQ(imageOf("iconButton"), "pen_blue_f_d");
    tool("pen").menuController()->selectSizeAtIndex(3);
    EXPECT_EQ(imageOf("penButton"), "pen_blue_f_d");
    EXPECT_EQ(tool("pen").annotationSize(), 0.02F);
}

TEST_F(ToolLooks, ADrawingToolHidesThePointerOverTheCanvasUntilItCloses)
{
    open(12);
    ASSERT_EQ(canvas().cursorRects().size(), 1U);
    const auto &[rect, cursor] = canvas().cursorRects().front();
    EXPECT_EQ(cursor.picture->name(), "cursor_hidden");
    EXPECT_EQ(cursor.hotSpot, (platform::Point{1.0, 1.0}));
    EXPECT_EQ(rect, canvas().bounds());

    manager->closeAnnotationToolbox();
    EXPECT_THAT(canvas().cursorRects(), IsEmpty());
}

TEST_F(ToolLooks, APressOpensTheToolsMenuAndOneOnAnotherToolClosesIt)
{
    open(12);
    const auto menu = giveMenu("highlighter", platform::Rect::make(157.0, 0.0, 100.0, 50.0));
    EXPECT_TRUE(menu->isHidden()) << "at first";

    click("highlighterButton");
    EXPECT_FALSE(menu->isHidden());
    click("highlighterButton");
    EXPECT_TRUE(menu->isHidden());
    click("highlighterButton");
    click("galleryButton");
    EXPECT_TRUE(menu->isHidden());
    EXPECT_EQ(manager->currentTool()->name(), "highlighter");
}

TEST_F(ToolLooks, NoMenuOpensWhenAnnotationModeIsEnteredOrTheClientChooses)
{
    open(12);
    const auto menu = giveMenu("pen", platform::Rect::make(101.0, 0.0, 100.0, 50.0));
    manager->closeAnnotationToolbox();
    manager->openAnnotationToolbox();
    EXPECT_TRUE(menu->isHidden());

    manager->handleSetToolRequest({8, 0, 5.0F, 0, 0xFF000000});
    EXPECT_TRUE(menu->isHidden());
    manager->handleSetToolRequest({9, 0, 0.0F, 0, 0});
    click("penButton");
    EXPECT_TRUE(menu->isHidden()) << "the press after a laser pointer opens none";
    click("penButton");
    EXPECT_FALSE(menu->isHidden());
}

TEST_F(ToolLooks, AStrokeClosesAnOpenMenuAndLeavingDoesToo)
{
    open(12);
    const auto menu = giveMenu("pen", platform::Rect::make(101.0, 0.0, 100.0, 50.0));
    click("penButton");
    ASSERT_FALSE(menu->isHidden());
    localStroke({300.0, 300.0}, {400.0, 400.0});
    EXPECT_TRUE(menu->isHidden());
    EXPECT_EQ(annotationCount(), 1U);

    click("penButton");
    manager->closeAnnotationToolbox();
    EXPECT_TRUE(menu->isHidden());
}

TEST_F(ToolLooks, AnOpenMenuTakesTheClientsPressesToo)
{
    open(12);
    const platform::Rect toolbox = manager->outlets().toolboxWindow->frame();
    const platform::Rect strip = manager->outlets().toolMenuView->frame();
    const platform::Rect half = platform::Rect::make(0.0, 0.0, strip.size.width / 2.0, 56.0);
    manager->outlets().toolMenuView->setFrame(half);
    const auto menu = giveMenu("pen", platform::Rect::make(half.maxX() + 10.0, 0.0, 100.0, 56.0));
    const platform::Point at = platform::Point{half.maxX() + 50.0, 30.0} + toolbox.origin;
    const auto press = [&] {
        const auto x = static_cast<std::uint32_t>(at.x);
        const auto y = static_cast<std::uint32_t>(900.0 - at.y);
        manager->handleControlMouseEvent({5, x, y});
        manager->handleControlMouseEvent({6, x, y});
    };

    click("penButton");
    ASSERT_FALSE(menu->isHidden());
    press();
    EXPECT_EQ(annotationCount(), 0U);
    menu->setHidden(true);
    press();
    EXPECT_EQ(annotationCount(), 1U) << "beside the strip it is the canvas";
}

TEST_F(ToolLooks, ATransientToolIsTheLastSelectedAndNeverTheCurrentOne)
{
    open(12);
    click("galleryButton");
    EXPECT_EQ(manager->lastSelectedTool()->name(), "gallery");
    EXPECT_EQ(manager->currentTool()->name(), "pen");
    click("circleButton");
    EXPECT_EQ(manager->lastSelectedTool()->name(), "circle");
}

TEST_F(ToolLooks, AButtonWithoutAToolLeavesNoneSelected)
{
    open(12);
    platform::Button stranger(platform::Rect::make(0.0, 0.0, 10.0, 10.0));
    stranger.setTitle("nothing of ours");
    manager->selectTool(stranger);
    EXPECT_EQ(manager->currentTool(), nullptr);
    EXPECT_EQ(canvas().currentTool(), nullptr);
    EXPECT_EQ(imageOf("penButton"), "pen_red_d");
    localStroke({300.0, 300.0}, {400.0, 400.0});
    EXPECT_EQ(annotationCount(), 0U);
}

TEST_F(ToolLooks, AChoiceForTheTextToolEndsARunningTextAndCountsForTheNext)
{
    open(12);
    click("textButton");
    localStroke({300.0, 300.0}, {300.0, 300.0});
    desk.input().sendKey(platform::EventType::keyDown, 0, u"a", 0);
    drain();
    EventLog log(12, {"textModeEvent"});

    tool("text").menuController()->selectColorAtIndex(2);
    const auto first = std::dynamic_pointer_cast<TextAnnotation>(
        canvas().document().annotations(canvas().annotationModeKey())->back());
    ASSERT_TRUE(first);
    EXPECT_FALSE(first->isActive());
    EXPECT_EQ(first->color(), platform::Color(220.0 / 255.0, 0.0, 0.0, 1.0));
    EXPECT_EQ(log.events.size(), 1U);

    tool("pen").menuController()->selectColorAtIndex(2);
    EXPECT_EQ(canvas().currentTool()->name(), "text") << "a pen's choice touches no canvas";
}

TEST_F(ToolLooks, TheFixedMenuLeavesASnapshotByItsTag)
{
    open(12);
    canvas().setIsEditMode(false);
    manager->setEditModeToolMenu(false);
    platform::Button leave(platform::Rect::make(0.0, 0.0, 10.0, 10.0));
    for (const int other : {0, 99, 101, 102, 103}) {
        leave.setTag(other);
        manager->selectOthersToolMenu(leave);
        EXPECT_FALSE(canvas().isEditMode()) << other;
    }
    leave.setTag(100);
    manager->selectOthersToolMenu(leave);
    EXPECT_TRUE(canvas().isEditMode());
    EXPECT_TRUE(manager->outlets().fixedToolMenuView->isHidden());
}

} // namespace
} // namespace orv::test

#include "platform/ports/Pictures.h"
#include "platform/raster/Pictures.h"
#include "platform/views/Button.h"
#include "platform/views/ImageView.h"
#include "platform/views/LayoutReader.h"
#include "platform/views/Window.h"
#include "support/RecordingContext.h"
#include "support/VirtualDesk.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>

namespace orv::test {
namespace {

using platform::Button;
using platform::Event;
using platform::EventType;
using platform::Image;
using platform::ImageView;
using platform::PictureResource;
using platform::Rect;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

platform::VirtualSettings settingsIn(const std::string &home)
{
    platform::VirtualSettings settings;
    settings.home = home;
    settings.resources = home + "/resources";
    return settings;
}

std::shared_ptr<PictureResource> inMemory(int side)
{
    return std::make_shared<PictureResource>("square", std::make_shared<Image>(side, side));
}

/// A desk whose resource folder holds the pictures that a test puts there.
class ViewsWithPictures : public ::testing::Test {
protected:
    ViewsWithPictures() : desk(settingsIn(home.path()))
    {
        platform::Platform::install(&desk);
        std::filesystem::create_directories(home.path() + "/resources/pictures");
    }
    ~ViewsWithPictures() override { platform::Platform::install(nullptr); }
    void put(const std::string &file, int side) const
    {
        EXPECT_TRUE(
            platform::writePng(home.path() + "/resources/pictures/" + file, Image(side, side)));
    }

    TemporaryFolder home;
    platform::VirtualPlatform desk;
    RecordingContext context;
};

TEST_F(ViewsWithPictures, APictureIsReadWhenItIsFirstShownAndThenKept)
{
    const PictureResource pen("pen");
    put("pen.png", 4);
    put("pen@2x.png", 8);

    const platform::ImagePtr shown = pen.image();

    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->width(), 4);
    ASSERT_NE(shown->finer(), nullptr);
    EXPECT_EQ(shown->finer()->width(), 8);
    put("pen.png", 6);
    EXPECT_EQ(pen.image(), shown) << "the library's own pictures do not change";
    EXPECT_EQ(pen.name(), "pen");
}

TEST_F(ViewsWithPictures, ANameWithoutAnExtensionIsThatOfAPng)
{
    const std::string folder = home.path() + "/resources/pictures/";
    EXPECT_EQ(platform::pathForImageResource("pen"), folder + "pen.png");
    EXPECT_EQ(platform::pathForImageResource("pen.jpg"), folder + "pen.jpg");
    EXPECT_EQ(PictureResource("missing").image(), nullptr);
}

TEST_F(ViewsWithPictures, AnImageViewShowsItsPictureScaledToItsBounds)
{
    ImageView view(Rect::make(5.0, 6.0, 30.0, 20.0));
    view.drawRect(context, view.bounds());
    EXPECT_THAT(context.lines, IsEmpty());

    view.setImage(inMemory(4));
    view.drawRect(context, view.bounds());
    EXPECT_THAT(context.lines, ElementsAre("image 4x4 in [0 0 30 20] operation 2 fraction 1"));

    context.lines.clear();
    view.setImage(std::make_shared<PictureResource>("missing"));
    view.drawRect(context, view.bounds());
    EXPECT_THAT(context.lines, IsEmpty());
}

TEST_F(ViewsWithPictures, AnImageViewIsDrawnAgainWithItsNewPicture)
{
    platform::Window window(Rect::make(0.0, 0.0, 50.0, 50.0), 0);
    const auto view = std::make_shared<ImageView>(Rect::make(0.0, 0.0, 1.0, 1.0));
    window.contentView()->addSubview(view);
    window.orderFront();
    desk.mainThread().drain();
    auto red = std::make_shared<Image>(1, 1);
    *red->data() = 0xFFFF0000;

    view->setImage(std::make_shared<PictureResource>("red", red));
    desk.mainThread().drain();

    EXPECT_EQ(desk.windowServer().surface(window.windowNumber())->contents()->pixel(0, 49),
              0xFFFF0000U);
}

TEST_F(ViewsWithPictures, AButtonShowsAnotherPictureWhileItIsPressed)
{
    const auto button = std::make_shared<Button>(Rect::make(0.0, 0.0, 40.0, 20.0));
    button->setImage(inMemory(4));
    button->setAlternateImage(inMemory(6));

    button->mouseDown(Event{});
    button->drawRect(context, button->bounds());
    button->mouseUp(Event{});
    button->drawRect(context, button->bounds());

    EXPECT_THAT(context.lines, ElementsAre("image 6x6 in [0 0 40 20] operation 2 fraction 1",
                                           "image 4x4 in [0 0 40 20] operation 2 fraction 1"));
}

TEST_F(ViewsWithPictures, ALayoutNamesThePicturesOfItsButtonsAndImageViews)
{
    platform::LayoutBindings bindings;
    bindings.windowClasses["Panel"] = [](const Rect &frame, std::uint32_t styleMask) {
        return std::make_shared<platform::Window>(frame, styleMask);
    };
    std::shared_ptr<platform::Window> panel;
    std::map<std::string, std::shared_ptr<platform::View>> views;
    bindings.windowOutlets["panel"] = [&](const auto &found) { panel = found; };
    for (const std::string name : {"pen", "plain", "paper"}) {
        bindings.viewOutlets[name] = [&views, name](const auto &found) { views[name] = found; };
    }

    platform::loadLayout(R"({"windows": [{"class": "Panel", "outlet": "panel",
        "frame": [0, 0, 100, 100], "views": [
            {"class": "Button", "outlet": "pen", "frame": [0, 0, 9, 9],
             "picture": "pen", "pressedPicture": "penPressed"},
            {"class": "Button", "outlet": "plain", "frame": [0, 0, 9, 9], "title": "plain"},
            {"class": "ImageView", "outlet": "paper", "frame": [0, 0, 9, 9],
             "picture": "paper.svg"}]}]})",
                         "panel.json", bindings);

    const auto pen = std::dynamic_pointer_cast<Button>(views["pen"]);
    ASSERT_NE(pen, nullptr);
    EXPECT_EQ(pen->image()->name(), "pen");
    EXPECT_EQ(pen->alternateImage()->name(), "penPressed");
    const auto plain = std::dynamic_pointer_cast<Button>(views["plain"]);
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->image(), nullptr);
    EXPECT_EQ(plain->alternateImage(), nullptr);
    const auto paper = std::dynamic_pointer_cast<ImageView>(views["paper"]);
    ASSERT_NE(paper, nullptr);
    EXPECT_EQ(paper->image()->name(), "paper.svg");
    EXPECT_EQ(desk.pictures().decoded(), 0U) << "nothing is shown yet";
}

} // namespace
} // namespace orv::test

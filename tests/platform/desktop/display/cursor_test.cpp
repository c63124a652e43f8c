#include "platform/desktop/display/Desk.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace orv::platform::test {

namespace {

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kHalfBlue = 0x80000080;
const Rect kWholeScreen = Rect::make(0, 0, 1920, kScreenHeight);

ImagePtr filled(int width, int height, std::uint32_t pixel)
{
    auto image = std::make_shared<Image>(width, height);
    std::fill_n(image->data(), width * height, pixel);
    return image;
}

} // namespace

class AnyDisplayCursors : public Desk {
protected:
    /// True when the pointer comes to look like this picture, pointing with this pixel.
    [[nodiscard]] bool comesToLook(const Image &picture, int hotX, int hotY)
    {
        const std::vector<std::uint32_t> pixels(
            picture.data(),
            picture.data() + static_cast<std::ptrdiff_t>(picture.width()) * picture.height());
        const XClient::PointerLook look{picture.width(), picture.height(), hotX, hotY, pixels};
        return pumpUntil([&] { return client.pointerLook() == look; });
    }
    /// The arrow as a window without any cursor rect shows it.
    [[nodiscard]] XClient::PointerLook arrow()
    {
        InkWindow plain(Rect::make(1500, 0, 100, 100));
        plain.surface().orderFront();
        client.movePointer(1550, kScreenHeight - 50);
        EXPECT_TRUE(pumpUntil([&] { return !plain.events.empty(); }));
        return client.pointerLook();
    }
};

TEST_F(AnyDisplayCursors, showTheirPictureWithItsHotSpotWhereTheirRectIs)
{
    const ImagePtr pencil = filled(20, 30, kRed);
    InkWindow overlay(kWholeScreen);
    overlay.surface().setCursorRects({{Rect::make(0, 0, 1000, kScreenHeight), pencil, {3, 29}}});
    overlay.surface().orderFront();

    client.movePointer(500, 400);

    EXPECT_TRUE(comesToLook(*pencil, 3, 29));
}

TEST_F(AnyDisplayCursors, areTheArrowBesideTheirRectsAndWithoutAPicture)
{
    const XClient::PointerLook arrow = this->arrow();
    const ImagePtr pencil = filled(20, 30, kRed);
    InkWindow overlay(kWholeScreen);
    overlay.surface().setCursorRects({{Rect::make(0, 0, 1000, kScreenHeight), pencil, {}},
                                      {Rect::make(100, 0, 100, kScreenHeight), nullptr, {}}});
    overlay.surface().orderFront();
    client.movePointer(500, 400);
    ASSERT_TRUE(comesToLook(*pencil, 0, 0));

    client.movePointer(1200, 400);
    EXPECT_TRUE(pumpUntil([&] { return client.pointerLook() == arrow; }));
    client.movePointer(500, 400);
    ASSERT_TRUE(comesToLook(*pencil, 0, 0));
    client.movePointer(150, 400);
    EXPECT_TRUE(pumpUntil([&] { return client.pointerLook() == arrow; }));
}

TEST_F(AnyDisplayCursors, ofTheLastRectHoldWhereSeveralLie)
{
    const ImagePtr pencil = filled(20, 30, kRed);
    const ImagePtr marker = filled(16, 16, kHalfBlue);
    InkWindow overlay(kWholeScreen);
    overlay.surface().setCursorRects(
        {{kWholeScreen, pencil, {}}, {Rect::make(0, 0, 500, 500), marker, {8, 8}}});
    overlay.surface().orderFront();

    client.movePointer(250, kScreenHeight - 250);
    EXPECT_TRUE(comesToLook(*marker, 8, 8));

    client.movePointer(250, kScreenHeight - 550);
    EXPECT_TRUE(comesToLook(*pencil, 0, 0));
}

TEST_F(AnyDisplayCursors, changeUnderAPointerThatRests)
{
    const ImagePtr pencil = filled(20, 30, kRed);
    const ImagePtr marker = filled(16, 16, kHalfBlue);
    client.movePointer(500, 400);
    InkWindow overlay(kWholeScreen);
    overlay.surface().setCursorRects({{kWholeScreen, pencil, {}}});
    overlay.surface().orderFront();
    EXPECT_TRUE(comesToLook(*pencil, 0, 0)) << "the window came below the pointer";

    overlay.surface().setCursorRects({{kWholeScreen, marker, {}}});
    EXPECT_TRUE(comesToLook(*marker, 0, 0));

    overlay.surface().setCursorRects({});
    EXPECT_TRUE(pumpUntil([&] { return client.pointerLook().pixels.front() != kHalfBlue; }));
}

TEST_F(AnyDisplayCursors, pointInsideTheirPictureWhateverIsAsked)
{
    const ImagePtr pencil = filled(20, 30, kRed);
    InkWindow overlay(kWholeScreen);
    overlay.surface().setCursorRects({{kWholeScreen, pencil, {500, -3}}});
    overlay.surface().orderFront();

    client.movePointer(500, 400);

    EXPECT_TRUE(comesToLook(*pencil, 19, 0));
}

TEST_F(AnyDisplayCursors, stayWhenTheWindowLetsClicksThroughAndTakesThemAgain)
{
    const ImagePtr pencil = filled(20, 30, kRed);
    InkWindow overlay(kWholeScreen);
    overlay.surface().setCursorRects({{kWholeScreen, pencil, {}}});
    overlay.surface().orderFront();
    client.movePointer(500, 400);
    ASSERT_TRUE(comesToLook(*pencil, 0, 0));

    overlay.surface().setIgnoresMouseEvents(true);
    EXPECT_TRUE(pumpUntil([&] { return client.pointerLook().pixels.front() != kRed; }));

    overlay.surface().setIgnoresMouseEvents(false);
    EXPECT_TRUE(comesToLook(*pencil, 0, 0));
}

} // namespace orv::platform::test

#include "platform/desktop/display/Desk.h"
#include "platform/desktop/display/PaintingClient.h"

#include "platform/desktop/PixelReader.h"
#include "platform/desktop/ScreenLayers.h"

#include <QProcess>
#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

namespace orv::platform::test {

namespace {

constexpr std::uint32_t kRoot = 0xff336699U;
constexpr std::uint32_t kRed = 0xffff0000U;
constexpr std::uint32_t kGreen = 0xff00ff00U;
constexpr std::uint32_t kBlue = 0xff0000ffU;
constexpr std::uint32_t kWhite = 0xffffffffU;
constexpr std::uint32_t kBlack = 0xff000000U;
/// Half red over green, and over the root.
constexpr std::uint32_t kRedOnGreen = 0xff807f00U;
constexpr std::uint32_t kRedOnRoot = 0xff99334cU;
constexpr std::uint32_t kHalfRed = 0x80800000U;
const Rect kWholeScreen = Rect::make(0, 0, 1920, kScreenHeight);
const QRect kGreenFrame(200, 200, 600, 400);

/// What is painted in a window: a rectangle as the screen has it, from its top left corner.
std::function<void(GraphicsContext &)> painter(const QRect &rect, const Color &color)
{
    return [=](GraphicsContext &context) {
        context.setFillColor(color);
        context.fillRect(Rect::make(rect.x(), kScreenHeight - rect.y() - rect.height(),
                                    rect.width(), rect.height()),
                         CompositingOperation::copy);
    };
}

} // namespace

/// A screen of one colour, and a window of ours over all of it.
class CaptureDesk : public Desk {
protected:
    void SetUp() override
    {
        Desk::SetUp();
        ASSERT_EQ(QProcess::execute(QStringLiteral("hsetroot"),
                                    {QStringLiteral("-solid"), QStringLiteral("#336699")}),
                  0);
        overlay.onDraw = painter({400, 300, 600, 100}, {1.0, 0.0, 0.0, 1.0});
    }
    /// Above all windows so far; no other program comes before that is done.
    void showOverlay()
    {
        overlay.surface().orderFront();
        static_cast<void>(ports().x().topLevels());
    }
    [[nodiscard]] static ImagePtr capture(InkWindow &window, bool including,
                                          const Rect &rect = kWholeScreen)
    {
        return ports().screenCapture().capture(rect, window.surface().windowNumber(), including);
    }
    [[nodiscard]] ImagePtr below() { return capture(overlay, false); }
    [[nodiscard]] ImagePtr withOverlay() { return capture(overlay, true); }

    PaintingClient others;
    InkWindow overlay{kWholeScreen};
};

class AnyDisplayCapture : public CaptureDesk {};

TEST_F(AnyDisplayCapture, showsWindowsAndTheRootBelowAWindowWithoutItsInk)
{
    others.show(kGreenFrame, 0x00ff00);
    showOverlay();

    const ImagePtr picture = below();

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->size(), (Size{1920, 1080}));
    EXPECT_EQ(picture->pixel(199, 350), kRoot);
    EXPECT_EQ(picture->pixel(200, 200), kGreen);
    EXPECT_EQ(picture->pixel(500, 350), kGreen);
    EXPECT_EQ(picture->pixel(799, 599), kGreen);
    EXPECT_EQ(picture->pixel(800, 599), kRoot);
    EXPECT_EQ(picture->pixel(900, 350), kRoot);
    EXPECT_EQ(picture->pixel(1919, 1079), kRoot);
}

TEST_F(AnyDisplayCapture, showsTheInkOverThemWhenTheWindowIsIncluded)
{
    others.show(kGreenFrame, 0x00ff00);
    showOverlay();

    const ImagePtr picture = withOverlay();

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->pixel(400, 300), kRed);
    EXPECT_EQ(picture->pixel(999, 399), kRed);
    EXPECT_EQ(picture->pixel(500, 299), kGreen);
    EXPECT_EQ(picture->pixel(1000, 350), kRoot);
}

TEST_F(AnyDisplayCapture, mixesTranslucentInkAndTranslucentWindows)
{
    others.show(kGreenFrame, 0x00ff00);
    overlay.onDraw = painter({400, 300, 600, 100}, {1.0, 0.0, 0.0, 0.5});
    showOverlay();
    const ImagePtr ofTranslucentInk = withOverlay();

    overlay.onDraw = painter({400, 300, 600, 100}, {1.0, 0.0, 0.0, 1.0});
    overlay.surface().setNeedsDisplay(kWholeScreen);
    overlay.surface().setAlpha(0.5);
    const ImagePtr ofTranslucentWindow = withOverlay();

    for (const ImagePtr &picture : {ofTranslucentInk, ofTranslucentWindow}) {
        EXPECT_EQ(picture->pixel(500, 350), kRedOnGreen);
        EXPECT_EQ(picture->pixel(900, 350), kRedOnRoot);
    }
}

TEST_F(AnyDisplayCapture, showsWhatWasAskedToBeDrawnBefore)
{
    showOverlay();
    ASSERT_EQ(withOverlay()->pixel(500, 350), kRed);

    overlay.onDraw = painter({400, 300, 600, 100}, {0.0, 0.0, 1.0, 1.0});
    overlay.surface().setNeedsDisplay(kWholeScreen);

    EXPECT_EQ(withOverlay()->pixel(500, 350), kBlue);
}

TEST_F(AnyDisplayCapture, leavesOutWindowsOfOursAboveTheGivenOne)
{
    InkWindow toolbox(kWholeScreen, 5);
    toolbox.onDraw = painter({450, 300, 100, 100}, {0.0, 0.0, 1.0, 1.0});
    toolbox.surface().orderFront();
    showOverlay();

    EXPECT_EQ(below()->pixel(500, 350), kRoot);
    EXPECT_EQ(withOverlay()->pixel(500, 350), kRed);
    EXPECT_EQ(capture(toolbox, false)->pixel(500, 350), kRed);
    EXPECT_EQ(capture(toolbox, true)->pixel(500, 350), kBlue);
    EXPECT_EQ(capture(toolbox, true)->pixel(600, 350), kRed);
}

TEST_F(AnyDisplayCapture, leavesOutWindowsOfOthersAboveTheGivenOne)
{
    others.show(kGreenFrame, 0x00ff00);
    showOverlay();

    others.show({450, 300, 100, 100}, 0x0000ff);

    EXPECT_EQ(below()->pixel(500, 350), kGreen);
    EXPECT_EQ(withOverlay()->pixel(500, 350), kRed);
}

TEST_F(AnyDisplayCapture, showsWindowsOfOthersInTheirOrder)
{
    others.show(kGreenFrame, 0x00ff00);
    others.show({300, 300, 600, 400}, 0x0000ff);
    showOverlay();

    const ImagePtr picture = below();

    EXPECT_EQ(picture->pixel(250, 250), kGreen);
    EXPECT_EQ(picture->pixel(500, 500), kBlue);
    EXPECT_EQ(picture->pixel(850, 650), kBlue);
}

TEST_F(AnyDisplayCapture, showsAWindowThatMayBeInTheFrameOfAWindowManager)
{
    showGreenWindow();
    showOverlay();

    const ImagePtr picture = below();

    EXPECT_EQ(picture->pixel(200, 200), kGreen);
    EXPECT_EQ(picture->pixel(799, 599), kGreen);
    EXPECT_EQ(picture->pixel(500, 650), kRoot);
}

TEST_F(AnyDisplayCapture, showsWhatAWindowPaintsWhileItIsCovered)
{
    const xcb_window_t window = others.show(kGreenFrame, 0x00ff00);
    overlay.background = {1.0, 1.0, 1.0, 1.0};
    showOverlay();
    ASSERT_EQ(below()->pixel(500, 500), kGreen);

    others.recolor(window, 0x0000ff);

    EXPECT_EQ(below()->pixel(500, 500), kBlue);
    EXPECT_EQ(withOverlay()->pixel(500, 500), kWhite);
}

TEST_F(AnyDisplayCapture, blendsAWindowWithAlpha)
{
    others.show(kGreenFrame, 0x00ff00);
    others.showTranslucent({300, 300, 600, 400}, kHalfRed);
    showOverlay();

    const ImagePtr picture = below();

    EXPECT_EQ(picture->pixel(500, 500), kRedOnGreen);
    EXPECT_EQ(picture->pixel(850, 650), kRedOnRoot);
}

TEST_F(AnyDisplayCapture, showsAShapedWindowOnlyWhereItIs)
{
    const xcb_window_t window = others.show(kGreenFrame, 0x00ff00);
    others.setShape(window, {{0, 0, 100, 100}, {300, 50, 50, 200}});
    showOverlay();

    const ImagePtr picture = below();

    EXPECT_EQ(picture->pixel(299, 299), kGreen);
    EXPECT_EQ(picture->pixel(300, 299), kRoot);
    EXPECT_EQ(picture->pixel(499, 250), kRoot);
    EXPECT_EQ(picture->pixel(500, 250), kGreen);
    EXPECT_EQ(picture->pixel(549, 449), kGreen);
    EXPECT_EQ(picture->pixel(549, 450), kRoot);
}

TEST_F(AnyDisplayCapture, showsAWindowWithItsBorder)
{
    const xcb_window_t shaped = others.show({900, 200, 100, 100}, 0x0000ff, 20);
    others.setShape(shaped, {{-10, -10, 60, 60}});
    others.show(kGreenFrame, 0x00ff00, 10);
    showOverlay();

    const ImagePtr picture = below();

    EXPECT_EQ(picture->pixel(189, 300), kRoot);
    EXPECT_EQ(picture->pixel(190, 300), kWhite);
    EXPECT_EQ(picture->pixel(200, 300), kGreen);
    EXPECT_EQ(picture->pixel(809, 609), kWhite);
    EXPECT_EQ(picture->pixel(889, 220), kRoot);
    EXPECT_EQ(picture->pixel(890, 220), kWhite);
    EXPECT_EQ(picture->pixel(949, 249), kBlue);
    EXPECT_EQ(picture->pixel(950, 249), kRoot);
}

TEST_F(AnyDisplayCapture, leavesOutWindowsThatAreNotShown)
{
    const xcb_window_t window = others.show(kGreenFrame, 0x00ff00);
    showOverlay();
    ASSERT_EQ(below()->pixel(500, 500), kGreen);

    others.hide(window);

    EXPECT_EQ(below()->pixel(500, 500), kRoot);
}

TEST_F(AnyDisplayCapture, countsFromTheTopLeftAndRoundsPartsOfPixelsUp)
{
    others.show(kGreenFrame, 0x00ff00);
    showOverlay();

    const ImagePtr picture = capture(overlay, false, Rect::make(190, 195, 20.5, 30));

    ASSERT_EQ(picture->size(), (Size{21, 30}));
    EXPECT_EQ(picture->pixel(9, 29), kRoot);
    EXPECT_EQ(picture->pixel(10, 4), kRoot);
    EXPECT_EQ(picture->pixel(10, 5), kGreen);
    EXPECT_EQ(picture->pixel(20, 29), kGreen);
}

TEST_F(AnyDisplayCapture, reachesDisplaysLeftOfTheMainOneAndIsBlackBesideAllOfThem)
{
    others.show({100, 700, 1200, 200}, 0x00ff00);
    const PluggedDisplay main("main", "960/254x1080/286+960+0", true);
    const PluggedDisplay left("left", "960/254x800/212+0+0", false);
    ASSERT_TRUE(pumpUntil([] {
        return ports().displays().screens().size() == 2 &&
               ports().displays().bounds(ports().displays().mainDisplayID()).size.height == 1080;
    }));
    showOverlay();

    const ImagePtr picture = capture(overlay, false, Rect::make(-960, -20, 1920, 1100));

    ASSERT_EQ(picture->size(), (Size{1920, 1100}));
    EXPECT_EQ(picture->pixel(500, 19), kBlack);
    EXPECT_EQ(picture->pixel(500, 20), kRoot);
    EXPECT_EQ(picture->pixel(99, 730), kRoot);
    EXPECT_EQ(picture->pixel(100, 730), kGreen);
    EXPECT_EQ(picture->pixel(100, 819), kGreen);
    EXPECT_EQ(picture->pixel(100, 820), kBlack);
    EXPECT_EQ(picture->pixel(960, 850), kGreen);
    EXPECT_EQ(picture->pixel(1299, 850), kGreen);
    EXPECT_EQ(picture->pixel(1300, 850), kRoot);
}

TEST_F(AnyDisplayCapture, knowsAWindowThatAWindowManagerHasPutIntoAFrame)
{
    const xcb_window_t frame = others.show(kGreenFrame, 0x00ff00);
    showOverlay();
    others.adopt(overlay.nativeWindow(), frame);

    const ImagePtr picture = withOverlay();

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->pixel(500, 350), kRed);
    EXPECT_EQ(picture->pixel(500, 500), kRoot);
}

TEST_F(AnyDisplayCapture, repeatsARootPictureThatIsSmallerThanTheScreen)
{
    others.setRootPicture(3, {0x111111, 0x222222, 0x333333, 0x444444, 0x555555, 0x666666});
    showOverlay();

    const ImagePtr picture = below();

    EXPECT_EQ(picture->pixel(0, 0), 0xff111111U);
    EXPECT_EQ(picture->pixel(1919, 1079), 0xff666666U);
    EXPECT_EQ(picture->pixel(1000, 500), 0xff222222U);
    EXPECT_EQ(capture(overlay, false, Rect::make(1, 1, 1, 1))->pixel(0, 0), 0xff555555U);
}

TEST_F(AnyDisplayCapture, isNullForNoAreaForOneWithoutEndAndForAWindowThatIsNotShown)
{
    InkWindow hidden(kWholeScreen);
    showOverlay();
    const double infinite = std::numeric_limits<double>::infinity();
    const double none = std::numeric_limits<double>::quiet_NaN();

    EXPECT_EQ(capture(overlay, true, Rect::make(10, 10, 0, 10)), nullptr);
    EXPECT_EQ(capture(overlay, true, Rect::make(10, 10, 10, -10)), nullptr);
    EXPECT_EQ(capture(overlay, true, Rect::make(10, 10, none, 10)), nullptr);
    EXPECT_EQ(capture(overlay, true, Rect::make(none, 10, 10, 10)), nullptr);
    EXPECT_EQ(capture(overlay, true, Rect::make(10, -infinite, 10, 10)), nullptr);
    EXPECT_EQ(capture(overlay, true, Rect::make(10, 10, infinite, 10)), nullptr);
    EXPECT_EQ(capture(overlay, true, Rect::make(10, 10, 10, 40'000)), nullptr);
    EXPECT_EQ(capture(hidden, true), nullptr);
    EXPECT_EQ(ports().screenCapture().capture(kWholeScreen, 1'000'000, true), nullptr);
}

TEST_F(AnyDisplayCapture, isBlackFarFromAllDisplays)
{
    showOverlay();

    const ImagePtr picture = capture(overlay, true, Rect::make(-100'000, 5'000, 10, 10));

    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->pixel(5, 5), kBlack);
}

TEST_F(AnyDisplayCapture, copesWithWindowsThatGoAtAnyMoment)
{
    const XConnection &x = ports().x();
    const xcb_window_t goneBefore = others.show(kGreenFrame, 0x0000ff);
    const xcb_window_t goneAfter = others.show(kGreenFrame, 0x00ff00);
    others.destroy(goneBefore);

    const auto layers = layersOf(x, {goneBefore, goneAfter}, {0, 0, 1920, 1080}, false);
    others.destroy(goneAfter);
    PixelReader reader(x);

    ASSERT_EQ(layers.size(), 1U);
    EXPECT_EQ(layers.begin()->first, goneAfter);
    EXPECT_EQ(layers.begin()->second.frame, kGreenFrame);
    const std::uint32_t *pixels =
        reader.read(layers.begin()->second.pixmap.id(), QRect(0, 0, 600, 400));
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(pixels[600 * 400 - 1] & 0xffffffU, 0x00ff00U);
}

TEST_F(AnyDisplayCapture, readsTheSamePixelsThroughSharedMemoryAndThroughTheConnection)
{
    const XConnection &x = ports().x();
    const xcb_window_t window = others.show({0, 0, 50, 40}, 0x123456);
    const auto layers = layersOf(x, {window}, {0, 0, 1920, 1080}, false);
    ASSERT_EQ(layers.size(), 1U);
    const xcb_pixmap_t pixmap = layers.begin()->second.pixmap.id();
    SharedPixels shared(x);

    ASSERT_TRUE(shared.makeRoom(10));
    ASSERT_TRUE(shared.makeRoom(50 * 40));
    for (const QRect &area : {QRect(10, 20, 7, 5), QRect(0, 0, 50, 40)}) {
        const std::uint32_t *pixels = shared.read(pixmap, area);
        const auto received = readPixels(x, pixmap, area);
        ASSERT_NE(pixels, nullptr);
        ASSERT_NE(received, std::nullopt);
        EXPECT_TRUE(std::equal(pixels, pixels + area.width() * area.height(), received->data()));
        EXPECT_EQ(pixels[0] & 0xffffffU, 0x123456U);
    }
    EXPECT_EQ(shared.read(pixmap, QRect(45, 0, 10, 10)), nullptr) << "it reaches beyond the pixmap";
    EXPECT_EQ(readPixels(x, pixmap, QRect(45, 0, 10, 10)), std::nullopt);
}

class WithCompositorCapture : public CaptureDesk {};

TEST_F(WithCompositorCapture, appliesTheOpacityOfOthersAsTheCompositorDoes)
{
    others.show(kGreenFrame, 0x00ff00);
    const xcb_window_t window = others.show({300, 300, 600, 400}, 0xff0000);
    others.setOpacity(window, 0.5);
    overlay.onDraw = nullptr;
    showOverlay();

    const ImagePtr picture = below();

    EXPECT_EQ(picture->pixel(500, 500), kRedOnGreen);
    EXPECT_EQ(picture->pixel(850, 650), kRedOnRoot);
    EXPECT_TRUE(comesToShow(500, 500, kRedOnGreen));
}

TEST_F(WithCompositorCapture, isGreyWhereTheRootHasNoPicture)
{
    showOverlay();

    others.setRootColor(0x2040c0);
    EXPECT_EQ(below()->pixel(500, 500), 0xff808080U);

    others.setLostRootPicture();
    EXPECT_EQ(below()->pixel(500, 500), 0xff808080U);
}

class BareCapture : public CaptureDesk {};

TEST_F(BareCapture, takesNoOpacityOfOthersAsNothingAppliesIt)
{
    const xcb_window_t window = others.show(kGreenFrame, 0x00ff00);
    others.setOpacity(window, 0.5);
    showOverlay();

    EXPECT_EQ(below()->pixel(500, 500), kGreen);
}

TEST_F(BareCapture, showsTheRootsOwnColourWithoutAPicture)
{
    others.show(kGreenFrame, 0x00ff00);
    showOverlay();

    others.setRootColor(0x2040c0);
    const ImagePtr picture = below();
    EXPECT_EQ(picture->pixel(900, 350), 0xff2040c0U);
    EXPECT_EQ(picture->pixel(500, 350), kGreen);

    others.setLostRootPicture();
    EXPECT_EQ(below()->pixel(900, 350), 0xff2040c0U);
}

/// On a server that keeps no pixels of what is covered and shares no memory.
class PlainServerCapture : public CaptureDesk {};

TEST_F(PlainServerCapture, isNull)
{
    showOverlay();

    EXPECT_EQ(below(), nullptr);
    EXPECT_EQ(withOverlay(), nullptr);
}

TEST_F(PlainServerCapture, readsPixelsThroughTheConnection)
{
    const XConnection &x = ports().x();
    others.show(kGreenFrame, 0x00ff00);
    PixelReader reader(x);

    EXPECT_FALSE(SharedPixels(x).makeRoom(10));
    const std::uint32_t *pixels = reader.read(x.root(), QRect(199, 200, 2, 1));
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(pixels[0] & 0xffffffU, 0x336699U);
    EXPECT_EQ(pixels[1] & 0xffffffU, 0x00ff00U);
    EXPECT_EQ(reader.read(x.root(), QRect(1900, 0, 100, 1)), nullptr)
        << "it reaches off the screen";
    EXPECT_EQ(reader.read(x.root(), QRect(5, 5, 0, 1)), nullptr);
}

} // namespace orv::platform::test

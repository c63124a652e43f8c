#include "Surface.h"

#include "platform/raster/GuiApplication.h"

#include <QFont>
#include <QFontInfo>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace orv::platform {
namespace {

/// The rows (from the top) and columns that hold anything.
struct Inked {
    int top = -1, bottom = -1, left = -1, right = -1;

    explicit Inked(const Image &image)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) != 0) {
                    top = top < 0 ? y : top;
                    bottom = y;
                    left = left < 0 || x < left ? x : left;
                    right = std::max(right, x);
                }
            }
        }
    }
};

Size measured(std::u16string_view text, const Font &font)
{
    Image image(1, 1);
    return RasterContext(image, {{1.0, 1.0}, 1.0}).measureText(text, font);
}

TEST(Text, HelveticaIsAFaceOfItsWidths)
{
    ensureGuiApplication();
    ensureGuiApplication();

    // The true face is 755.6 wide, the usual stand-in for an unknown family 863.
    EXPECT_NEAR(measured(u"Hamburgefonstiv", {"Helvetica", 100.0, false}).width, 755.7, 0.5);
}

TEST(Text, LinesAreAsHighAsTheirSizeSaysWhateverTheFace)
{
    const Font font{"Helvetica", 20.0, false};

    EXPECT_DOUBLE_EQ(measured(u"x", font).height, 23.0);
    EXPECT_DOUBLE_EQ(measured(u"", font).height, 23.0);
    EXPECT_DOUBLE_EQ(measured(u"one\ntwo", font).height, 46.0);
    EXPECT_DOUBLE_EQ(measured(u"x", {"Courier", 20.0, false}).height, 23.0);
}

TEST(Text, WidthsGrowWithTheSizeEvenBetweenWholeOnes)
{
    const double at12 = measured(u"Hello", {"Helvetica", 12.0, false}).width;
    const double at30 = measured(u"Hello", {"Helvetica", 30.0, false}).width;
    const double at12Half = measured(u"Hello", {"Helvetica", 12.5, false}).width;

    EXPECT_NEAR(at30, at12 * 2.5, 0.2);
    EXPECT_NEAR(at12Half, at12 * 12.5 / 12.0, 0.2);
    EXPECT_GT(measured(u"Hello", {"Helvetica", 12.0, true}).width, at12);
}

TEST(Text, OfNoSizeIsNothing)
{
    EXPECT_EQ(measured(u"x", {"Helvetica", 0.0, false}), Size{});
    EXPECT_EQ(measured(u"x", {"Helvetica", -5.0, false}), Size{});
}

TEST(Text, StandsUprightBelowTheUpperEdgeInTheFillColour)
{
    Surface surface(100, 100);

    surface.paint([](GraphicsContext &context) {
        context.setFillColor(kRed);
        context.drawText(u"H", Rect::make(10.0, 10.0, 80.0, 80.0), {"Helvetica", 40.0, false},
                         TextAlignment::left);
    });

    const Inked inked(surface.image());
    // The baseline is 36.8 below the edge at 10; a capital is 0.72 sizes high.
    EXPECT_NEAR(inked.bottom, 46, 1);
    EXPECT_NEAR(inked.top, 18, 1);
    EXPECT_GE(inked.left, 10);
    EXPECT_LE(inked.right, 10 + 29);
    EXPECT_EQ(surface.at(15, 30), 0xFFFF0000U);
}

TEST(Text, TopAndBottomAreNotConfused)
{
    Surface surface(60, 60);

    surface.paint([](GraphicsContext &context) {
        context.drawText(u"L", Rect::make(0.0, 0.0, 60.0, 60.0), {"Helvetica", 50.0, false},
                         TextAlignment::left);
    });

    const Inked inked(surface.image());
    const auto inRow = [&](int y) {
        int count = 0;
        for (int x = 0; x < 60; ++x) {
            count += surface.at(x, y) != 0 ? 1 : 0;
        }
        return count;
    };
    EXPECT_GT(inRow(inked.bottom - 1), 2 * inRow(inked.top + 1));
}

TEST(Text, IsWrappedAtTheWidthAndClippedToTheRectangle)
{
    const Font font{"Helvetica", 20.0, false};
    const double word = measured(u"words", font).width;
    Surface surface(200, 100);

    surface.paint([&](GraphicsContext &context) {
        context.drawText(u"words words words words", Rect::make(0.0, 50.0, word * 1.5, 50.0), font,
                         TextAlignment::left);
    });

    const Inked inked(surface.image());
    EXPECT_LE(inked.right, word * 1.5);
    EXPECT_GT(inked.bottom, 30);
    EXPECT_LT(inked.bottom, 50);
}

TEST(Text, SetIntoItsOwnWidthStaysOnOneLine)
{
    const Font font{"Helvetica", 17.0, false};
    const Size size = measured(u"To be or not to be", font);
    Surface surface(300, 60);

    surface.paint([&](GraphicsContext &context) {
        context.drawText(u"To be or not to be", {{0.0, 0.0}, {size.width, 60.0}}, font,
                         TextAlignment::left);
    });

    EXPECT_LE(Inked(surface.image()).bottom, size.height);
}

TEST(Text, IsAlignedInTheRectangle)
{
    const auto left = [](TextAlignment alignment) {
        Surface surface(200, 40);
        surface.paint([alignment](GraphicsContext &context) {
            context.drawText(u"H", Rect::make(0.0, 0.0, 200.0, 40.0), {"Helvetica", 20.0, false},
                             alignment);
        });
        return Inked(surface.image()).left;
    };

    EXPECT_LT(left(TextAlignment::left), 5);
    EXPECT_EQ(left(TextAlignment::natural), left(TextAlignment::left));
    EXPECT_NEAR(left(TextAlignment::center), 94, 3);
    EXPECT_NEAR(left(TextAlignment::right), 187, 3);
}

TEST(Text, WidthsCountSpacesAtTheEnd)
{
    const Font font{"Helvetica", 20.0, false};
    const double space = measured(u" ", font).width;

    EXPECT_NEAR(space, 20.0 * 0.278, 0.02);
    EXPECT_NEAR(measured(u"ab  ", font).width, measured(u"ab", font).width + 2.0 * space, 0.02);
    EXPECT_NEAR(measured(u"ab  \nc", font).width, measured(u"ab  ", font).width, 1e-9);
}

/// All pixels of a character, 40 points high.
std::vector<std::uint32_t> glyph(std::u16string_view character)
{
    Surface surface(60, 60);
    surface.paint([character](GraphicsContext &context) {
        context.drawText(character, Rect::make(0.0, 0.0, 60.0, 60.0), {"Helvetica", 40.0, false},
                         TextAlignment::left);
    });
    const Image &image = surface.image();
    return {image.data(), image.data() + image.width() * image.height()};
}

TEST(Text, TakesWhatItsFaceLacksFromAnother)
{
    const auto alef = glyph(u"\u05D0");
    const auto missing = glyph(u"\u0378");

    EXPECT_GT(std::count_if(alef.begin(), alef.end(), [](auto pixel) { return pixel != 0; }), 50);
    EXPECT_NE(alef, missing) << "the box that stands for a character of no face";
    EXPECT_NE(alef, glyph(u"\u05D1"));
}

TEST(Text, ALoneSurrogateIsTheReplacementCharacter)
{
    const char16_t high = 0xD83D;
    const char16_t low = 0xDE00;
    const auto replacement = glyph(u"\uFFFD");

    EXPECT_NE(replacement, glyph(u" "));
    EXPECT_EQ(glyph({&high, 1}), replacement);
    EXPECT_EQ(glyph({&low, 1}), replacement);
    EXPECT_EQ(measured({&high, 1}, {}), measured(u"\uFFFD", {}));
}

TEST(Text, KeepsTheStateAroundIt)
{
    Surface surface(20, 20);

    surface.paint([](GraphicsContext &context) {
        context.setFillColor(kGreen);
        context.drawText(u"x", Rect::make(0.0, 0.0, 5.0, 5.0), {"Helvetica", 5.0, false},
                         TextAlignment::left);
        context.fillRect(Rect::make(15.0, 15.0, 5.0, 5.0), CompositingOperation::sourceOver);
    });

    EXPECT_EQ(surface.at(17, 2), 0xFF00FF00U);
}

TEST(FontMetrics, AreThoseOfHelvetica)
{
    EXPECT_DOUBLE_EQ(capHeight({"Helvetica", 2048.0}), 1469.0);
    EXPECT_DOUBLE_EQ(descender({"Helvetica", 2048.0}), -471.0);
    EXPECT_DOUBLE_EQ(capHeight({"Helvetica", 20.0}), 20.0 * 1469.0 / 2048.0);
}

} // namespace
} // namespace orv::platform

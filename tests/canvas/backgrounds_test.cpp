#include "canvas/BackgroundDrawings.h"
#include "canvas/DefaultBackgroundUtilities.h"
#include "platform/ports/Pictures.h"
#include "support/RecordingContext.h"
#include "support/VirtualDesk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace orv::test {
namespace {

using platform::Color;
using platform::Font;
using platform::GraphicsContext;
using platform::ImagePtr;
using platform::Path;
using platform::Point;
using platform::Rect;
using platform::Size;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char *kChart = "0.7411764860153198 0.8941176533699036 0.9490196108818054 1";
constexpr std::uint32_t kChartPixel = 0xFFBDE4F2;
constexpr std::uint32_t kWhitePixel = 0xFFFFFFFF;

/// Notes drawing as text, and what was stroked and written as values. Its bold letters are as high
/// as `boldHeight` times those of the plain face.
class ChartRecorder : public RecordingContext {
public:
    struct Stroke {
        Path path;
        double width;
    };
    std::vector<Stroke> strokes;
    std::vector<Font> fonts;
    double boldHeight = 1.0;

    void setLineWidth(double width) override
    {
        RecordingContext::setLineWidth(width);
        width_ = width;
    }
    void strokePath(const Path &path) override
    {
        RecordingContext::strokePath(path);
        strokes.push_back({path, width_});
    }
    void drawText(std::u16string_view words, const Rect &rect, const Font &font,
                  platform::TextAlignment alignment) override
    {
        RecordingContext::drawText(words, rect, font, alignment);
        fonts.push_back(font);
    }
    Size measureText(std::u16string_view words, const Font &font) override
    {
        const Size plain = RecordingContext::measureText(words, font);
        return font.bold ? Size{plain.width, plain.height * boldHeight} : plain;
    }

    /// The box round each stroked path.
    [[nodiscard]] std::vector<Rect> boxes() const
    {
        std::vector<Rect> found;
        for (const Stroke &stroke : strokes) {
            found.push_back(stroke.path.controlBox());
        }
        return found;
    }
    [[nodiscard]] std::vector<double> widths() const
    {
        std::vector<double> found;
        for (const Stroke &stroke : strokes) {
            found.push_back(stroke.width);
        }
        return found;
    }
    /// Without what was stroked and filled along a path.
    [[nodiscard]] std::vector<std::string> settings() const
    {
        std::vector<std::string> found;
        for (const std::string &line : lines) {
            if (!line.starts_with("stroke 0") && !line.starts_with("fill 0")) {
                found.push_back(line);
            }
        }
        return found;
    }
    [[nodiscard]] std::vector<std::string> texts() const
    {
        std::vector<std::string> found;
        for (const std::string &line : lines) {
            if (line.starts_with("text \"")) {
                found.push_back(line);
            }
        }
        return found;
    }

private:
    double width_ = 0.0;
};

ChartRecorder drawn(void (*draw)(GraphicsContext &, Size), Size size)
{
    ChartRecorder recorder;
    draw(recorder, size);
    return recorder;
}

MATCHER_P4(IsBox, x, y, width, height, "")
{
    constexpr double kSlack = 1e-9;
    *result_listener << RecordingContext::text(arg);
    return std::abs(arg.minX() - x) < kSlack && std::abs(arg.minY() - y) < kSlack &&
           std::abs(arg.size.width - width) < kSlack && std::abs(arg.size.height - height) < kSlack;
}

MATCHER_P2(IsPoint, x, y, "")
{
    constexpr double kSingleSlack = 1e-4;
    *result_listener << arg.x << ", " << arg.y;
    return std::abs(arg.x - x) < kSingleSlack && std::abs(arg.y - y) < kSingleSlack;
}

TEST(Venn2, IsTwoCirclesOnWhiteAtTheBaseSize)
{
    const ChartRecorder page = drawn(backgrounds::drawVenn2, {1024.0, 768.0});

    EXPECT_THAT(page.settings(),
                ElementsAre("fill color 1 1 1 1", "fill rect [0 0 1024 768] operation 1", "save",
                            "blend 0", std::string("stroke color ") + kChart, "width 10",
                            "restore"));
    EXPECT_THAT(page.boxes(),
                ElementsAre(IsBox(148.0, 124.0, 520.0, 520.0), IsBox(356.0, 124.0, 520.0, 520.0)));
    EXPECT_EQ(page.lines.back(), "restore");
}

TEST(Venn2, GrowsWithTheHeightOfAWidePage)
{
    const ChartRecorder page = drawn(backgrounds::drawVenn2, {1920.0, 1080.0});

    EXPECT_THAT(page.boxes(), ElementsAre(IsBox(960.0 - 1.4 * 365.625, 174.375, 731.25, 731.25),
                                          IsBox(960.0 - 0.6 * 365.625, 174.375, 731.25, 731.25)));
}

TEST(Venn2, GrowsWithTheWidthOfATallPageAndOfASquareOne)
{
    const ChartRecorder tall = drawn(backgrounds::drawVenn2, {800.0, 1280.0});
    const ChartRecorder square = drawn(backgrounds::drawVenn2, {768.0, 768.0});

    EXPECT_EQ(tall.boxes().front().size.width, 2.0 * 260.0 * 800.0 / 1024.0);
    EXPECT_EQ(square.boxes().front().size.width, 2.0 * 260.0 * 768.0 / 1024.0);
}

TEST(Venn2, HasARadiusOfSinglePrecision)
{
    const float radius = static_cast<float>(701.0 / 768.0) * 260.0F;

    const Rect box = drawn(backgrounds::drawVenn2, {1366.0, 701.0}).boxes().front();

    EXPECT_NE(static_cast<double>(radius), 701.0 / 768.0 * 260.0);
    EXPECT_THAT(box.size.width, testing::DoubleNear(2.0 * radius, 1e-9));
}

TEST(Venn3, IsThreeCirclesRoundTheCentre)
{
    const double h = 1.732 * 190.0;

    const ChartRecorder page = drawn(backgrounds::drawVenn3, {1024.0, 768.0});

    EXPECT_THAT(page.settings(),
                ElementsAre("fill color 1 1 1 1", "fill rect [0 0 1024 768] operation 1", "save",
                            "blend 0", std::string("stroke color ") + kChart, "width 10",
                            "restore"));
    EXPECT_THAT(page.boxes(),
                ElementsAre(IsBox(512.0 - 190.0, 384.0 + h / 3.0 - 190.0, 380.0, 380.0),
                            IsBox(417.0 - 190.0, 384.0 - h / 6.0 - 190.0, 380.0, 380.0),
                            IsBox(607.0 - 190.0, 384.0 - h / 6.0 - 190.0, 380.0, 380.0)));
}

TEST(Venn, KeepsItsLinesOnASmallPageWhileTheCirclesShrink)
{
    const ChartRecorder two = drawn(backgrounds::drawVenn2, {204.8, 153.6});
    const ChartRecorder three = drawn(backgrounds::drawVenn3, {204.8, 153.6});

    EXPECT_THAT(two.widths(), ElementsAre(10.0, 10.0));
    EXPECT_THAT(three.widths(), ElementsAre(10.0, 10.0, 10.0));
    EXPECT_NEAR(two.boxes().front().size.width, 104.0, 1e-4);
    EXPECT_NEAR(three.boxes().front().size.width, 76.0, 1e-4);
}

TEST(Quardrant, SetsNoBlendModeAndDrawsItsAxesBeforeTheTicks)
{
    const std::string stroke = std::string("stroke color ") + kChart;
    const std::string fill = std::string("fill color ") + kChart;

    const ChartRecorder page = drawn(backgrounds::drawQuardrant, {1024.0, 768.0});

    EXPECT_THAT(page.settings(),
                ElementsAre("fill color 1 1 1 1", "fill rect [0 0 1024 768] operation 1", "save",
                            stroke, "width 10", fill, stroke, "width 2", "width 10", fill, stroke,
                            "width 2", "width 5", "restore"));
    EXPECT_THAT(page.widths(), ElementsAre(10.0, 2.0, 2.0, 10.0, 2.0, 2.0, 5.0));
}

TEST(Quardrant, SpansItsShareOfTheShorterSide)
{
    const ChartRecorder wide = drawn(backgrounds::drawQuardrant, {1024.0, 768.0});
    const ChartRecorder tall = drawn(backgrounds::drawQuardrant, {768.0, 1024.0});
    const double half = static_cast<double>(652.8F) / 2.0;

    const std::vector<Rect> boxes = wide.boxes();
    EXPECT_EQ(boxes.at(1).maxX(), 512.0 + half);
    EXPECT_EQ(boxes.at(2).minX(), 512.0 - half);
    EXPECT_EQ(boxes.at(4).maxY(), 384.0 + half);
    EXPECT_EQ(boxes.at(5).minY(), 384.0 - half);
    EXPECT_NEAR(boxes.at(1).maxX(), 838.4, 1e-4);
    EXPECT_NEAR(boxes.at(5).minY(), 57.6, 1e-4);
    EXPECT_EQ(tall.boxes().at(1).maxX(), 384.0 + half);
}

TEST(Quardrant, HasTicksRoundTheCentreOutwards)
{
    const Path ticks = drawn(backgrounds::drawQuardrant, {1024.0, 768.0}).strokes.back().path;

    EXPECT_EQ(ticks.elementCount(), 15U * 4U * 3U);
    EXPECT_THAT(RecordingContext::text(ticks),
                testing::StartsWith("0(502,404) 1(502,404) 1(522,404) "
                                    "0(532,374) 1(532,374) 1(532,394) "
                                    "0(502,364) 1(502,364) 1(522,364) "
                                    "0(492,374) 1(492,374) 1(492,394) "
                                    "0(502,424) 1(502,424) 1(522,424) "));
    EXPECT_EQ(ticks.controlBox(), Rect::make(212.0, 84.0, 600.0, 600.0));
}

TEST(Quardrant, HasTheSameTicksOnASmallPageAndNoneOnASmallerOne)
{
    const ChartRecorder four = drawn(backgrounds::drawQuardrant, {95.0, 95.0});
    const ChartRecorder none = drawn(backgrounds::drawQuardrant, {94.0, 94.0});

    EXPECT_EQ(four.strokes.back().path.elementCount(), 4U * 3U);
    EXPECT_EQ(four.strokes.back().path.controlBox(), Rect::make(27.5, 27.5, 40.0, 40.0));
    EXPECT_EQ(four.widths().back(), 5.0);
    EXPECT_TRUE(none.strokes.back().path.isEmpty());
    EXPECT_EQ(none.strokes.size(), 7U) << "the axes are there";
}

TEST(Quardrant, HasNoAxesWhereTheirHeadsDoNotFit)
{
    const ChartRecorder page = drawn(backgrounds::drawQuardrant, {28.0, 500.0});

    EXPECT_EQ(page.strokes.size(), 1U);
    EXPECT_TRUE(page.strokes.back().path.isEmpty());
}

TEST(DoubleArrow, IsNotDrawnUnlessItIsLongerThanItsHeads)
{
    ChartRecorder recorder;

    EXPECT_FALSE(backgrounds::drawDoubleArrow(recorder, {10.0, 10.0}, {10.0, 10.0}));
    EXPECT_FALSE(backgrounds::drawDoubleArrow(recorder, {10.0, 10.0}, {34.0, 10.0}));
    EXPECT_FALSE(backgrounds::drawDoubleArrow(recorder, {0.0, 0.0}, {0.0, 24.0 + 1e-7}))
        << "that is 24 in single precision";
    EXPECT_THAT(recorder.lines, IsEmpty());

    EXPECT_TRUE(backgrounds::drawDoubleArrow(recorder, {10.0, 10.0}, {34.01, 10.0}));
    EXPECT_EQ(recorder.strokes.size(), 3U);
}

TEST(DoubleArrow, HasHeadsOfTheSameSizeInAnyDirection)
{
    ChartRecorder recorder;

    backgrounds::drawDoubleArrow(recorder, {100.0, 200.0}, {160.0, 280.0});

    std::vector<Point> points;
    for (const ChartRecorder::Stroke &stroke : recorder.strokes) {
        stroke.path.forEach(
            [&points](const Path::Element &element) { points.push_back(element.points[0]); });
    }
    EXPECT_THAT(points, ElementsAre(IsPoint(107.2, 209.6), IsPoint(152.8, 270.4),
                                    // The head at the end, its left corner first.
                                    IsPoint(160.0, 280.0), IsPoint(145.12, 276.16),
                                    IsPoint(160.48, 264.64), IsPoint(160.0, 280.0),
                                    // The head at the start, its right corner first.
                                    IsPoint(100.0, 200.0), IsPoint(114.88, 203.84),
                                    IsPoint(99.52, 215.36), IsPoint(100.0, 200.0)));
}

TEST(DoubleArrow, FillsEachHeadBeforeItsOutline)
{
    ChartRecorder recorder;

    backgrounds::drawDoubleArrow(recorder, {0.0, 0.0}, {100.0, 0.0});

    EXPECT_THAT(recorder.lines, ElementsAre("width 10", "stroke 0(12,0) 1(88,0)",
                                            std::string("fill color ") + kChart,
                                            std::string("stroke color ") + kChart, "width 2",
                                            testing::StartsWith("fill 0(100,0) 1(88,9.6000003"),
                                            testing::StartsWith("stroke 0(100,0) 1(88,9.6000003"),
                                            testing::StartsWith("fill 0(0,0) 1(12,-9.6000003"),
                                            testing::StartsWith("stroke 0(0,0) 1(12,-9.6000003")));
}

TEST(KWL, IsThreeColumnsBelowABandWithALetterEach)
{
    const std::string fill = std::string("fill color ") + kChart;

    const ChartRecorder page = drawn(backgrounds::drawKWL, {1024.0, 768.0});

    EXPECT_THAT(page.lines,
                ElementsAre("fill color 1 1 1 1", "fill rect [0 0 1024 768] operation 1", "save",
                            "blend 0", std::string("stroke color ") + kChart, "width 5",
                            "stroke 0(0,599.0399780273438) 1(1024,599.0399780273438)",
                            "stroke 0(341.3333435058594,768) 1(341.3333435058594,0)", fill,
                            "text \"K\" in [141.91667683919272 599.5199890136719 57.5 115] font "
                            "Helvetica 115 alignment 4",
                            "stroke 0(682.6666870117188,768) 1(682.6666870117188,0)", fill,
                            "text \"W\" in [483.2500203450521 599.5199890136719 57.5 115] font "
                            "Helvetica 115 alignment 4",
                            "stroke 0(1024,768) 1(1024,0)", fill,
                            testing::StartsWith("text \"L\" in [824.58333"), "restore"));
}

TEST(KWL, HasLinesThatGrowWithThePage)
{
    const ChartRecorder large = drawn(backgrounds::drawKWL, {1920.0, 1080.0});
    const ChartRecorder tall = drawn(backgrounds::drawKWL, {512.0, 1000.0});

    EXPECT_THAT(large.widths(), testing::Each(7.03125));
    EXPECT_THAT(tall.widths(), testing::Each(2.5));
    EXPECT_THAT(tall.widths(), testing::SizeIs(4));
}

TEST(KWL, HasNoLettersWhereTheBandIsTooLow)
{
    const ChartRecorder page = drawn(backgrounds::drawKWL, {320.0, 240.0});

    EXPECT_THAT(page.texts(), IsEmpty());
    EXPECT_THAT(page.strokes, testing::SizeIs(4));
}

TEST(KWL, MeasuresTheBoldFaceAndWritesThePlainOne)
{
    ChartRecorder page;
    page.boldHeight = 1.5;

    backgrounds::drawKWL(page, {1024.0, 768.0});

    EXPECT_THAT(page.fonts, testing::Each(Font{"Helvetica", 77.0, false}));
    EXPECT_THAT(page.texts().front(), testing::HasSubstr(" 38.5 77] font"))
        << "its place is that of the plain face";
}

TEST(KWLText, OfAGivenSizeIsNotFitted)
{
    ChartRecorder page;

    backgrounds::drawKWLText(page, u"AB", {100.0, 50.0}, {40.0, 8.0}, 20.0F);

    EXPECT_THAT(page.texts(),
                ElementsAre("text \"AB\" in [70 44 20 20] font Helvetica 20 alignment 4"));
}

TEST(FontSize, IsTheLargestAtWhichBothSidesFit)
{
    RecordingContext context;
    const auto fitted = [&context](Size area) {
        return backgrounds::fontSizeForAreaSize(context, area, u"AB", "Helvetica");
    };

    EXPECT_EQ(fitted({1000.0, 30.5}), 30.0F);
    EXPECT_EQ(fitted({30.0, 1000.0}), 30.0F) << "as wide as the area is not too wide";
    EXPECT_EQ(fitted({1000.0, 1000.0}), 400.0F);
    EXPECT_EQ(fitted({1000.0, 400.0}), 400.0F);
    EXPECT_EQ(fitted({1000.0, 399.9}), 399.0F);
}

TEST(FontSize, IsNoneInAnAreaOfNothingOrLess)
{
    RecordingContext context;
    const auto fitted = [&context](Size area) {
        return backgrounds::fontSizeForAreaSize(context, area, u"K", "Helvetica");
    };

    EXPECT_EQ(fitted({0.0, 0.0}), 0.0F);
    EXPECT_EQ(fitted({0.0, 50.0}), 0.0F);
    EXPECT_EQ(fitted({300.0, -0.2}), 0.0F);
}

/// Its letters measure what a table says for each size from 1 to 400.
class LettersOfATable : public RecordingContext {
public:
    explicit LettersOfATable(std::vector<Size> table) : table_(std::move(table)) {}

    Size measureText(std::u16string_view /*words*/, const Font &font) override
    {
        return table_.at(static_cast<std::size_t>(font.size) - 1);
    }

private:
    std::vector<Size> table_;
};

/// Tries each size in turn.
float sizeByTrying(const std::vector<Size> &table, Size area)
{
    float size = 0.0F;
    for (const Size measured : table) {
        if (measured.width > area.width || measured.height > area.height) {
            break;
        }
        size += 1.0F;
    }
    return size;
}

TEST(FontSize, IsNoneInNoAreaEvenForWhatMeasuresNothing)
{
    LettersOfATable context(std::vector<Size>(400));

    EXPECT_EQ(backgrounds::fontSizeForAreaSize(context, {0.0, 0.0}, u"K", "Helvetica"), 0.0F);
    EXPECT_EQ(backgrounds::fontSizeForAreaSize(context, {1.0, 1.0}, u"K", "Helvetica"), 400.0F);
}

TEST(FontSize, EndsBeforeTheFirstThatDoesNotFitThoughLargerOnesWould)
{
    std::vector<Size> table;
    for (int size = 1; size <= 400; ++size) {
        table.push_back({size == 30 ? 20.9 : size * 2.0 / 3.0, static_cast<double>(size)});
    }
    LettersOfATable context(table);

    const float size = backgrounds::fontSizeForAreaSize(context, {20.8, 1000.0}, u"K", "Helvetica");

    EXPECT_LT(table.at(30).width, 20.8) << "the next one would fit";
    EXPECT_EQ(size, 29.0F);
}

class Backgrounds : public VirtualDesk {
protected:
    [[nodiscard]] std::string path() const { return home.path() + "/.whiteboard.jpg"; }
    /// Runs this with a context that measures text as it is painted.
    void measure(const std::function<void(GraphicsContext &)> &body)
    {
        ASSERT_NE(desk.pictures().paint(1, 1, body), nullptr);
    }
    /// A page of 1024 by 768 with this on it; y of `at` grows upward.
    template <class Add> void draw(Add add, Size size = {1024.0, 768.0})
    {
        DefaultBackgroundUtilities utilities(size);
        EXPECT_TRUE((utilities.*add)());
        image = utilities.image();
        ASSERT_NE(image, nullptr);
    }
    [[nodiscard]] std::uint32_t at(int x, int y) const
    {
        return image->pixel(x, image->height() - 1 - y);
    }

    ImagePtr image;
};

TEST_F(Backgrounds, FitLettersAsTryingEachSizeInTurnWould)
{
    for (const std::u16string_view letter : {u"K", u"W", u"L"}) {
        std::vector<Size> table;
        measure([&table, letter](GraphicsContext &context) {
            for (int size = 1; size <= 400; ++size) {
                table.push_back(
                    context.measureText(letter, {"Helvetica", static_cast<double>(size), true}));
            }
        });
        LettersOfATable context(table);

        // What fits changes at these widths and heights and nowhere else.
        for (const Size edge : table) {
            for (const double below : {0.0, 1e-6}) {
                for (const Size area :
                     {Size{edge.width - below, 1e4}, Size{1e4, edge.height - below},
                      Size{edge.width - below, edge.height - below}}) {
                    ASSERT_EQ(backgrounds::fontSizeForAreaSize(context, area, letter, "Helvetica"),
                              sizeByTrying(table, area))
                        << area.width << " by " << area.height;
                }
            }
        }
    }
}

TEST_F(Backgrounds, FitLettersByTheBoldFace)
{
    measure([](GraphicsContext &context) {
        const Size area{60.0, 1000.0};
        const double size = backgrounds::fontSizeForAreaSize(context, area, u"L", "Helvetica");

        EXPECT_LE(context.measureText(u"L", {"Helvetica", size, true}).width, area.width);
        EXPECT_GT(context.measureText(u"L", {"Helvetica", size + 1.0, true}).width, area.width);
        EXPECT_LE(context.measureText(u"L", {"Helvetica", size + 2.0, false}).width, area.width);
    });
}

TEST_F(Backgrounds, ShowTwoCircles)
{
    draw(&DefaultBackgroundUtilities::addVenn2);

    EXPECT_EQ(image->size(), (Size{1024.0, 768.0}));
    EXPECT_EQ(at(148, 384), kChartPixel);
    EXPECT_EQ(at(144, 384), kChartPixel);
    EXPECT_EQ(at(141, 384), kWhitePixel);
    EXPECT_EQ(at(154, 384), kWhitePixel);
    EXPECT_EQ(at(356, 384), kChartPixel);
    EXPECT_EQ(at(668, 384), kChartPixel);
    EXPECT_EQ(at(876, 384), kChartPixel);
    EXPECT_EQ(at(408, 644), kChartPixel);
    EXPECT_EQ(at(616, 124), kChartPixel);
    EXPECT_EQ(at(0, 0), kWhitePixel);
    EXPECT_EQ(at(1023, 767), kWhitePixel);
}

TEST_F(Backgrounds, ShowThreeCirclesOneAboveTwo)
{
    draw(&DefaultBackgroundUtilities::addVenn3);

    EXPECT_EQ(at(512, 683), kChartPixel) << "above the middle";
    EXPECT_EQ(at(417, 139), kChartPixel) << "below on the left";
    EXPECT_EQ(at(607, 139), kChartPixel) << "below on the right";
    EXPECT_EQ(at(512, 100), kWhitePixel);
}

TEST_F(Backgrounds, ShowAxesWithHeadsAndTicks)
{
    draw(&DefaultBackgroundUtilities::addQuardrant);

    EXPECT_EQ(at(512, 384), kChartPixel);
    EXPECT_EQ(at(827, 391), kChartPixel) << "a head is wider than the shaft";
    EXPECT_EQ(at(820, 391), kWhitePixel);
    EXPECT_EQ(at(532, 392), kChartPixel) << "the first tick";
    EXPECT_EQ(at(522, 392), kWhitePixel) << "between two ticks";
    EXPECT_EQ(at(812, 392), kChartPixel) << "the last tick";
    EXPECT_EQ(at(512, 710), kChartPixel);
    EXPECT_EQ(at(512, 715), kWhitePixel);
}

TEST_F(Backgrounds, ShowALetterInTheMiddleOfEachColumn)
{
    draw(&DefaultBackgroundUtilities::addKWL);

    EXPECT_EQ(at(100, 599), kChartPixel);
    EXPECT_EQ(at(341, 20), kChartPixel);
    EXPECT_EQ(at(1022, 20), kChartPixel) << "half of the last line";
    for (int column = 0; column < 3; ++column) {
        int left = 1024;
        int right = 0;
        for (int y = 604; y < 768; ++y) {
            for (int x = column * 1024 / 3 + 5; x < (column + 1) * 1024 / 3 - 5; ++x) {
                if (at(x, y) == kChartPixel) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
            }
        }
        EXPECT_NEAR((left + right) / 2.0, (column + 0.5) * 1024.0 / 3.0, 8.0);
        EXPECT_GT(right - left, 35);
        EXPECT_LT(right - left, 110);
    }
}

TEST_F(Backgrounds, HaveWholePixelsOfASizeThatIsNone)
{
    draw(&DefaultBackgroundUtilities::addVenn2, {100.9, 50.5});

    EXPECT_EQ(image->size(), (Size{100.0, 50.0}));
}

TEST_F(Backgrounds, OfNoUsableSizeAreNoPictureAndNoFile)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    for (const Size size :
         {Size{0.0, 0.0}, Size{100.0, 0.9}, Size{-5.0, 100.0}, Size{nan, 100.0}, Size{100.0, nan},
          Size{infinite, 100.0}, Size{100.0, 16385.0}, Size{1e300, 1e300}}) {
        DefaultBackgroundUtilities utilities(size);

        EXPECT_TRUE(utilities.addVenn2());
        EXPECT_TRUE(utilities.addVenn3());
        EXPECT_TRUE(utilities.addQuardrant());
        EXPECT_TRUE(utilities.addKWL());
        EXPECT_TRUE(utilities.addTileColor(Color::orange()));
        EXPECT_TRUE(utilities.addTilePattern(nullptr));
        EXPECT_EQ(utilities.image(), nullptr);
        EXPECT_TRUE(utilities.saveToFile(path(), 1.0F));
        EXPECT_FALSE(std::filesystem::exists(path()));
    }
}

TEST_F(Backgrounds, MayBeAsSmallAsAPixelAndAsWideAsAPictureCanBe)
{
    draw(&DefaultBackgroundUtilities::addKWL, {1.0, 1.0});
    EXPECT_EQ(image->size(), (Size{1.0, 1.0}));

    draw(&DefaultBackgroundUtilities::addQuardrant, {16384.9, 2.0});
    EXPECT_EQ(image->size(), (Size{16384.0, 2.0}));
}

TEST_F(Backgrounds, OfOneColourTakeItAsItStands)
{
    DefaultBackgroundUtilities utilities({3.0, 2.0});

    EXPECT_TRUE(utilities.addTileColor(Color(1.0, 0.0, 0.0, 0.2)));

    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(utilities.image()->pixel(i % 3, i / 3), 0x33330000U);
    }
}

TEST_F(Backgrounds, OfATiledPictureBeginAtTheBottomLeft)
{
    const ImagePtr tile = desk.pictures().paint(2, 2, [](GraphicsContext &context) {
        context.setFillColor(Color::green());
        context.fillRect(Rect::make(0.0, 0.0, 1.0, 1.0), platform::CompositingOperation::copy);
    });
    DefaultBackgroundUtilities utilities({5.0, 3.0});

    EXPECT_TRUE(utilities.addTilePattern(tile));

    image = utilities.image();
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            EXPECT_EQ(at(x, y), x % 2 == 0 && y % 2 == 0 ? 0xFF00FF00U : 0U) << x << ", " << y;
        }
    }
}

TEST_F(Backgrounds, AreWrittenAsAJpegOverTheOldFile)
{
    for (const auto add :
         {&DefaultBackgroundUtilities::addQuardrant, &DefaultBackgroundUtilities::addVenn2}) {
        DefaultBackgroundUtilities utilities({400.0, 300.0});
        (utilities.*add)();
        EXPECT_TRUE(utilities.saveToFile(path(), 1.0F));
        image = utilities.image();
    }

    const ImagePtr written = desk.pictures().picture(path());
    ASSERT_NE(written, nullptr);
    ASSERT_EQ(written->size(), image->size());
    int worst = 0;
    for (int i = 0; i < 400 * 300; ++i) {
        for (unsigned shift = 0; shift < 24; shift += 8) {
            const auto there = static_cast<int>((written->data()[i] >> shift) & 0xFFU);
            const auto here = static_cast<int>((image->data()[i] >> shift) & 0xFFU);
            worst = std::max(worst, std::abs(there - here));
        }
    }
    EXPECT_LT(worst, 24);
    const auto bytes = desk.files().read(path(), 1U << 20U);
    ASSERT_TRUE(bytes && bytes->size() > 2);
    EXPECT_EQ((*bytes)[0], 0xFF);
    EXPECT_EQ((*bytes)[1], 0xD8);
}

TEST_F(Backgrounds, AreSmallerFilesAtALowerQuality)
{
    DefaultBackgroundUtilities utilities({400.0, 300.0});
    utilities.addVenn3();

    utilities.saveToFile(path(), 0.95F);
    const auto good = std::filesystem::file_size(path());
    utilities.saveToFile(path(), 0.2F);

    EXPECT_LT(std::filesystem::file_size(path()), good);
}

TEST_F(Backgrounds, ThatCannotBeWrittenAreSavedAllTheSame)
{
    const auto entries = [this] {
        return std::distance(std::filesystem::recursive_directory_iterator(home.path()), {});
    };
    const auto before = entries();
    DefaultBackgroundUtilities utilities({40.0, 30.0});
    EXPECT_TRUE(utilities.saveToFile(path(), 1.0F)) << "nothing is drawn yet";
    utilities.addVenn2();

    EXPECT_TRUE(utilities.saveToFile(home.path() + "/missing/a.jpg", 1.0F));
    EXPECT_TRUE(utilities.saveToFile("", 1.0F));
    EXPECT_EQ(entries(), before);
}

} // namespace
} // namespace orv::test

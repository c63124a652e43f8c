#include "orv-pictures/ContactSheet.h"
#include "orv-pictures/Drawing.h"
#include "orv-pictures/PictureError.h"
#include "orv-pictures/Renderer.h"

#include "apps/orv-pictures/Samples.h"
#include "platform/raster/GuiApplication.h"

#include <gmock/gmock.h>

namespace orv::pictures::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;

constexpr QRgb kRed = 0xFFFF0000;
constexpr QRgb kClear = 0;

std::vector<std::vector<Drawn>> drawSamples(const Samples &samples)
{
    // The toolkit takes the first thread that it sees for the main one.
    platform::ensureGuiApplication();
    return drawAll(readFamilies(samples.path("families.json")), TemplateText(samples.templates()));
}

TEST(DrawingTest, drawsEachPictureInBothScales)
{
    const Samples samples;

    const auto drawn = drawSamples(samples);

    ASSERT_EQ(drawn.size(), 1U);
    ASSERT_EQ(drawn[0].size(), 2U);
    const auto &files = drawn[0][0].files;
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].name, "red.png");
    EXPECT_EQ(files[1].name, "red@2x.png");
    const QImage twice = QImage::fromData(files[1].bytes);
    EXPECT_EQ(twice.size(), QSize(8, 8));
    EXPECT_EQ(twice.pixel(3, 7), kRed);
    EXPECT_EQ(twice.pixel(4, 7), kClear);
    EXPECT_EQ(QImage::fromData(files[0].bytes),
              drawn[0][0].image.convertToFormat(QImage::Format_ARGB32));
}

TEST(DrawingTest, makesTheSameBytesEachTime)
{
    const Samples samples;

    const auto first = drawSamples(samples);
    const auto second = drawSamples(samples);

    for (std::size_t i = 0; i < first.at(0).size(); ++i) {
        EXPECT_EQ(first[0][i].files.at(1).bytes, second.at(0).at(i).files.at(1).bytes);
    }
}

TEST(DrawingTest, namesTheTemplateAndThePictureOfABrokenDrawing)
{
    const Samples samples;
    samples.replace("tile.svg", "</svg>", "</svgg>");

    EXPECT_THAT([&] { static_cast<void>(drawSamples(samples)); },
                ThrowsMessage<PictureError>(
                    AllOf(StartsWith(samples.path("tile.svg") + " for \"red\": the drawing cannot"),
                          HasSubstr("mismatch"))));
}

TEST(DrawingTest, takesNoDrawingThatTheToolkitHasRemarksOn)
{
    EXPECT_THAT(
        [] {
            const Renderer renderer("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 4 4\">"
                                    "<use href=\"#none\"/></svg>",
                                    "sample");
        },
        ThrowsMessage<PictureError>(StartsWith("sample: the drawing cannot be read: ")));
}

TEST(DrawingTest, takesNoTextThatIsNoDrawing)
{
    EXPECT_THAT([] { const Renderer renderer("<html/>", "sample"); },
                ThrowsMessage<PictureError>("sample: the drawing cannot be read: it is no SVG."));
}

TEST(ContactSheetTest, showsEachPictureUnderItsCaption)
{
    platform::ensureGuiApplication();
    QImage red(30, 20, QImage::Format_ARGB32);
    red.fill(kRed);
    constexpr int more = 50;

    const QImage one = contactSheet({{"One", {red}}});
    const QImage many = contactSheet({{"One", {red}}, {"Many", std::vector<QImage>(more, red)}});

    const auto reds = [](const QImage &sheet) {
        int count = 0;
        for (int y = 0; y < sheet.height(); ++y) {
            for (int x = 0; x < sheet.width(); ++x) {
                count += sheet.pixel(x, y) == kRed ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_EQ(reds(one), 30 * 20);
    EXPECT_EQ(reds(many), (1 + more) * 30 * 20);
    EXPECT_EQ(one.width(), many.width());
    EXPECT_GT(many.height(), one.height() + 2 * 20);
}

} // namespace
} // namespace orv::pictures::test

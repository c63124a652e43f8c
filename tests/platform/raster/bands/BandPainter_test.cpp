#include "platform/raster/BandPainter.h"

#include "platform/raster/DrawingRecorder.h"
#include "platform/raster/GuiApplication.h"
#include "platform/raster/Surface.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace orv::platform {
namespace {

constexpr double kWidth = 300.0;
constexpr double kHeight = 400.0;

/// Strokes over and out of the surface, erasers and texts among them.
void drawThing(GraphicsContext &context, unsigned number)
{
    std::mt19937 random(number);
    std::uniform_real_distribution<double> x(-20.0, kWidth + 20.0);
    std::uniform_real_distribution<double> y(-20.0, kHeight + 20.0);
    context.saveState();
    context.setLineWidth(1.0 + number % 17);
    context.setLineCap(number % 3 == 0 ? LineCap::butt : LineCap::round);
    context.setLineJoin(LineJoin::round);
    context.setBlendMode(number % 7 == 0 ? BlendMode::clear : BlendMode::normal);
    const Color color{(number % 5) / 5.0, (number % 3) / 3.0, 0.5, 0.6};
    context.setStrokeColor(color);
    context.setFillColor(color);
    if (number % 11 == 0) {
        context.drawText(u"Ink", Rect::make(x(random), y(random), 90.0, 40.0), Font{},
                         TextAlignment::left);
    }
    Path path;
    path.moveTo({x(random), y(random)});
    for (int i = 0; i < 6; ++i) {
        path.lineTo({x(random), y(random)});
    }
    context.strokePath(path);
    context.restoreState();
}

void prepare(GraphicsContext &context)
{
    context.clipToRect(Rect::make(10.0, 10.0, kWidth - 30.0, kHeight - 50.0));
    context.concatenate(AffineTransform::translation(3.0, 5.0));
}

TEST(BandPainter, ManyThreadsPaintWhatOneDoes)
{
    ensureGuiApplication();
    for (const unsigned count : {0U, 1U, 5U, 400U}) {
        const PixelGrid grid{{kWidth, kHeight}, 1.25};
        DrawingRecorder prelude(grid);
        prepare(prelude);
        std::vector<DrawingRecord> things;
        Surface expected(kWidth, kHeight, 1.25);
        expected.paint([&](GraphicsContext &context) {
            prepare(context);
            for (unsigned i = 0; i < count; ++i) {
                drawThing(context, i);
                DrawingRecorder recorder(grid, prelude.state());
                drawThing(recorder, i);
                things.push_back(recorder.take());
            }
        });
        Image picture(grid.pixelWidth(), grid.pixelHeight());

        paintThings(picture, grid, prelude.record(), things);

        EXPECT_TRUE(picture == expected.image()) << count << " things";
    }
}

} // namespace
} // namespace orv::platform

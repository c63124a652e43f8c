#include "platform/raster/FramePainter.h"

#include "platform/raster/GuiApplication.h"
#include "platform/raster/RasterContext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace orv::platform {
namespace {

constexpr double kWidth = 150.0;
constexpr double kHeight = 110.0;

/// One thing that can be drawn: a stroke of some look, or a text, a picture, a layer.
struct Thing {
    enum class Kind { stroke, fill, text, picture, layer };

    Kind kind = Kind::stroke;
    Path path;
    Color color;
    BlendMode mode = BlendMode::normal;
    double width = 1.0;
    LineCap cap = LineCap::round;
    LineJoin join = LineJoin::round;
    std::vector<double> dashes;
    AffineTransform turn;
    Rect rect;
    ImagePtr picture;
    std::u16string text;

    void draw(GraphicsContext &context) const
    {
        context.saveState();
        context.concatenate(turn);
        context.setBlendMode(mode);
        context.setLineWidth(width);
        context.setLineCap(cap);
        context.setLineJoin(join);
        context.setLineDash(0.0, dashes);
        context.setStrokeColor(color);
        context.setFillColor(color);
        switch (kind) {
        case Kind::stroke:
            context.strokePath(path);
            break;
        case Kind::fill:
            context.fillPath(path);
            break;
        case Kind::text:
            context.drawText(text, rect, Font{}, TextAlignment::natural);
            break;
        case Kind::picture:
            context.drawImage(picture, rect, CompositingOperation::sourceOver, 0.75);
            break;
        case Kind::layer:
            context.beginLayer(0.5);
            context.strokePath(path);
            context.fillRect(rect, CompositingOperation::sourceOver);
            context.endLayer();
            break;
        }
        context.restoreState();
    }
};

class Things final : public DrawnList {
public:
    [[nodiscard]] std::size_t size() const override { return things.size(); }
    [[nodiscard]] std::uint64_t stamp(std::size_t count) const override
    {
        return count == 0 ? 0 : stamps[count - 1];
    }
    void draw(std::size_t index, GraphicsContext &context) const override
    {
        ++drawn;
        things[index].draw(context);
    }
    void push(Thing thing)
    {
        static std::uint64_t last = 0;
        things.push_back(std::move(thing));
        stamps.push_back(++last);
    }
    Thing pop()
    {
        Thing thing = things.back();
        things.pop_back();
        stamps.pop_back();
        return thing;
    }

    std::vector<Thing> things;
    std::vector<std::uint64_t> stamps;
    mutable int drawn = 0;
};

/// A surface with a list on it, something over it and a backdrop behind all, as a canvas has them.
struct Scene {
    std::shared_ptr<Things> list = std::make_shared<Things>();
    std::vector<Thing> above;
    Color backdrop{1.0, 1.0, 1.0, 0.25};
    ImagePtr pattern;
    Rect bounds{{0.0, 0.0}, {kWidth, kHeight}};

    void draw(GraphicsContext &context) const
    {
        context.saveState();
        context.clipToRect(bounds);
        context.saveState();
        context.drawList(*list);
        if (pattern) {
            context.fillPattern(bounds, pattern, CompositingOperation::destinationOver);
        } else {
            context.setFillColor(backdrop);
            context.fillRect(bounds, CompositingOperation::destinationOver);
        }
        context.restoreState();
        for (const Thing &thing : above) {
            thing.draw(context);
        }
        context.restoreState();
    }
};

class Dice {
public:
    explicit Dice(unsigned seed) : engine_(seed) {}

    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(engine_); }
    double between(double least, double most)
    {
        return std::uniform_real_distribution<double>(least, most)(engine_);
    }
    Point point() { return {between(-20.0, kWidth + 20.0), between(-20.0, kHeight + 20.0)}; }
    Rect rect() { return {point(), {between(1.0, 60.0), between(1.0, 60.0)}}; }
    Color color() { return {between(0, 1), between(0, 1), between(0, 1), between(0.2, 1.0)}; }
    double width()
    {
        constexpr std::array<double, 8> widths{0.5, 1.0, 1.5, 4.0, 9.0, 20.0, 40.0, 100.0};
        return widths[static_cast<std::size_t>(upTo(7))];
    }

private:
    std::mt19937 engine_;
};

ImagePtr somePicture()
{
    auto picture = std::make_shared<Image>(13, 9);
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 13; ++x) {
            picture->row(y)[x] = 0xFF000000U | static_cast<std::uint32_t>(x * 19 * 256 + y * 25);
        }
    }
    return picture;
}

void grow(Thing &thing, Dice &dice, int points)
{
    for (int i = 0; i < points; ++i) {
        const Point from = thing.path.currentPoint();
        const Point to{from.x + dice.between(-12.0, 12.0), from.y + dice.between(-12.0, 12.0)};
        if (dice.upTo(5) == 0) {
            thing.path.quadCurveTo({to.x + 3.0, to.y - 3.0}, to);
        } else {
            thing.path.lineTo(to);
        }
    }
}

Thing someThing(Dice &dice)
{
    Thing thing;
    thing.color = dice.color();
    thing.width = dice.width();
    thing.path.moveTo(dice.point());
    thing.path.lineTo(thing.path.currentPoint());
    const int kind = dice.upTo(9);
    if (kind < 5) {
        grow(thing, dice, dice.upTo(40));
    } else {
        grow(thing, dice, 1 + dice.upTo(4));
        thing.rect = dice.rect();
        thing.picture = somePicture();
        thing.text = u"Ink \u00e9\n2";
        thing.kind = static_cast<Thing::Kind>(kind - 5);
    }
    if (dice.upTo(3) == 0) {
        thing.mode = BlendMode::clear;
    }
    if (dice.upTo(4) == 0) {
        thing.dashes = {thing.width * 3.0, thing.width * 0.6};
    }
    if (dice.upTo(5) == 0) {
        thing.join = LineJoin::miter;
        thing.cap = LineCap::butt;
    }
    if (dice.upTo(5) == 0) {
        thing.turn = AffineTransform::rotation(dice.between(-0.5, 0.5));
    }
    return thing;
}

/// Changes a scene as a hand, a client or a mode does.
class Editor {
public:
    Editor(Scene &scene, Dice &dice) : scene_(scene), dice_(dice) {}

    void edit()
    {
        const int kind = dice_.upTo(19);
        Things &list = *scene_.list;
        if (kind < 4) {
            list.push(someThing(dice_));
        } else if (kind < 11 && list.size() > 0) {
            change(list.things.back());
        } else if (kind < 13 && list.size() > 0) {
            undone_.push_back(list.pop());
        } else if (kind == 13 && !undone_.empty()) {
            list.push(undone_.back());
            undone_.pop_back();
        } else if (kind == 14) {
            others_.push_back(std::exchange(scene_.list, std::make_shared<Things>()));
        } else if (kind == 15 && !others_.empty()) {
            std::swap(scene_.list, others_[static_cast<std::size_t>(
                                       dice_.upTo(static_cast<int>(others_.size()) - 1))]);
        } else if (kind == 16) {
            scene_.backdrop = dice_.color();
            scene_.pattern = dice_.upTo(1) == 0 ? nullptr : somePicture();
        } else if (kind == 17) {
            scene_.above.push_back(someThing(dice_));
        } else if (kind == 18 && !scene_.above.empty()) {
            scene_.above.erase(scene_.above.begin());
        } else {
            manyAtOnce();
        }
    }

private:
    void change(Thing &last)
    {
        switch (dice_.upTo(8)) {
        case 0:
            last.color = dice_.color();
            break;
        case 1:
            last.path.close();
            break;
        case 2:
            last.rect = dice_.rect();
            break;
        case 3:
            last.path.moveTo(dice_.point());
            break;
        default:
            grow(last, dice_, 1 + dice_.upTo(3));
        }
    }
    void manyAtOnce()
    {
        Things &list = *scene_.list;
        for (int i = dice_.upTo(6); i > 0 && list.size() > 0; --i) {
            list.pop();
        }
        for (int i = dice_.upTo(6); i > 0; --i) {
            list.push(someThing(dice_));
        }
    }

    Scene &scene_;
    Dice &dice_;
    std::vector<Thing> undone_;
    std::vector<std::shared_ptr<Things>> others_;
};

class FramePainterTest : public testing::Test {
protected:
    void usesScale(double scale)
    {
        grid = {{kWidth, kHeight}, scale};
        picture = Image(grid.pixelWidth(), grid.pixelHeight());
        painter.forget();
    }
    std::vector<PixelRect> paint()
    {
        return painter.paint(picture, grid,
                             [this](GraphicsContext &context) { scene.draw(context); });
    }
    [[nodiscard]] Image painted() const
    {
        return painted([this](GraphicsContext &context) { scene.draw(context); });
    }
    [[nodiscard]] Image painted(const std::function<void(GraphicsContext &)> &draw) const
    {
        Image whole(grid.pixelWidth(), grid.pixelHeight());
        RasterContext context(whole, grid);
        draw(context);
        return whole;
    }
    /// All that differs from `before` lies in the rectangles.
    [[nodiscard]] bool isWithin(const Image &before, const std::vector<PixelRect> &rects) const
    {
        Image kept = before;
        for (const PixelRect &rect : rects) {
            for (int y = rect.y; y < rect.y + rect.height; ++y) {
                std::copy_n(picture.row(y) + rect.x, rect.width, kept.row(y) + rect.x);
            }
        }
        return kept == picture;
    }

    Scene scene;
    PixelGrid grid{{kWidth, kHeight}, 1.0};
    Image picture{static_cast<int>(kWidth), static_cast<int>(kHeight)};
    FramePainter painter;
};

/// How many frames the law is tried on; a variable of the environment asks for more.
int frameCount()
{
    constexpr int kUsual = 10'000;
    const char *wanted = std::getenv("ORV_FRAMES");
    return wanted == nullptr ? kUsual : std::atoi(wanted);
}

TEST_F(FramePainterTest, EveryFrameIsWhatAFullRepaintShows)
{
    ensureGuiApplication();
    constexpr std::array<double, 4> scales{1.0, 1.25, 1.5, 2.0};
    constexpr int kFramesOfAScene = 100;
    const int frames = frameCount();
    for (int done = 0; done < frames; done += kFramesOfAScene) {
        const int seed = done / kFramesOfAScene;
        Dice dice(static_cast<unsigned>(seed));
        scene = {};
        usesScale(scales[static_cast<std::size_t>(seed) % scales.size()]);
        Editor editor(scene, dice);
        for (int frame = 0; frame < kFramesOfAScene; ++frame) {
            editor.edit();
            const Image before = picture;
            const auto rects = paint();
            ASSERT_TRUE(picture == painted()) << "scene " << seed << ", frame " << frame;
            ASSERT_TRUE(isWithin(before, rects)) << "scene " << seed << ", frame " << frame;
        }
    }
}

TEST_F(FramePainterTest, WhatHasNotChangedIsNotDrawnAgain)
{
    Dice dice(1);
    for (int i = 0; i < 300; ++i) {
        scene.list->push(someThing(dice));
    }
    paint();
    scene.list->drawn = 0;

    EXPECT_TRUE(paint().empty());
    EXPECT_LE(scene.list->drawn, 1) << "the last one is looked at";
    const Thing undone = scene.list->pop();
    paint();
    scene.list->push(undone);
    paint();

    EXPECT_LE(scene.list->drawn, 5);
    EXPECT_TRUE(picture == painted());
}

TEST_F(FramePainterTest, AStrokeThatGrowsIsPaintedWhereItHasGrown)
{
    Thing stroke;
    stroke.width = 4.0;
    stroke.path.moveTo({10.0, 10.0});
    stroke.path.lineTo({10.0, 10.0});
    scene.list->push(stroke);
    paint();
    for (int x = 11; x < 140; ++x) {
        scene.list->things.back().path.lineTo({static_cast<double>(x), 10.0});

        const auto rects = paint();

        ASSERT_EQ(rects.size(), 1U);
        EXPECT_LE(rects[0].width, 14);
        EXPECT_LE(rects[0].height, 14);
    }
    EXPECT_TRUE(picture == painted());
}

TEST_F(FramePainterTest, TheWayBackOfAStrokeThatIsClosedIsPaintedAlongItself)
{
    Thing stroke;
    stroke.width = 2.0;
    stroke.path.moveTo({5.0, 5.0});
    for (int i = 1; i <= 100; ++i) {
        stroke.path.lineTo({5.0 + i * 14.0, 5.0 + i * 10.0});
    }
    grid = {{1440.0, 1024.0}, 1.0};
    picture = Image(1440, 1024);
    scene.bounds = {{0.0, 0.0}, {1440.0, 1024.0}};
    scene.list->push(stroke);
    paint();

    scene.list->things.back().path.close();
    const auto rects = paint();

    int pixels = 0;
    for (const PixelRect &rect : rects) {
        pixels += rect.width * rect.height;
    }
    EXPECT_GT(pixels, 0);
    EXPECT_LT(pixels, 1440 * 1024 / 5);
    EXPECT_TRUE(picture == painted());
}

TEST_F(FramePainterTest, AWipeThatIsUndoneDrawsNothingAgain)
{
    Dice dice(2);
    for (int i = 0; i < 200; ++i) {
        scene.list->push(someThing(dice));
    }
    paint();
    const auto wiped = std::exchange(scene.list, std::make_shared<Things>());
    paint();
    EXPECT_TRUE(picture == painted());
    scene.list->push(someThing(dice));
    paint();
    wiped->drawn = 0;

    scene.list = wiped;
    paint();

    EXPECT_LE(wiped->drawn, 1);
    EXPECT_TRUE(picture == painted());
}

TEST_F(FramePainterTest, AListOverSomethingElseIsPaintedWithIt)
{
    const auto drawWithGround = [this](GraphicsContext &context) {
        context.setFillColor({0.0, 0.0, 1.0, 1.0});
        context.fillRect({{20.0, 20.0}, {60.0, 40.0}}, CompositingOperation::sourceOver);
        scene.draw(context);
    };
    Thing eraser;
    eraser.width = 20.0;
    eraser.mode = BlendMode::clear;
    eraser.path.moveTo({10.0, 40.0});
    eraser.path.lineTo({90.0, 40.0});
    scene.list->push(eraser);

    painter.paint(picture, grid, drawWithGround);

    EXPECT_TRUE(picture == painted(drawWithGround));
}

TEST_F(FramePainterTest, WhatIsSeenThroughAnotherClipIsPaintedAgain)
{
    struct Clips {
        Rect outer;
        std::optional<Rect> inner;
    };
    const Rect wide{{10.0, 10.0}, {100.0, 80.0}};
    const Rect narrow{{30.0, 20.0}, {40.0, 30.0}};
    const Rect other{{50.0, 20.0}, {40.0, 30.0}};
    // Its edge comes to the next pixel, which is less than boxes round drawing tell apart.
    const Rect lessByOne{{30.6, 20.0}, {39.4, 30.0}};
    for (const Clips &clips : {Clips{wide, narrow}, Clips{wide, lessByOne}, Clips{wide, other},
                               Clips{wide, std::nullopt}, Clips{narrow, std::nullopt},
                               Clips{narrow, wide}, Clips{other, wide}}) {
        const auto drawClipped = [&](GraphicsContext &context) {
            context.clipToRect(clips.outer);
            if (clips.inner) {
                context.clipToRect(*clips.inner);
            }
            context.setFillColor({0.0, 0.0, 1.0, 1.0});
            context.fillRect(scene.bounds, CompositingOperation::sourceOver);
        };

        painter.paint(picture, grid, drawClipped);

        ASSERT_TRUE(picture == painted(drawClipped));
    }
}

TEST_F(FramePainterTest, StepsBackAreRememberedAsFarAsTheirPixelsAreKept)
{
    grid = {{1920.0, 1080.0}, 2.0};
    picture = Image(grid.pixelWidth(), grid.pixelHeight());
    scene.bounds = {{0.0, 0.0}, grid.size};
    const std::size_t bytesOfOne = sizeof(std::uint32_t) * 3840 * 2160;
    ASSERT_LT(bytesOfOne * 1, InkLayer::mostSavedBytes);
    ASSERT_GT(bytesOfOne * 3, InkLayer::mostSavedBytes);
    Thing cover;
    cover.kind = Thing::Kind::fill;
    cover.path.addRect(scene.bounds);
    constexpr int kCovers = 8;
    for (int i = 0; i < kCovers; ++i) {
        cover.color = {0.1 * i, 0.5, 0.5, 0.5};
        scene.list->push(cover);
        paint();
    }
    scene.list->drawn = 0;
    for (int round = 0; round < 3; ++round) {
        const Thing undone = scene.list->pop();
        paint();
        scene.list->push(undone);
        paint();
    }
    EXPECT_LE(scene.list->drawn, 3 * 3) << "the last but one is still known";
    scene.list->drawn = 0;
    for (int i = 0; i < 3; ++i) {
        scene.list->pop();
    }

    paint();

    EXPECT_GE(scene.list->drawn, kCovers - 3) << "what lay further back is not";
    EXPECT_TRUE(picture == painted());
}

TEST_F(FramePainterTest, ManyThingsInThePlaceOfAFewArePaintedAsThemselves)
{
    Dice dice(5);
    for (int i = 0; i < 3; ++i) {
        scene.list->push(someThing(dice));
        paint();
    }
    while (scene.list->size() > 0) {
        scene.list->pop();
    }
    for (int i = 0; i < 100; ++i) {
        scene.list->push(someThing(dice));
    }
    paint();
    EXPECT_TRUE(picture == painted());
    for (int i = 0; i < 70; ++i) {
        scene.list->pop();
        paint();
        ASSERT_TRUE(picture == painted()) << i;
    }
}

TEST_F(FramePainterTest, APictureThatIsNotDrawnAnyMoreIsLetGo)
{
    Thing thing;
    thing.kind = Thing::Kind::picture;
    thing.rect = {{10.0, 10.0}, {20.0, 20.0}};
    thing.picture = somePicture();
    std::weak_ptr<const Image> ofList = thing.picture;
    scene.list->push(thing);
    thing.picture = somePicture();
    std::weak_ptr<const Image> ofFrame = thing.picture;
    scene.above.push_back(thing);
    thing = {};
    paint();
    ASSERT_FALSE(ofList.expired() || ofFrame.expired());

    scene.list->things.back().picture = somePicture();
    scene.above.clear();
    paint();

    EXPECT_TRUE(ofList.expired());
    EXPECT_TRUE(ofFrame.expired());
}

TEST_F(FramePainterTest, ASurfaceThatWasForgottenIsPaintedWhole)
{
    Dice dice(3);
    scene.list->push(someThing(dice));
    paint();
    painter.forget();
    picture = Image(picture.width(), picture.height());

    paint();

    EXPECT_TRUE(picture == painted());
}

} // namespace
} // namespace orv::platform

#include "Surface.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

namespace orv::platform {
namespace {

constexpr double kWidth = 160.0;
constexpr double kHeight = 120.0;
constexpr std::uint32_t kUntouched = 0x5A5A5A5A;

using Drawing = std::function<void(GraphicsContext &)>;

/// Makes up things to draw; the same seed makes up the same ones.
class Imagination {
public:
    explicit Imagination(unsigned seed) : random_(seed) {}

    [[nodiscard]] std::vector<Drawing> document()
    {
        std::vector<Drawing> drawings(12);
        std::generate(drawings.begin(), drawings.end(), [this] { return drawing(); });
        drawings.emplace_back([](GraphicsContext &context) {
            context.setFillColor({0.9, 0.95, 1.0, 0.8});
            context.fillRect(Rect::make(-1.0, -1.0, kWidth + 2.0, kHeight + 2.0),
                             CompositingOperation::destinationOver);
        });
        return drawings;
    }
    [[nodiscard]] PixelRect damage(const PixelGrid &grid)
    {
        return PixelRect{whole(0, grid.pixelWidth() - 2), whole(0, grid.pixelHeight() - 2),
                         whole(1, 60), whole(1, 60)}
            .intersection({0, 0, grid.pixelWidth(), grid.pixelHeight()});
    }

private:
    int whole(int low, int high) { return std::uniform_int_distribution<>(low, high)(random_); }
    double real(double low, double high)
    {
        return std::uniform_real_distribution<>(low, high)(random_);
    }
    Point point() { return {real(-20.0, kWidth + 20.0), real(-20.0, kHeight + 20.0)}; }
    Rect rect() { return {point(), {real(1.0, 80.0), real(1.0, 80.0)}}; }
    Color color()
    {
        return {real(0.0, 1.0), real(0.0, 1.0), real(0.0, 1.0), whole(0, 1) == 0 ? 0.5 : 1.0};
    }

    Path path()
    {
        Path path;
        Point at = point();
        path.moveTo(at);
        for (int i = whole(1, 40); i > 0; --i) {
            at = at + Point{real(-12.0, 12.0), real(-12.0, 12.0)};
            const int kind = whole(0, 30);
            if (kind == 0) {
                path.close();
            } else if (kind == 1) {
                at = point();
                path.moveTo(at);
            } else if (kind < 5) {
                path.quadCurveTo(point(), at);
            } else if (kind < 8) {
                path.curveTo(point(), point(), at);
            } else {
                path.lineTo(kind == 8 ? path.currentPoint() : at);
            }
        }
        return path;
    }

    Drawing stroke()
    {
        const double width = whole(0, 4) == 0 ? real(0.2, 1.2) : real(1.0, 30.0);
        const auto cap = static_cast<LineCap>(whole(0, 2));
        const auto join = static_cast<LineJoin>(whole(0, 2));
        const std::vector<double> dash = whole(0, 3) == 0
                                             ? std::vector<double>{real(1.0, 9.0), real(1.0, 9.0)}
                                             : std::vector<double>{};
        const BlendMode mode = whole(0, 3) == 0 ? BlendMode::clear : BlendMode::normal;
        return [=, ink = color(), line = path(), phase = real(-20.0, 20.0)](GraphicsContext &c) {
            c.setLineWidth(width);
            c.setLineCap(cap);
            c.setLineJoin(join);
            c.setLineDash(phase, dash);
            c.setBlendMode(mode);
            c.setStrokeColor(ink);
            c.strokePath(line);
        };
    }

    Drawing picture()
    {
        auto image = std::make_shared<Image>(whole(1, 30), whole(1, 30));
        for (int i = 0; i < image->width() * image->height(); ++i) {
            const auto alpha = static_cast<std::uint32_t>(whole(0, 255));
            image->data()[i] = alpha << 24U | (alpha / 2) << 16U | alpha / 3;
        }
        const bool scaled = whole(0, 2) != 0;
        Rect place = rect();
        if (!scaled) {
            place.size = image->size();
        }
        return [=, fraction = real(0.3, 1.0)](GraphicsContext &context) {
            context.drawImage(image, place, CompositingOperation::sourceOver, fraction);
        };
    }

    Drawing drawing()
    {
        switch (whole(0, 9)) {
        case 0:
            return picture();
        case 1:
            return [ink = color(), place = rect(), size = real(6.0, 40.0)](GraphicsContext &c) {
                c.setBlendMode(BlendMode::normal);
                c.setFillColor(ink);
                c.drawText(u"Text that wraps", place, {"Helvetica", size, false},
                           TextAlignment::left);
            };
        case 2:
            return [ink = color(), shape = path()](GraphicsContext &context) {
                context.setBlendMode(BlendMode::multiply);
                context.setFillColor(ink);
                context.fillPath(shape);
            };
        case 3:
            return [ink = color(), place = rect()](GraphicsContext &context) {
                context.setFillColor(ink);
                context.fillRect(place, CompositingOperation::sourceAtop);
            };
        case 4:
            return [inner = stroke(), other = picture(), alpha = real(0.0, 1.0)](auto &context) {
                context.beginLayer(alpha);
                inner(context);
                other(context);
                context.endLayer();
            };
        case 5:
            return [inner = stroke(), other = picture(), text = rect(), around = point(),
                    narrow = rect(), angle = real(-3.0, 3.0)](auto &context) {
                context.saveState();
                context.concatenate(AffineTransform::translation(around.x, around.y));
                context.concatenate(AffineTransform::rotation(angle));
                context.concatenate(AffineTransform::translation(-around.x, -around.y));
                context.clipToRect(narrow);
                inner(context);
                other(context);
                context.setBlendMode(BlendMode::normal);
                context.drawText(u"Turned", text, {"Helvetica", 20.0, true}, TextAlignment::center);
                context.restoreState();
            };
        default:
            return stroke();
        }
    }

    std::mt19937 random_;
};

void paint(Surface &surface, const std::vector<Drawing> &document,
           std::optional<PixelRect> clip = std::nullopt)
{
    surface.paint(
        [&](GraphicsContext &context) {
            context.fillRect(Rect::make(-1.0, -1.0, kWidth + 2.0, kHeight + 2.0),
                             CompositingOperation::clear);
            for (const Drawing &drawing : document) {
                drawing(context);
            }
        },
        clip);
}

bool isInside(const PixelRect &rect, int x, int y)
{
    return x >= rect.x && x < rect.x + rect.width && y >= rect.y && y < rect.y + rect.height;
}

class PaintingUnderAClip : public testing::TestWithParam<double> {};

TEST_P(PaintingUnderAClip, EqualsPaintingWholeForRandomDocuments)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        Imagination imagination(seed);
        const std::vector<Drawing> document = imagination.document();
        Surface whole(kWidth, kHeight, GetParam());
        paint(whole, document);

        for (int round = 0; round < 6; ++round) {
            Surface part(kWidth, kHeight, GetParam());
            part.fill(kUntouched);
            const PixelRect damage = imagination.damage(part.grid());
            paint(part, document, damage);

            for (int y = 0; y < part.image().height(); ++y) {
                for (int x = 0; x < part.image().width(); ++x) {
                    const std::uint32_t expected =
                        isInside(damage, x, y) ? whole.at(x, y) : kUntouched;
                    ASSERT_EQ(part.at(x, y), expected)
                        << "document " << seed << ", round " << round << ", pixel " << x << ", "
                        << y << std::hex << ": " << part.at(x, y) << " for " << expected;
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, PaintingUnderAClip, testing::Values(1.0, 1.25, 1.5, 2.0));

TEST(Painting, LeavesInkOnEveryRandomDocument)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        Surface surface(kWidth, kHeight);
        paint(surface, Imagination(seed).document());

        int inked = 0;
        for (int i = 0; i < surface.image().width() * surface.image().height(); ++i) {
            inked += surface.image().data()[i] != surface.at(0, 0) ? 1 : 0;
        }
        EXPECT_GT(inked, 200) << "document " << seed;
    }
}

} // namespace
} // namespace orv::platform

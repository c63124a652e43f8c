#pragma once

#include "platform/raster/PixelRect.h"
#include "platform/values/Color.h"
#include "platform/values/Image.h"
#include "platform/values/Path.h"

#include <optional>
#include <string>
#include <vector>

namespace orv::bench {

/// A stroke with round ends and joins, in device pixels with y down.
struct BenchStroke {
    platform::Path path;
    double width = 4.0;
    platform::Color color = platform::Color::black();
    std::vector<double> dashes;
};

/// One way to paint strokes: a painter of the field, or ours.
class Engine {
public:
    virtual ~Engine() = default;

    [[nodiscard]] virtual std::string name() const = 0;
    /// Paints the strokes one over another within `clip`, or everywhere.
    virtual void paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
                       const std::optional<platform::PixelRect> &clip) const = 0;
};

/// The toolkit's painter, with `drawPath` and a pen.
class PainterEngine final : public Engine {
public:
    [[nodiscard]] std::string name() const override { return "QPainter"; }
    void paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
               const std::optional<platform::PixelRect> &clip) const override;
};

/// The anti-grain library: an outline for each stroke, filled by area and cover.
class AggEngine final : public Engine {
public:
    [[nodiscard]] std::string name() const override { return "AGG"; }
    void paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
               const std::optional<platform::PixelRect> &clip) const override;
};

/// The coverage mask behind `RasterContext`.
class MaskEngine final : public Engine {
public:
    [[nodiscard]] std::string name() const override { return "mask"; }
    void paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
               const std::optional<platform::PixelRect> &clip) const override;
};

/// The same on all processors, as a whole repaint does it. It knows no clip.
class BandsEngine final : public Engine {
public:
    [[nodiscard]] std::string name() const override { return "mask in bands"; }
    void paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
               const std::optional<platform::PixelRect> &clip) const override;
};

} // namespace orv::bench

#pragma once

#include "platform/foundation/TextConversion.h"
#include "platform/ports/GraphicsContext.h"

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <vector>

namespace orv::test {

/// Turns drawing into lines of text: one an operation, in order.
class RecordingContext : public platform::GraphicsContext {
public:
    std::vector<std::string> lines;

    void saveState() override { lines.emplace_back("save"); }
    void restoreState() override { lines.emplace_back("restore"); }
    void concatenate(const platform::AffineTransform &t) override
    {
        add("transform {} {} {} {} {} {}", t.a, t.b, t.c, t.d, t.tx, t.ty);
    }
    void clipToRect(const platform::Rect &rect) override { add("clip {}", text(rect)); }
    void setBlendMode(platform::BlendMode mode) override
    {
        add("blend {}", static_cast<int>(mode));
    }
    void setLineWidth(double width) override { add("width {}", width); }
    void setLineCap(platform::LineCap cap) override { add("cap {}", static_cast<int>(cap)); }
    void setLineJoin(platform::LineJoin join) override { add("join {}", static_cast<int>(join)); }
    void setLineDash(double phase, const std::vector<double> &lengths) override
    {
        std::string line = fmt::format("dash {}", phase);
        for (const double length : lengths) {
            line += fmt::format(" {}", length);
        }
        lines.push_back(line);
    }
    void setStrokeColor(const platform::Color &color) override
    {
        add("stroke color {}", text(color));
    }
    void setFillColor(const platform::Color &color) override { add("fill color {}", text(color)); }
    void strokePath(const platform::Path &path) override { add("stroke {}", text(path)); }
    void fillPath(const platform::Path &path) override { add("fill {}", text(path)); }
    void fillRect(const platform::Rect &rect, platform::CompositingOperation operation) override
    {
        add("fill rect {} operation {}", text(rect), static_cast<int>(operation));
    }
    void fillPattern(const platform::Rect &rect, const platform::ImagePtr &image,
                     platform::CompositingOperation operation) override
    {
        add("pattern {}x{} in {} operation {}", image->width(), image->height(), text(rect),
            static_cast<int>(operation));
    }
    void drawImage(const platform::ImagePtr &image, const platform::Rect &rect,
                   platform::CompositingOperation operation, double fraction) override
    {
        add("image {}x{} in {} operation {} fraction {}", image->width(), image->height(),
            text(rect), static_cast<int>(operation), fraction);
    }
    void drawText(std::u16string_view words, const platform::Rect &rect, const platform::Font &font,
                  platform::TextAlignment alignment) override
    {
        add("text \"{}\" in {} font {} {} alignment {}", platform::utf8FromUtf16(words), text(rect),
            font.family, font.size, static_cast<int>(alignment));
        textPosition_ = {rect.origin.x + measureText(words, font).width, rect.origin.y};
    }
    platform::Size measureText(std::u16string_view words, const platform::Font &font) override
    {
        return {static_cast<double>(words.size()) * font.size / 2.0, font.size};
    }
    /// Transforms are not applied to it.
    void setTextPosition(platform::Point position) override
    {
        add("text position {} {}", position.x, position.y);
        textPosition_ = position;
    }
    platform::Point textPosition() const override { return textPosition_; }
    void beginLayer(double alpha) override { add("layer {}", alpha); }
    void endLayer() override { lines.emplace_back("end layer"); }

    static std::string text(const platform::Rect &r)
    {
        return fmt::format("[{} {} {} {}]", r.origin.x, r.origin.y, r.size.width, r.size.height);
    }
    static std::string text(const platform::Color &c)
    {
        return fmt::format("{} {} {} {}", c.red(), c.greenComponent(), c.blue(), c.alpha());
    }
    static std::string text(const platform::Path &path)
    {
        std::string out;
        path.forEach([&out](const platform::Path::Element &element) {
            out += fmt::format("{}{}", out.empty() ? "" : " ", static_cast<int>(element.type));
            for (int i = 0; i < platform::pointCount(element.type); ++i) {
                out += fmt::format("({},{})", element.points[i].x, element.points[i].y);
            }
        });
        return out;
    }

private:
    template <class... Values> void add(std::string_view format, const Values &...values)
    {
        lines.push_back(fmt::format(fmt::runtime(format), values...));
    }

    platform::Point textPosition_;
};

} // namespace orv::test

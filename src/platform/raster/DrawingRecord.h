#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/raster/PainterPaths.h"
#include "platform/raster/PixelRect.h"

#include <cstddef>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace orv::platform {

/// The calls that a `GraphicsContext` has got, as values.
namespace drawing {

struct Save {};
struct Restore {};
struct Concatenate {
    AffineTransform transform;
};
struct Clip {
    Rect rect;
};
struct SetBlendMode {
    BlendMode mode;
};
struct SetLineWidth {
    double width;
};
struct SetLineCap {
    LineCap cap;
};
struct SetLineJoin {
    LineJoin join;
};
struct SetLineDash {
    double phase;
    std::vector<double> lengths;
};
struct SetStrokeColor {
    Color color;
};
struct SetFillColor {
    Color color;
};
struct BeginLayer {
    double alpha;
    friend bool operator==(const BeginLayer &, const BeginLayer &) = default;
};
struct EndLayer {
    friend bool operator==(const EndLayer &, const EndLayer &) = default;
};
struct StrokePath {
    Path path;
    friend bool operator==(const StrokePath &a, const StrokePath &b);
};
struct FillPath {
    Path path;
    friend bool operator==(const FillPath &a, const FillPath &b);
};
struct FillRect {
    Rect rect;
    CompositingOperation operation;
    friend bool operator==(const FillRect &, const FillRect &) = default;
};
struct DrawImage {
    ImagePtr image;
    Rect rect;
    CompositingOperation operation;
    double fraction;
    friend bool operator==(const DrawImage &, const DrawImage &) = default;
};
struct FillPattern {
    Rect rect;
    ImagePtr image;
    CompositingOperation operation;
    friend bool operator==(const FillPattern &, const FillPattern &) = default;
};
struct DrawText {
    std::u16string text;
    Rect rect;
    Font font;
    TextAlignment alignment;
    friend bool operator==(const DrawText &, const DrawText &) = default;
};
/// The place of a list whose picture somebody else keeps.
struct List {
    friend bool operator==(const List &, const List &) = default;
};

using Call =
    std::variant<Save, Restore, Concatenate, Clip, SetBlendMode, SetLineWidth, SetLineCap,
                 SetLineJoin, SetLineDash, SetStrokeColor, SetFillColor, BeginLayer, EndLayer,
                 StrokePath, FillPath, FillRect, DrawImage, FillPattern, DrawText, List>;

/// What was clipped to, each in the coordinates of its time. Copies share all but what is added
/// later.
class Clips {
public:
    void add(const AffineTransform &toDevice, const Rect &rect)
    {
        innermost_ = std::make_shared<const Link>(Link{toDevice, rect, innermost_});
    }
    friend bool operator==(const Clips &a, const Clips &b);

private:
    struct Link {
        AffineTransform toDevice;
        Rect rect;
        std::shared_ptr<const Link> outer;
    };
    std::shared_ptr<const Link> innermost_;
};

/// All that decides what a call that paints leaves on the surface, beside the call itself.
struct State {
    AffineTransform toDevice;
    Clips clips;
    /// A box in device pixels that holds all that may be painted.
    PixelRect visible;
    BlendMode blendMode = BlendMode::normal;
    StrokeStyle stroke;
    Color strokeColor = Color::black();
    Color fillColor = Color::black();
    friend bool operator==(const State &, const State &) = default;
};

/// A call that paints, or that begins or ends a layer, with the state that it met.
struct Mark {
    /// Which of the calls it is.
    std::size_t call = 0;
    State state;
};

} // namespace drawing

/// A piece of drawing that can be drawn again, under another clip, and compared with another one.
struct DrawingRecord {
    std::vector<drawing::Call> calls;
    std::vector<drawing::Mark> marks;

    /// The call that a mark stands for.
    [[nodiscard]] const drawing::Call &at(const drawing::Mark &mark) const
    {
        return calls[mark.call];
    }
    /// Keeps the memory for other calls.
    void clear()
    {
        calls.clear();
        marks.clear();
    }
};

/// Makes the calls from `first` up to `last` again. A list paints nothing.
void replay(const DrawingRecord &record, std::size_t first, std::size_t last,
            GraphicsContext &context);

} // namespace orv::platform

#pragma once

#include "platform/ports/DrawnList.h"
#include "platform/values/Color.h"
#include "platform/values/Font.h"
#include "platform/values/Geometry.h"
#include "platform/values/Image.h"
#include "platform/values/Path.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace orv::platform {

/// How new pixels mix with those below, with the numbers that archives carry.
enum class BlendMode : std::int32_t {
    normal = 0,
    multiply = 1,
    screen = 2,
    overlay = 3,
    darken = 4,
    lighten = 5,
    colorDodge = 6,
    colorBurn = 7,
    softLight = 8,
    hardLight = 9,
    difference = 10,
    exclusion = 11,
    clear = 16,
    copy = 17,
    sourceIn = 18,
    sourceOut = 19,
    sourceAtop = 20,
    destinationOver = 21,
    destinationIn = 22,
    destinationOut = 23,
    destinationAtop = 24,
    exclusiveOr = 25,
    plusLighter = 27,
};

/// How a filled rectangle or a picture is put onto what is there.
enum class CompositingOperation : std::int32_t {
    clear = 0,
    copy = 1,
    sourceOver = 2,
    sourceIn = 3,
    sourceOut = 4,
    sourceAtop = 5,
    destinationOver = 6,
    destinationIn = 7,
    destinationOut = 8,
    destinationAtop = 9,
    exclusiveOr = 10,
    plusLighter = 13,
};

enum class LineCap : std::int32_t { butt = 0, round = 1, square = 2 };
enum class LineJoin : std::int32_t { miter = 0, round = 1, bevel = 2 };

/// The list of what the logic draws with; rasterisers and recorders stand behind it.
///
/// A stack of states: what is set stays set until the state is restored.
///
/// Units    points of the surface that is painted, doubles; origin bottom left, y up. Scale factors
///          of displays are applied below this interface.
/// Thread   the thread that made the context.
/// Fails    nothing throws; a rectangle or a path without area paints nothing.
class GraphicsContext {
public:
    virtual ~GraphicsContext() = default;

    virtual void saveState() = 0;
    /// Restoring more often than saving does nothing.
    virtual void restoreState() = 0;

    /// Puts `transform` before the present one: it is applied to coordinates first.
    virtual void concatenate(const AffineTransform &transform) = 0;
    /// Narrows the clip to `rect` (in present coordinates).
    virtual void clipToRect(const Rect &rect) = 0;

    virtual void setBlendMode(BlendMode mode) = 0;
    virtual void setLineWidth(double width) = 0;
    virtual void setLineCap(LineCap cap) = 0;
    virtual void setLineJoin(LineJoin join) = 0;
    /// Lengths on, off, on, … in points; an empty list is a solid line.
    virtual void setLineDash(double phase, const std::vector<double> &lengths) = 0;
    virtual void setStrokeColor(const Color &color) = 0;
    virtual void setFillColor(const Color &color) = 0;

    /// One stroke of the whole path: where it crosses itself it does not add up.
    virtual void strokePath(const Path &path) = 0;
    /// Winding rule.
    virtual void fillPath(const Path &path) = 0;
    /// With the fill colour; the operation replaces the blend mode for this call.
    virtual void fillRect(const Rect &rect, CompositingOperation operation) = 0;
    /// The whole picture, scaled into `rect`, its alpha times `fraction`.
    virtual void drawImage(const ImagePtr &image, const Rect &rect, CompositingOperation operation,
                           double fraction) = 0;

    /// Fills `rect` with copies of the picture, the first of them at the origin of present
    /// coordinates, one point for each pixel.
    virtual void fillPattern(const Rect &rect, const ImagePtr &image,
                             CompositingOperation operation) = 0;

    /// Lines top down from the upper edge of `rect`, wrapped at its width, clipped to it, in the
    /// fill colour. The text position is then where the baseline of the last line ends.
    virtual void drawText(std::u16string_view text, const Rect &rect, const Font &font,
                          TextAlignment alignment) = 0;
    /// Width and height of the text without wrapping.
    [[nodiscard]] virtual Size measureText(std::u16string_view text, const Font &font) = 0;

    /// Where text goes on, in present coordinates. It belongs to no state: what is restored leaves
    /// it at the same place of the surface.
    virtual void setTextPosition(Point position) = 0;
    [[nodiscard]] virtual Point textPosition() const = 0;

    /// Until `endLayer`, painting goes to a transparent layer of its own, which then comes down as
    /// one picture with this alpha. Layers nest; each is ended in the state it was begun in.
    virtual void beginLayer(double alpha) = 0;
    virtual void endLayer() = 0;

    /// Draws the things from the first to the last. A context that shows one frame after another
    /// paints only what has changed among them; what is seen is the same.
    virtual void drawList(const DrawnList &list)
    {
        for (std::size_t index = 0; index < list.size(); ++index) {
            list.draw(index, *this);
        }
    }
};

} // namespace orv::platform

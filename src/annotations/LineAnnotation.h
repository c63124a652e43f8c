#pragma once

#include "annotations/ShapeAnnotation.h"

namespace orv {

/// A straight line from the press to the release, with no arrow head, one or two.
///
/// Styles   1 and 98: one head, at the end of the drag. 2: two heads. 3: plain and dashed. All
///          others: plain.
class LineAnnotation : public ShapeAnnotation {
public:
    LineAnnotation() = default;
    /// The drag and the style come back too; a file without a style is a plain line.
    explicit LineAnnotation(platform::KeyedUnarchiver &coder);

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void encodeWithCoder(platform::KeyedArchiver &coder) const override;

    /// Not before a dashed one was drawn, for that turns its dashes on.
    [[nodiscard]] bool isSettled() const override;

    /// A line too short for its heads is not drawn at all.
    void draw(platform::GraphicsContext &context) override;

    /// From the tip of an arrow head to its base, in points.
    [[nodiscard]] float getArrowLen() const;
    /// False, with nothing drawn, when the line is not longer than the head.
    bool drawSingleArrow(platform::GraphicsContext &context) const;
    /// False, with nothing drawn, when the line is not longer than both heads.
    bool drawDoubleArrow(platform::GraphicsContext &context) const;
    /// Neither saves nor restores the state: its settings stay, and what comes next sets its own.
    void drawLine(platform::GraphicsContext &context) const;

private:
    /// Both lie along the line: from a head's base to its tip, and as far as half its base is wide.
    struct ArrowHead {
        platform::Point along;
        platform::Point half;
    };

    [[nodiscard]] platform::Point dragEnd() const;
    [[nodiscard]] float lineLength() const;
    [[nodiscard]] ArrowHead arrowHead() const;
    void drawShaft(platform::GraphicsContext &context, platform::Point from,
                   platform::Point to) const;
    /// Outline and inside in the annotation's colour.
    void setHeadColor(platform::GraphicsContext &context) const;
    /// The corners of the base lie at `half`, turned a quarter to the left and to the right.
    static void drawHead(platform::GraphicsContext &context, platform::Point tip,
                         platform::Point base, platform::Point half);
};

} // namespace orv

#include "annotations/TextAnnotation.h"

#include <cmath>

namespace orv {

namespace {

using platform::Point;

constexpr double kStrokeWidth = 1.0;
/// Between the end of the text and the caret, in points.
constexpr double kCaretGap = 2.0;
/// How far the caret hangs below the baseline, in sizes of the text.
constexpr double kCaretDepth = 0.125;

} // namespace

void TextAnnotation::draw(platform::GraphicsContext &context)
{
    context.saveState();
    updateLineDash(context, dashMode());
    context.setBlendMode(blendMode());
    context.setLineWidth(kStrokeWidth);
    context.setFillColor(color());
    context.setStrokeColor(color());
    drawLines(context);
    if (isActive() && caretVisible_) {
        drawCaret(context);
    }
    context.restoreState();
}

void TextAnnotation::drawLines(platform::GraphicsContext &context) const
{
    const double angle = textAngle_;
    Point position = textOrigin_;
    for (const std::u16string &line : lines_) {
        if (line.empty()) {
            context.setTextPosition(position);
        } else {
            drawUnicodeText(context, position, line);
        }
        position.x += std::sin(angle) * lineHeight_;
        position.y -= std::cos(angle) * lineHeight_;
    }
}

platform::Size TextAnnotation::drawUnicodeText(platform::GraphicsContext &context, Point position,
                                               std::u16string_view string) const
{
    const platform::Font font{"Helvetica", annotationSize()};
    const platform::Rect rect{position, context.measureText(string, font)};
    context.saveState();
    if (textAngle_ != 0.0F) {
        const Point middle = rect.center();
        context.concatenate(platform::AffineTransform::translation(-middle.x, -middle.y)
                                .then(platform::AffineTransform::rotation(textAngle_))
                                .then(platform::AffineTransform::translation(middle.x, middle.y)));
    }
    context.drawText(string, rect, font, platform::TextAlignment::natural);
    context.restoreState();
    return rect.size;
}

void TextAnnotation::drawCaret(platform::GraphicsContext &context) const
{
    const double size = annotationSize();
    const double along = std::cos(static_cast<double>(textAngle_));
    const double up = std::sin(static_cast<double>(textAngle_));
    Point start = context.textPosition();
    if (!lines_.back().empty()) {
        start = start + Point{kCaretGap * along, kCaretGap * up};
    }
    start = start + Point{kCaretDepth * size * up, -kCaretDepth * size * along};
    platform::Path caret;
    caret.moveTo(start);
    caret.lineTo(start + Point{-size * up, size * along});
    context.setStrokeColor({0.0, 0.0, 0.0, 1.0});
    context.strokePath(caret);
}

} // namespace orv

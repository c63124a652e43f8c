#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/values/Geometry.h"

#include <string>
#include <string_view>

/// What the drawn backgrounds of a page look like.
///
/// Units    points of the page, origin bottom left, y up. `size` is that of the whole page. Many
///          measures are single numbers (`float`), so that the drawings come out to the pixel as
///          saved pages show them.
namespace orv::backgrounds {

/// Two circles side by side that overlap; they grow with the page, their lines do not.
void drawVenn2(platform::GraphicsContext &context, platform::Size size);
/// Three circles round the centre, one above two; they grow with the page, their lines do not.
void drawVenn3(platform::GraphicsContext &context, platform::Size size);
/// Two axes with arrow heads and ticks; only how many ticks there are depends on the page.
void drawQuardrant(platform::GraphicsContext &context, platform::Size size);
/// Three columns below a band with the letters K, W and L; all of it grows with the page.
void drawKWL(platform::GraphicsContext &context, platform::Size size);

/// A line with a head at both ends, in the present stroke colour, heads in the colour of the
/// charts. False, and nothing is drawn, when both heads would not fit.
bool drawDoubleArrow(platform::GraphicsContext &context, platform::Point start,
                     platform::Point end);
/// One line of text in the middle of `area`, whose lower right corner is `point`. A size of 0 takes
/// the largest that fits; when none fits, nothing is drawn.
void drawKWLText(platform::GraphicsContext &context, std::u16string_view text,
                 platform::Point point, platform::Size area, float textSize);
/// The last whole size, up to 400, before the first at which the bold face does not fit.
[[nodiscard]] float fontSizeForAreaSize(platform::GraphicsContext &context, platform::Size area,
                                        std::u16string_view text, const std::string &fontName);

[[nodiscard]] platform::Rect getImageFrame(platform::Size size);
[[nodiscard]] platform::Point getImageCenterPoint(platform::Size size);
/// How much larger than 1024 by 768 a page is, by its shorter side.
[[nodiscard]] float getScale(platform::Size size);
/// The shorter side.
[[nodiscard]] float getSizeMin(platform::Size size);
/// The left or the right end of a line of this length round `center`.
[[nodiscard]] platform::Point getAxisXPoint(bool left, platform::Point center, float length);
/// The lower or the upper end of a line of this length round `center`.
[[nodiscard]] platform::Point getAxisYPoint(bool lower, platform::Point center, float length);

} // namespace orv::backgrounds

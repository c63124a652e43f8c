#include "session/ClientPoint.h"

#include <cmath>

namespace orv {

using platform::Point;
using platform::Rect;
using platform::Size;

Size ClientPicture::fittedSize() const
{
    if (dimension == scaled) {
        return scaled;
    }
    const double height = dimension.height * scaled.width / dimension.width;
    if (height > scaled.height) {
        return {dimension.width * scaled.height / dimension.height, scaled.height};
    }
    return {scaled.width, height};
}

Size ClientPicture::GetBlankBorderSize(Size fitted, Size org)
{
    if (fitted == org || fitted.width == org.width) {
        return {};
    }
    return {std::round(static_cast<float>((org.width - fitted.width) / 2.0)), 0.0};
}

Point ClientPicture::scaleMouseLocation(Point location, const Rect &displayBounds) const
{
    const Size fitted = fittedSize();
    if (dimension == Size{} && fitted == Size{}) {
        return location;
    }
    const Size border = GetBlankBorderSize(fitted, scaled);
    return {(location.x - border.width) / fitted.width * displayBounds.size.width +
                displayBounds.origin.x,
            (location.y - border.height) / fitted.height * displayBounds.size.height +
                displayBounds.origin.y};
}

} // namespace orv

#include "platform/virtual/VirtualDesktop.h"

#include "platform/foundation/Exception.h"
#include "platform/raster/Pictures.h"
#include "platform/raster/RasterContext.h"
#include "platform/virtual/VirtualWindowServer.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <vector>

namespace orv::platform {

namespace {

bool isHexColor(const std::string &text)
{
    return text.size() == 7 && text.front() == '#' &&
           std::all_of(text.begin() + 1, text.end(),
                       [](unsigned char c) { return std::isxdigit(c) != 0; });
}

} // namespace

VirtualDesktop::VirtualDesktop(const Displays &displays, const VirtualWindowServer &windows,
                               const std::string &desktop)
    : displays_(displays), windows_(windows)
{
    setDesktop(desktop);
}

void VirtualDesktop::setDesktop(const std::string &desktop)
{
    if (isHexColor(desktop)) {
        color_ = Color::colorFromHexValue(desktop);
        picture_ = nullptr;
        return;
    }
    ImagePtr picture = readPicture(desktop);
    if (!picture) {
        throw Exception("the desktop is neither a colour as #RRGGBB nor a picture that can be "
                        "read: \"" +
                        desktop + "\"");
    }
    picture_ = std::move(picture);
}

ImagePtr VirtualDesktop::composePicture(DisplayID display) const
{
    const std::optional<Screen> screen = displays_.screen(display);
    if (!screen) {
        return nullptr;
    }
    const PixelGrid grid{screen->frame.size, screen->scale};
    auto composed = std::make_shared<Image>(grid.pixelWidth(), grid.pixelHeight());
    RasterContext context(*composed, grid);
    const Point origin = screen->frame.origin;
    context.concatenate(AffineTransform::translation(-origin.x, -origin.y));

    context.setFillColor(color_);
    context.fillRect(screen->frame.insetBy(-1.0, -1.0), CompositingOperation::copy);
    context.drawImage(picture_, screen->frame, CompositingOperation::copy, 1.0);
    std::vector<VirtualWindowSurface *> rearFirst = windows_.surfaces();
    std::reverse(rearFirst.begin(), rearFirst.end());
    for (const VirtualWindowSurface *surface : rearFirst) {
        if (surface->isVisible()) {
            context.drawImage(surface->contents(), surface->frame(),
                              CompositingOperation::sourceOver, surface->alpha());
        }
    }
    return composed;
}

} // namespace orv::platform

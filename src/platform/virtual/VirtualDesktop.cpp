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
    return screen ? compose(screen->frame, screen->scale,
                            [](const VirtualWindowSurface &) { return true; })
                  : nullptr;
}

ImagePtr VirtualDesktop::compose(const Rect &area, double scale, const WindowFilter &isShown) const
{
    const PixelGrid grid{area.size, scale};
    if (grid.pixelWidth() <= 0 || grid.pixelHeight() <= 0) {
        return nullptr;
    }
    auto composed = std::make_shared<Image>(grid.pixelWidth(), grid.pixelHeight());
    RasterContext context(*composed, grid);
    context.concatenate(AffineTransform::translation(-area.origin.x, -area.origin.y));
    context.setFillColor(Color::black());
    context.fillRect(area.insetBy(-1.0, -1.0), CompositingOperation::copy);
    for (const Screen &screen : displays_.screens()) {
        context.saveState();
        context.clipToRect(screen.frame);
        context.setFillColor(color_);
        context.fillRect(screen.frame.insetBy(-1.0, -1.0), CompositingOperation::copy);
        context.drawImage(picture_, screen.frame, CompositingOperation::copy, 1.0);
        context.restoreState();
    }
    std::vector<VirtualWindowSurface *> rearFirst = windows_.surfaces();
    std::reverse(rearFirst.begin(), rearFirst.end());
    for (const VirtualWindowSurface *surface : rearFirst) {
        if (surface->isVisible() && isShown(*surface)) {
            context.drawImage(surface->contents(), surface->frame(),
                              CompositingOperation::sourceOver, surface->alpha());
        }
    }
    return composed;
}

} // namespace orv::platform

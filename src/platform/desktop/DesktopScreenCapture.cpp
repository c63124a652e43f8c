#include "platform/desktop/DesktopScreenCapture.h"

#include "platform/desktop/DesktopDisplays.h"
#include "platform/desktop/DesktopWindowServer.h"
#include "platform/desktop/DesktopWindowSurface.h"
#include "platform/desktop/RootBackground.h"
#include "platform/raster/PixelRect.h"

#include <xcb/composite.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <memory>
#include <utility>

namespace orv::platform {

namespace {

/// The first version in which a window's pixmap has a name.
constexpr std::uint32_t kCompositeMinor = 2;
constexpr double kMaxPixelsASide = 32767.0;
/// Any place on an X screen is nearer, in pixels.
constexpr double kFarthest = 1 << 24;
constexpr std::uint32_t kBlack = 0;
constexpr double kFullOpacity = 255.0;

bool redirect(const XConnection &x)
{
    const auto *extension = xcb_get_extension_data(x.get(), &xcb_composite_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const XReply<xcb_composite_query_version_reply_t> version(xcb_composite_query_version_reply(
        x.get(),
        xcb_composite_query_version(x.get(), XCB_COMPOSITE_MAJOR_VERSION,
                                    XCB_COMPOSITE_MINOR_VERSION),
        nullptr));
    if (!version || (version->major_version == 0 && version->minor_version < kCompositeMinor)) {
        return false;
    }
    const XReply<xcb_generic_error_t> refusal(
        xcb_request_check(x.get(), xcb_composite_redirect_subwindows_checked(
                                       x.get(), x.root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC)));
    return !refusal;
}

ScreenLayer layerOf(const DesktopWindowSurface &surface)
{
    ScreenLayer layer;
    layer.frame = surface.pictureFrame();
    layer.shape = layer.frame;
    layer.hasAlpha = true;
    layer.opacity = static_cast<std::uint32_t>(std::lround(surface.alpha() * kFullOpacity));
    layer.picture = &surface.picture();
    return layer;
}

} // namespace

DesktopScreenCapture::DesktopScreenCapture(const XConnection &x, DesktopDisplays &displays,
                                           DesktopWindowServer &windows)
    : x_(x), displays_(displays), windows_(windows), isRedirected_(redirect(x)), reader_(x)
{
}

DesktopScreenCapture::~DesktopScreenCapture()
{
    if (isRedirected_) {
        xcb_composite_unredirect_subwindows(x_.get(), x_.root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
        x_.flush();
    }
}

std::optional<QRect> DesktopScreenCapture::pixelsOf(const Rect &rect) const
{
    const DeviceSpace space = displays_.deviceSpace();
    const Rect main = displays_.bounds(displays_.mainDisplayID());
    const auto isNear = [&](double place) { return std::abs(place) * space.scale <= kFarthest; };
    const bool isAddressable = isNear(rect.origin.x) && isNear(rect.origin.y) &&
                               rect.size.width * space.scale <= kMaxPixelsASide &&
                               rect.size.height * space.scale <= kMaxPixelsASide;
    if (rect.isEmpty() || main.isEmpty() || !isAddressable) {
        return std::nullopt;
    }
    const PixelGrid grid{rect.size, space.scale};
    const Rect upward{{rect.origin.x, main.size.height - rect.maxY()}, rect.size};
    return QRect(space.topLeft(upward), QSize(grid.pixelWidth(), grid.pixelHeight()));
}

QRegion DesktopScreenCapture::displayed() const
{
    const DeviceSpace space = displays_.deviceSpace();
    QRegion region;
    for (const Screen &screen : displays_.screens()) {
        const PixelGrid grid{screen.frame.size, space.scale};
        region += QRect(space.topLeft(screen.frame), QSize(grid.pixelWidth(), grid.pixelHeight()));
    }
    return region;
}

std::optional<std::vector<ScreenLayer>>
DesktopScreenCapture::layersBelow(int windowNumber, bool includingWindow, const QRect &area) const
{
    // Null for those that are not to be seen.
    std::map<xcb_window_t, const DesktopWindowSurface *> ours;
    xcb_window_t given = XCB_NONE;
    for (const DesktopWindowSurface *surface : windows_.shownSurfaces()) {
        const xcb_window_t topLevel = x_.topLevelOf(surface->nativeWindow());
        const bool isGiven = surface->windowNumber() == windowNumber;
        const bool isIncluded = given == XCB_NONE && (!isGiven || includingWindow);
        ours.emplace(topLevel, isIncluded ? surface : nullptr);
        given = isGiven ? topLevel : given;
    }
    std::vector<xcb_window_t> stack = x_.topLevels();
    const auto place = std::find(stack.begin(), stack.end(), given);
    if (place == stack.end()) {
        return std::nullopt;
    }
    stack.erase(std::next(place), stack.end());

    std::vector<xcb_window_t> others;
    std::copy_if(stack.begin(), stack.end(), std::back_inserter(others),
                 [&](xcb_window_t window) { return !ours.contains(window); });
    auto othersLayers = layersOf(x_, others, area, windows_.isBlended());
    std::vector<ScreenLayer> layers;
    for (const xcb_window_t window : stack) {
        const auto our = ours.find(window);
        const auto other = othersLayers.find(window);
        if (our != ours.end() && our->second != nullptr) {
            layers.push_back(layerOf(*our->second));
        } else if (other != othersLayers.end()) {
            layers.push_back(std::move(other->second));
        }
    }
    return layers;
}

bool DesktopScreenCapture::paint(const ScreenPicture &picture, const ScreenLayer &layer)
{
    if (layer.shape.isEmpty()) {
        return true;
    }
    LayerPixels pixels{nullptr, layer.frame, layer.hasAlpha, layer.opacity};
    if (layer.picture != nullptr) {
        pixels.first = layer.picture->data();
    } else {
        pixels.frame = layer.shape.boundingRect();
        pixels.first =
            reader_.read(layer.pixmap.id(), pixels.frame.translated(-layer.frame.topLeft()));
    }
    if (pixels.first == nullptr) {
        return false;
    }
    paintOver(picture, pixels, layer.shape);
    return true;
}

ImagePtr DesktopScreenCapture::capture(const Rect &rect, int windowNumber, bool includingWindow)
{
    const std::optional<QRect> area = pixelsOf(rect);
    if (!isRedirected_ || !area) {
        return nullptr;
    }
    windows_.displayIfNeeded();
    auto layers = layersBelow(windowNumber, includingWindow, *area);
    if (!layers) {
        return nullptr;
    }
    const QRegion seen = displayed() & *area;
    const QRegion open = withoutHiddenParts(*layers, seen);
    auto image = std::make_shared<Image>(area->width(), area->height());
    const ScreenPicture picture{*image, area->topLeft()};
    paintColor(picture, kBlack, QRegion(*area) - seen);
    const bool hasBackground =
        open.isEmpty() || paintRootBackground(x_, reader_, windows_.isBlended(), picture, open);
    const bool isWhole =
        hasBackground && std::all_of(layers->begin(), layers->end(), [&](const ScreenLayer &layer) {
            return paint(picture, layer);
        });
    return isWhole ? image : nullptr;
}

} // namespace orv::platform

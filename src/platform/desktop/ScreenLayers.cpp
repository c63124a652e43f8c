#include "platform/desktop/ScreenLayers.h"

#include "platform/desktop/WindowTraits.h"

#include <xcb/composite.h>
#include <xcb/shape.h>

#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace orv::platform {

namespace {

constexpr std::uint8_t kAlphaDepth = 32;
constexpr std::uint8_t kOpaqueDepth = 24;
constexpr double kFullOpacity = 255.0;

struct Place {
    xcb_window_t window = XCB_NONE;
    /// The outer top left corner.
    QPoint corner;
    int border = 0;
};

/// The windows that are shown and touch the area. All are asked before the first answer is awaited.
std::vector<Place> shownIn(const XConnection &x, const std::vector<xcb_window_t> &windows,
                           const QRect &area)
{
    struct Question {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
    };
    std::vector<Question> questions;
    questions.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        questions.push_back(
            {xcb_get_window_attributes(x.get(), window), xcb_get_geometry(x.get(), window)});
    }
    std::vector<Place> shown;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const XReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(x.get(), questions[i].attributes, nullptr));
        const XReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(x.get(), questions[i].geometry, nullptr));
        const bool isShown = attributes && geometry &&
                             attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT &&
                             attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        if (!isShown) {
            continue;
        }
        const int border = geometry->border_width;
        const QRect frame(geometry->x, geometry->y, geometry->width + 2 * border,
                          geometry->height + 2 * border);
        if (frame.intersects(area)) {
            shown.push_back({windows[i], frame.topLeft(), border});
        }
    }
    return shown;
}

struct LayerQuestion {
    xcb_pixmap_t pixmap;
    xcb_void_cookie_t naming;
    xcb_get_geometry_cookie_t size;
    xcb_shape_query_extents_cookie_t extents;
    xcb_shape_get_rectangles_cookie_t shape;
};

LayerQuestion ask(const XConnection &x, xcb_window_t window)
{
    const xcb_pixmap_t pixmap = xcb_generate_id(x.get());
    return {pixmap, xcb_composite_name_window_pixmap_checked(x.get(), window, pixmap),
            xcb_get_geometry(x.get(), pixmap), xcb_shape_query_extents(x.get(), window),
            xcb_shape_get_rectangles(x.get(), window, XCB_SHAPE_SK_BOUNDING)};
}

QRegion regionOf(const xcb_shape_get_rectangles_reply_t &shape, const QPoint &origin)
{
    const xcb_rectangle_t *rects = xcb_shape_get_rectangles_rectangles(&shape);
    const int count = xcb_shape_get_rectangles_rectangles_length(&shape);
    QRegion region;
    for (int i = 0; i < count; ++i) {
        region += QRect(origin.x() + rects[i].x, origin.y() + rects[i].y, rects[i].width,
                        rects[i].height);
    }
    return region;
}

/// Nothing for a window that is gone.
std::optional<ScreenLayer> layerFrom(const XConnection &x, const Place &place,
                                     const LayerQuestion &question)
{
    const XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(x.get(), question.size, nullptr));
    const XReply<xcb_shape_query_extents_reply_t> extents(
        xcb_shape_query_extents_reply(x.get(), question.extents, nullptr));
    const XReply<xcb_shape_get_rectangles_reply_t> shape(
        xcb_shape_get_rectangles_reply(x.get(), question.shape, nullptr));
    const XReply<xcb_generic_error_t> refusal(xcb_request_check(x.get(), question.naming));
    if (refusal) {
        return std::nullopt;
    }
    ScreenLayer layer;
    layer.pixmap = Pixmap(x, question.pixmap);
    const bool isRgb32 = size && (size->depth == kAlphaDepth || size->depth == kOpaqueDepth);
    if (!isRgb32 || !extents || !shape) {
        return std::nullopt;
    }
    layer.frame = QRect(place.corner, QSize(size->width, size->height));
    // A shape counts from the window's corner inside its border, its pixels begin outside of it.
    // As the shape of a window that has none, X servers leave out its far borders.
    layer.shape = extents->bounding_shaped != 0
                      ? regionOf(*shape, place.corner + QPoint(place.border, place.border))
                      : QRegion(layer.frame);
    layer.hasAlpha = size->depth == kAlphaDepth;
    return layer;
}

std::uint32_t opacityOf(const XConnection &x, xcb_window_t window)
{
    const auto &opacity = window_traits::opacity;
    const std::vector<std::uint32_t> own = x.numbers(window, opacity.name);
    const double part = own.empty() ? 1.0 : static_cast<double>(own.front()) / opacity.value;
    return static_cast<std::uint32_t>(std::lround(part * kFullOpacity));
}

} // namespace

std::map<xcb_window_t, ScreenLayer> layersOf(const XConnection &x,
                                             const std::vector<xcb_window_t> &windows,
                                             const QRect &area, bool isBlended)
{
    const std::vector<Place> places = shownIn(x, windows, area);
    std::vector<LayerQuestion> questions;
    questions.reserve(places.size());
    for (const Place &place : places) {
        questions.push_back(ask(x, place.window));
    }
    std::map<xcb_window_t, ScreenLayer> layers;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (auto layer = layerFrom(x, places[i], questions[i])) {
            if (isBlended) {
                layer->opacity = opacityOf(x, places[i].window);
            }
            layers.emplace(places[i].window, std::move(*layer));
        }
    }
    return layers;
}

QRegion withoutHiddenParts(std::vector<ScreenLayer> &layers, const QRegion &area)
{
    QRegion open = area;
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        layer->shape &= open & layer->frame;
        if (layer->hidesWhatLiesBelow()) {
            open -= layer->shape;
        }
    }
    return open;
}

} // namespace orv::platform

// The least that ink on the screen can cost: a transparent window over everything, and one line an
// event, sent at once. Prints "ready" when it is shown.

#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>

namespace {

constexpr std::uint8_t kDepth = 32;
constexpr std::uint32_t kInk = 0xFFFF0000;
constexpr std::uint32_t kLineWidth = 5;

std::optional<xcb_visualid_t> transparentVisual(const xcb_screen_t &screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        const auto visual = xcb_depth_visuals_iterator(depth.data);
        if (depth.data->depth == kDepth && visual.rem > 0) {
            return visual.data->visual_id;
        }
    }
    return std::nullopt;
}

xcb_window_t openWindow(xcb_connection_t *x, const xcb_screen_t &screen, xcb_visualid_t visual)
{
    const xcb_colormap_t colours = xcb_generate_id(x);
    xcb_create_colormap(x, XCB_COLORMAP_ALLOC_NONE, colours, screen.root, visual);
    const xcb_window_t window = xcb_generate_id(x);
    const std::array<std::uint32_t, 5> values{
        0, 0, 1,
        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
            XCB_EVENT_MASK_BUTTON_MOTION,
        colours};
    xcb_create_window(x, kDepth, window, screen.root, 0, 0, screen.width_in_pixels,
                      screen.height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                          XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());
    xcb_map_window(x, window);
    return window;
}

void draw(xcb_connection_t *x, xcb_window_t window, xcb_gcontext_t ink)
{
    std::array<xcb_point_t, 2> line{};
    bool isReady = false;
    while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{
        xcb_wait_for_event(x), &std::free}) {
        const auto type = event->response_type & 0x7FU;
        if (type == XCB_EXPOSE && !isReady) {
            isReady = true;
            std::cout << "ready" << std::endl;
        } else if (type == XCB_BUTTON_PRESS || type == XCB_MOTION_NOTIFY) {
            // Both events have the same layout.
            const auto *at = reinterpret_cast<const xcb_motion_notify_event_t *>(event.get());
            line[0] = line[1];
            line[1] = {at->event_x, at->event_y};
            if (type == XCB_MOTION_NOTIFY) {
                xcb_poly_line(x, XCB_COORD_MODE_ORIGIN, window, ink, 2, line.data());
                xcb_flush(x);
            }
        }
    }
}

} // namespace

int main()
{
    xcb_connection_t *x = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x) != 0) {
        std::cerr << "floor_client: no X server\n";
        return 1;
    }
    const xcb_screen_t &screen = *xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const auto visual = transparentVisual(screen);
    if (!visual) {
        std::cerr << "floor_client: the X server has no transparent windows\n";
        return 1;
    }
    const xcb_window_t window = openWindow(x, screen, *visual);
    const xcb_gcontext_t ink = xcb_generate_id(x);
    const std::array<std::uint32_t, 3> values{kInk, kLineWidth, XCB_CAP_STYLE_ROUND};
    xcb_create_gc(x, ink, window, XCB_GC_FOREGROUND | XCB_GC_LINE_WIDTH | XCB_GC_CAP_STYLE,
                  values.data());
    xcb_flush(x);
    draw(x, window, ink);
    xcb_disconnect(x);
    return 0;
}

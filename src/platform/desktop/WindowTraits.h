#pragma once

#include <Qt>

#include <cstdint>

namespace orv::platform::window_traits {

/// What makes a window of ours an overlay on X11, in one table.

/// Unmanaged: it stays above a full-screen application, never takes the keyboard by itself, and
/// works without a window manager.
constexpr Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::BypassWindowManagerHint;
/// Asks for the visual that a compositor blends.
constexpr int alphaBits = 8;
/// A fresh area of the window is transparent until pixels are put.
constexpr std::uint32_t backgroundPixel = 0;

struct NumberProperty {
    const char *name;
    std::uint32_t value;
};
/// Compositors draw a shadow round the window's rectangle, not round what is painted in it.
constexpr NumberProperty noShadow{"_COMPTON_SHADOW", 0};
/// With this property set, a compositor's rules for unfocused windows do not dim it.
constexpr NumberProperty opacity{"_NET_WM_WINDOW_OPACITY", 0xffffffffU};

/// Where nothing blends, a pixel belongs to the window from this alpha on, of 255: pale edges and
/// nearly clear fills stay away, marker ink stays visible.
constexpr int visibleFrom = 64;
/// More rectangles than this make the X server slow; the shape gets coarser then.
constexpr int maxShapeRuns = 10'000;

} // namespace orv::platform::window_traits

#include "orvane-streamer/desk/Diagnosis.h"
#include "orvane-streamer/desk/XServer.h"

#include <xcb/randr.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace orv::apps {

namespace {

constexpr std::array<const char *, 8> kExtensions{"Composite", "DAMAGE", "MIT-SHM", "XFIXES",
                                                  "SHAPE",     "RANDR",  "XTEST",   "XKEYBOARD"};
// Newer servers inside Wayland say it by an extension, all of them by their outputs' names.
constexpr const char *kXwaylandExtension = "XWAYLAND";
constexpr std::string_view kXwaylandOutput = "XWAYLAND";

constexpr std::uint8_t kAlphaDepth = 32;
constexpr std::uint32_t kMostPropertyWords = 1U << 14U;

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

xcb_atom_t atomOf(const XServer &server, std::string_view name)
{
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        server.get(),
        xcb_intern_atom(server.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// Empty when the window, the property, or one of this format is not there.
template <typename Value>
std::vector<Value> property(const XServer &server, xcb_window_t window, xcb_atom_t name)
{
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(server.get(),
                               xcb_get_property(server.get(), 0, window, name,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, kMostPropertyWords),
                               nullptr));
    constexpr unsigned bitsOfAByte = 8;
    if (!reply || reply->format != sizeof(Value) * bitsOfAByte) {
        return {};
    }
    const auto *values = static_cast<const Value *>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

std::string text(const XServer &server, xcb_window_t window, xcb_atom_t name)
{
    const auto bytes = property<char>(server, window, name);
    return {bytes.begin(), bytes.end()};
}

bool hasExtension(const XServer &server, std::string_view name)
{
    const XReply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(
        server.get(),
        xcb_query_extension(server.get(), static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply && reply->present != 0;
}

/// X.Org and what descends from it count as 1.20.13 is 12013000 and 21.1.7 is 12101007.
std::string versionText(std::uint32_t release)
{
    constexpr std::uint32_t part = 100;
    constexpr std::uint32_t small = 1000;
    constexpr std::uint32_t newStyle = 12'100'000;
    const std::uint32_t minor = release / (part * small) % part;
    const std::uint32_t patch = release / small % part;
    if (release >= newStyle) {
        return fmt::format("release {}.{}.{}", minor, patch, release % small);
    }
    return fmt::format("release {}.{}.{}", release / (part * part * small), minor, patch);
}

std::string windowManager(const XServer &server)
{
    const xcb_atom_t check = atomOf(server, "_NET_SUPPORTING_WM_CHECK");
    const auto window = property<std::uint32_t>(server, server.screen().root, check);
    // A manager that ended badly leaves its mark behind; only a living one is marked on its own
    // window.
    if (window.empty() || property<std::uint32_t>(server, window.front(), check) != window) {
        return {};
    }
    const std::string name = text(server, window.front(), atomOf(server, "_NET_WM_NAME"));
    return name.empty() ? "one without a name" : name;
}

bool hasCompositor(const XServer &server)
{
    const xcb_atom_t selection = atomOf(server, fmt::format("_NET_WM_CM_S{}", server.screenNumber));
    const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        server.get(), xcb_get_selection_owner(server.get(), selection), nullptr));
    return owner && owner->owner != XCB_NONE;
}

bool hasAlphaVisual(const xcb_screen_t &screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        if (depth.data->depth == kAlphaDepth && depth.data->visuals_len > 0) {
            return true;
        }
    }
    return false;
}

std::optional<double> fontDpi(const XServer &server)
{
    const std::string resources = text(server, server.screen().root, XCB_ATOM_RESOURCE_MANAGER);
    constexpr std::string_view name = "Xft.dpi:";
    auto start = resources.starts_with(name) ? 0 : resources.find("\n" + std::string(name));
    if (start == std::string::npos) {
        return std::nullopt;
    }
    start = resources.find_first_not_of(" \t", resources.find(':', start) + 1);
    double dpi = 0.0;
    if (start == std::string::npos ||
        std::from_chars(resources.data() + start, resources.data() + resources.size(), dpi).ec !=
            std::errc() ||
        !std::isfinite(dpi) || dpi <= 0.0) {
        return std::nullopt;
    }
    return dpi;
}

std::string atomName(const XServer &server, xcb_atom_t atom)
{
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(server.get(), xcb_get_atom_name(server.get(), atom), nullptr));
    if (!reply) {
        return {};
    }
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::vector<DesktopFacts::Display> displays(const XServer &server)
{
    // Monitors came with version 1.5, and the server wants to hear what its client knows.
    const XReply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        server.get(), xcb_randr_query_version(server.get(), 1, 5), nullptr));
    const XReply<xcb_randr_get_monitors_reply_t> monitors(xcb_randr_get_monitors_reply(
        server.get(), xcb_randr_get_monitors(server.get(), server.screen().root, 1), nullptr));
    std::vector<DesktopFacts::Display> found;
    if (!version || !monitors) {
        return found;
    }
    for (auto each = xcb_randr_get_monitors_monitors_iterator(monitors.get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        const xcb_randr_monitor_info_t &monitor = *each.data;
        found.push_back({atomName(server, monitor.name), monitor.x, monitor.y, monitor.width,
                         monitor.height, static_cast<int>(monitor.width_in_millimeters),
                         static_cast<int>(monitor.height_in_millimeters), monitor.primary != 0});
    }
    return found;
}

void readServer(const XServer &server, DesktopFacts &facts)
{
    facts.isConnected = true;
    const xcb_setup_t *setup = xcb_get_setup(server.get());
    facts.vendor = {xcb_setup_vendor(setup),
                    static_cast<std::size_t>(xcb_setup_vendor_length(setup))};
    facts.version = versionText(setup->release_number);
    for (const char *name : kExtensions) {
        facts.extensions.push_back({name, hasExtension(server, name)});
    }
    if (facts.has("RANDR")) {
        facts.displays = displays(server);
    }
    if (facts.displays.empty()) {
        const xcb_screen_t &screen = server.screen();
        facts.displays.push_back({"screen", 0, 0, screen.width_in_pixels, screen.height_in_pixels,
                                  screen.width_in_millimeters, screen.height_in_millimeters, true});
    }
    facts.isXwayland = hasExtension(server, kXwaylandExtension) ||
                       std::any_of(facts.displays.begin(), facts.displays.end(),
                                   [](const DesktopFacts::Display &display) {
                                       return display.name.starts_with(kXwaylandOutput);
                                   });
    facts.fontDpi = fontDpi(server);
    facts.windowManager = windowManager(server);
    facts.hasCompositor = hasCompositor(server);
    facts.hasAlphaVisual = hasAlphaVisual(server.screen());
}

} // namespace

DesktopFacts readDesktop()
{
    DesktopFacts facts;
    facts.displayName = environment("DISPLAY");
    facts.sessionType = environment("XDG_SESSION_TYPE");
    facts.waylandDisplay = environment("WAYLAND_DISPLAY");
    if (!facts.displayName.empty()) {
        const XServer server;
        if (!server.isLost()) {
            readServer(server, facts);
        }
    }
    return facts;
}

} // namespace orv::apps

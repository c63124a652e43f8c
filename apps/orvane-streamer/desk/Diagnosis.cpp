#include "orvane-streamer/desk/Diagnosis.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace orv::apps {

namespace {

constexpr double kMillimetresPerInch = 25.4;
// At which a desktop draws without magnifying.
constexpr double kUsualDpi = 96.0;

std::string line(const std::string &name, const std::string &text)
{
    return fmt::format("{:<18}{}\n", name, text);
}

std::string orElse(const std::string &text, const char *otherwise)
{
    return text.empty() ? otherwise : text;
}

std::string displayText(const DesktopFacts::Display &display)
{
    std::string text = fmt::format("{}: {} x {} pixels at {}, {}", display.name, display.width,
                                   display.height, display.x, display.y);
    if (display.widthMillimetres > 0 && display.heightMillimetres > 0) {
        text += fmt::format(", {} x {} mm ({:.0f} dpi)", display.widthMillimetres,
                            display.heightMillimetres,
                            display.width * kMillimetresPerInch / display.widthMillimetres);
    }
    return display.isPrimary ? text + ", primary" : text;
}

std::string scaleText(const DesktopFacts &facts)
{
    if (!facts.fontDpi) {
        return "not set: programs draw at 96 dpi or as the displays' sizes suggest";
    }
    return fmt::format("{:.2f} (Xft.dpi {:.0f})", *facts.fontDpi / kUsualDpi, *facts.fontDpi);
}

std::string sessionText(const DesktopFacts &facts)
{
    std::string text = orElse(facts.sessionType, "of unknown type");
    if (!facts.waylandDisplay.empty()) {
        text += ", WAYLAND_DISPLAY " + facts.waylandDisplay;
    }
    return text + ", DISPLAY " + orElse(facts.displayName, "not set");
}

std::string extensionsText(const DesktopFacts &facts, bool present)
{
    std::string text;
    for (const DesktopFacts::Extension &extension : facts.extensions) {
        if (extension.isPresent == present) {
            text += (text.empty() ? "" : ", ") + extension.name;
        }
    }
    return orElse(text, "none");
}

std::string overlaysText(const DesktopFacts &facts)
{
    if (facts.hasCompositor && facts.hasAlphaVisual) {
        return "yes, blended by the compositor";
    }
    return facts.hasCompositor ? "yes, but shaped to their ink: the screen has no visual with alpha"
                               : "yes, but shaped to their ink: no compositor is running";
}

std::string pictureText(const DesktopFacts &facts)
{
    if (!facts.has("DAMAGE") || !facts.has("XFIXES")) {
        return "slow, five times a second: the X server does not tell what changes (no DAMAGE or "
               "no "
               "XFIXES)";
    }
    return facts.has("MIT-SHM") ? "fast"
                                : "slow: the X server shares no memory with programs (no MIT-SHM)";
}

std::string inputText(const DesktopFacts &facts)
{
    if (!facts.has("XTEST")) {
        return "no: the X server takes no input from programs (no XTEST)";
    }
    return facts.has("XKEYBOARD")
               ? "yes"
               : "no: the X server does not tell its keyboard layout (no XKEYBOARD)";
}

std::string serverLines(const DesktopFacts &facts)
{
    std::string text =
        line("X server", fmt::format("{}, {}{}", orElse(facts.vendor, "unknown"), facts.version,
                                     facts.isXwayland ? ", inside Wayland" : ""));
    text += line("Extensions", extensionsText(facts, true));
    text += line("Missing", extensionsText(facts, false));
    text += line("Window manager", orElse(facts.windowManager, "none"));
    text += line("Compositor", facts.hasCompositor ? "running" : "none");
    text += line("Scale", scaleText(facts));
    for (const DesktopFacts::Display &display : facts.displays) {
        text += line("Display", displayText(display));
    }
    return text;
}

std::string abilityLines(const DesktopFacts &facts)
{
    if (const auto reason = obstacle(facts)) {
        return line("Overlays", "no. " + *reason);
    }
    std::string text = line("Overlays", overlaysText(facts));
    text += line("Click-through", "yes");
    text += line("Live picture", pictureText(facts));
    text += line("Keys and mouse", inputText(facts));
    if (const auto hint = warning(facts)) {
        text += line("Hint", *hint);
    }
    return text;
}

} // namespace

bool DesktopFacts::has(const std::string &extension) const
{
    return std::any_of(extensions.begin(), extensions.end(), [&](const Extension &known) {
        return known.name == extension && known.isPresent;
    });
}

std::string diagnosis(const DesktopFacts &facts)
{
    return line("Session", sessionText(facts)) + (facts.isConnected ? serverLines(facts) : "") +
           "\n" + abilityLines(facts);
}

std::optional<std::string> obstacle(const DesktopFacts &facts)
{
    constexpr const char *loginHint = "log in to a session \"on Xorg\".";
    if (facts.displayName.empty() && !facts.waylandDisplay.empty()) {
        return fmt::format("This is a Wayland session without an X server, and Wayland lets no "
                           "program draw above the others; {}",
                           loginHint);
    }
    if (facts.displayName.empty()) {
        return "There is no display to draw on: the environment variable DISPLAY is not set.";
    }
    if (!facts.isConnected) {
        return fmt::format("The X display \"{}\" cannot be connected to: no server answers there, "
                           "or it refuses this user.",
                           facts.displayName);
    }
    if (facts.isXwayland) {
        return fmt::format(
            "This is a Wayland session, where ink could not lie above other programs' "
            "windows; {}",
            loginHint);
    }
    if (!facts.has("SHAPE")) {
        return fmt::format("The X display \"{}\" has no SHAPE extension, so nothing can be drawn "
                           "above other windows without hiding them.",
                           facts.displayName);
    }
    return std::nullopt;
}

std::optional<std::string> warning(const DesktopFacts &facts)
{
    if (obstacle(facts) || facts.hasCompositor) {
        return std::nullopt;
    }
    return "No compositor is running, so ink has hard edges and highlighters are opaque; start "
           "one, "
           "such as picom.";
}

} // namespace orv::apps

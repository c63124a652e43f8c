#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orv::apps {

/// What a desktop is and has, as far as the streamer cares.
struct DesktopFacts {
    struct Display {
        std::string name;
        /// In pixels of the X screen, from its top left corner.
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        /// 0 where the display does not tell.
        int widthMillimetres = 0;
        int heightMillimetres = 0;
        bool isPrimary = false;
    };
    struct Extension {
        std::string name;
        bool isPresent = false;
    };

    /// Of the session, as its environment says; empty where it says nothing.
    std::string displayName;
    std::string sessionType;
    std::string waylandDisplay;

    /// Whether an X server answers; all below is empty when none does.
    bool isConnected = false;
    std::string vendor;
    std::string version;
    /// It is a guest of a Wayland compositor.
    bool isXwayland = false;
    std::vector<Extension> extensions;
    std::vector<Display> displays;
    /// What the desktop asks programs to write for; nothing where it asks nothing.
    std::optional<double> fontDpi;
    std::string windowManager;
    bool hasCompositor = false;
    bool hasAlphaVisual = false;

    [[nodiscard]] bool has(const std::string &extension) const;
};

/// Asks the environment and the X server that DISPLAY names. Never throws: what cannot be had is
/// missing.
[[nodiscard]] DesktopFacts readDesktop();

/// The facts for a reader, and what works with them, in lines.
[[nodiscard]] std::string diagnosis(const DesktopFacts &facts);

/// Why overlays cannot be had at all, in one sentence; nothing where they can.
[[nodiscard]] std::optional<std::string> obstacle(const DesktopFacts &facts);

/// What makes overlays less than they could be, in one sentence.
[[nodiscard]] std::optional<std::string> warning(const DesktopFacts &facts);

} // namespace orv::apps

#pragma once

#include "OrvAnnotation/AnnotationController.h"
#include "common/ScriptReader.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orv::apps {

/// A display as a script describes it, in global points with y up.
struct ScriptDisplay {
    std::uint32_t id = 0;
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

/// An application as a script describes it; 0 for none.
struct ScriptApplication {
    std::int32_t pid = 0;
    std::string bundle;
};

/// The argument of a script's "host" command: what a host sets, and the desk that it stands on.
struct HostSettings {
    std::uint32_t plugin = 17;
    std::optional<std::string> device;
    std::optional<std::uint32_t> displayID;
    std::optional<ScreenDimension> client;
    std::int32_t ignoreMouse = 0;
    bool debug = false;
    std::map<std::string, std::string> debugDict;
    bool delegate = true;
    bool senders = true;

    // The desk; a program on a real one does not look at these.
    std::vector<ScriptDisplay> displays{{1, 0.0, 0.0, 1440.0, 900.0}};
    std::string bundle = "com.orvane.Orvane-Streamer";
    ScriptApplication front;
    std::vector<std::string> running;
    bool accessibility = false;
    std::string clock = "2026-01-02 03:04:05";
    std::uint64_t freeBytes = 1'000'000'000'000;
    std::string desktop = "#3366AA";
};

// Each throws `ScriptError` that names the key at fault.
[[nodiscard]] HostSettings hostSettings(const Json &argument);
[[nodiscard]] std::vector<ScriptDisplay> scriptDisplays(const Json &value, const std::string &name);
[[nodiscard]] ScriptApplication scriptApplication(const Json &value, const std::string &name);
[[nodiscard]] std::uint64_t byteCount(const Json &value, const std::string &name);
[[nodiscard]] std::map<std::string, std::string> textDictionary(const Json &value,
                                                                const std::string &name);
[[nodiscard]] ScreenDimension screenDimension(const Json &value, const std::string &name);

/// What the settings say of the host's own operations, in the order of a host. `mainDisplay` and
/// `mainSize` stand for what the settings leave out.
void applyHostSettings(const HostSettings &settings, AnnotationController &controller,
                       std::uint32_t mainDisplay, ScreenDimension mainSize);

} // namespace orv::apps

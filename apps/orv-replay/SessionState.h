#pragma once

#include "channels/controller/ControllerState.h"
#include "orv-replay/OutputLines.h"
#include "platform/values/Color.h"
#include "session/AnnotationManager.h"

#include <string>

namespace orv::apps {

[[nodiscard]] OutputJson controllerState(const ControllerState &state);
[[nodiscard]] OutputJson managerState(const AnnotationManager &manager);
/// Names and folders of the running session, relative to `home` where below it.
[[nodiscard]] OutputJson pathsState(const std::string &home);
/// By name.
[[nodiscard]] OutputJson toolsState(const ToolTable &tools);

/// The tool's name, or null.
[[nodiscard]] OutputJson toolName(const CanvasTool *tool);
/// Relative to `home` where below it.
[[nodiscard]] std::string relativePath(const std::string &path, const std::string &home);
/// [r, g, b, a]
[[nodiscard]] OutputJson colorState(const platform::Color &color);

} // namespace orv::apps

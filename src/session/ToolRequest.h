#pragma once

#include "session/AnnotationTool.h"

#include <cstdint>

namespace orv {

/// A client's request for a tool, as a draw type record carries it.
struct ToolRequest {
    std::uint16_t type = 0;
    std::uint16_t subtype = 0;
    float size = 0.0F;
    std::uint16_t spacing = 0;
    /// Alpha in the top byte.
    std::uint32_t ARGB = 0;
};

/// The outlet of the button that a draw type asks for; null for 9, the laser pointer.
[[nodiscard]] const char *buttonForDrawType(std::uint16_t type);
/// Puts what the request says onto the tool, for good in points: `fitMode` is off afterwards.
void applyToolRequest(const ToolRequest &request, AnnotationTool &tool);

} // namespace orv

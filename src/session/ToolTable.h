#pragma once

#include "session/AnnotationTool.h"
#include "session/SessionOutlets.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace orv {

/// The seventeen tools by the titles of their buttons.
using ToolTable = std::map<std::string, std::shared_ptr<AnnotationTool>>;

/// What the transient tools of the table fire.
struct TransientActions {
    std::function<void()> undoAnnotation;
    std::function<void()> redoAnnotation;
    std::function<void()> clearAnnotationsWithSqueegee;
};

/// Builds the tools in their order, each with the colour and size it starts with.
[[nodiscard]] ToolTable buildToolTable(const SessionOutlets &outlets,
                                       const TransientActions &actions);

/// The colour, size and style that were chosen for a tool, as indexes into its lists.
struct ToolTraits {
    std::int32_t color = 0;
    std::int32_t size = 0;
    std::int32_t style = 0;
};

/// Gives the tool what the indexes stand for. A tool without such a list, and an index outside it,
/// leaves the value as it is.
void applyTraits(const ToolTraits &traits, AnnotationTool &tool);

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

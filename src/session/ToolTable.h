#pragma once

#include "canvas/AnnotationsView.h"
#include "session/AnnotationTool.h"
#include "session/SessionOutlets.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace orv {

/// The seventeen tools by the titles of their buttons.
using ToolTable = std::map<std::string, std::shared_ptr<AnnotationTool>>;

/// What the transient tools of the table fire, by the tool's name. One that is missing does nothing
/// but toggle its menu.
using TransientActions = std::map<std::string, std::function<void()>>;

/// The colour, size and style that were chosen for a tool, as indexes into its lists.
struct ToolTraits {
    std::int32_t color = 0;
    std::int32_t size = 0;
    std::int32_t style = 0;
};

/// What was saved for a tool, by the title of its button.
using SavedTraits = std::function<std::optional<ToolTraits>(const std::string &title)>;

/// Builds the tools in their order. A drawing tool takes what `saved` says of it, else the colour
/// and size it starts with; its menu sets them. `canvas` is the one that shows the cursors.
[[nodiscard]] ToolTable buildToolTable(const SessionOutlets &outlets,
                                       const std::shared_ptr<AnnotationsView> &canvas,
                                       const TransientActions &actions, const SavedTraits &saved);

/// Tells the tool's menu the indexes. A tool without such a list, and an index outside it, leaves
/// the value as it is.
void applyTraits(const ToolTraits &traits, AnnotationTool &tool);

} // namespace orv

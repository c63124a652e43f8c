#pragma once

#include <string>
#include <vector>

namespace orv {

/// Names of the pictures of a tool's button, each list indexed by style and colour: not selected
/// and selected, each as it is and pressed. An empty list stands for `off`.
struct ToolPictures {
    std::vector<std::string> off;
    std::vector<std::string> offAlt;
    std::vector<std::string> on;
    std::vector<std::string> onAlt;
};

/// Those of a tool by its name, such as "pen" or "savess". All lists are empty for any other name.
[[nodiscard]] ToolPictures picturesOfTool(const std::string &tool);

/// One name for each primary index of the tool: the ink is what is to be looked at, so each is the
/// pointer that hardly shows.
[[nodiscard]] std::vector<std::string> cursorsOfTool(const std::string &tool);

} // namespace orv

#include "session/ToolPictures.h"

#include "toolbox/AnnotationMenuUtilities.h"

#include <map>

namespace orv {

namespace {

using Names = std::vector<std::string>;

const Names kDrawing{"black", "yellow", "blue", "green", "red"};
const Names kHighlighter{"purple", "yellow", "blue", "green", "red"};
const Names kStamps{"pointer", "star", "heart", "smile", "check", "x"};
const Names kLineStyles{"line_s1_", "line_s2_", "line_s3_", "line_s4_"};
constexpr const char *kHiddenCursor = "cursor_hidden";
constexpr std::size_t kCursors = 6;

ToolPictures inFourStates(const Names &prefixes, const Names &descriptors)
{
    const auto names = [&](const char *suffix) {
        return AnnotationMenuUtilities::imageNamesWithPrefixArray(prefixes, descriptors, suffix);
    };
    return {names("_d"), names("_p"), names("_f_d"), names("_f_p")};
}

// A button that only fires has no selected look of its own.
ToolPictures inTwoStates(const std::string &name)
{
    return {{name + "_d"}, {name + "_p"}, {}, {}};
}

} // namespace

ToolPictures picturesOfTool(const std::string &tool)
{
    static const std::map<std::string, std::string> transient{
        {"more", "more"},       {"savess", "savess"}, {"snapshot", "ss"},
        {"gallery", "gallery"}, {"undo", "undo"},     {"redo", "redo"},
        {"closess", "closess"}, {"flipchart", "fb"},  {"eraseall", "eraseall"}};
    if (const auto found = transient.find(tool); found != transient.end()) {
        return inTwoStates(found->second);
    }
    if (tool == "highlighter") {
        return inFourStates({"high_"}, kHighlighter);
    }
    if (tool == "eraser") {
        return inFourStates({"erase"}, {""});
    }
    if (tool == "line") {
        return inFourStates(kLineStyles, kDrawing);
    }
    if (tool == "stamp") {
        return inFourStates({"stamp_"}, kStamps);
    }
    if (tool == "pen" || tool == "circle" || tool == "rectangle" || tool == "text") {
        return inFourStates({tool + "_"}, kDrawing);
    }
    return {};
}

std::vector<std::string> cursorsOfTool(const std::string &tool)
{
    return Names(tool == "eraser" ? 1 : kCursors, kHiddenCursor);
}

} // namespace orv

#include "session/ToolTable.h"

#include <array>
#include <optional>

namespace orv {

namespace {

using platform::Color;

constexpr Color fromBytes(int red, int green, int blue)
{
    return {red / 255.0, green / 255.0, blue / 255.0, 1.0};
}

// Black, yellow, blue, green, red.
constexpr std::array kDrawingColors{fromBytes(0, 0, 0), fromBytes(255, 198, 0),
                                    fromBytes(0, 144, 255), fromBytes(135, 213, 0),
                                    fromBytes(220, 0, 0)};
// Purple, yellow, blue, green, red.
constexpr std::array kHighlighterColors{fromBytes(248, 0, 251), fromBytes(246, 255, 0),
                                        fromBytes(0, 228, 255), fromBytes(92, 255, 35),
                                        fromBytes(255, 68, 68)};
constexpr float kPenSize = 0.002F;
constexpr float kHighlighterSize = 0.01F;
constexpr float kEraserSize = 0.005F;
constexpr float kTextSize = 0.025F;
constexpr float kStampSize = 1.0F;
// A stamp's kind travels in the blue of its colour.
constexpr int kStarStamp = 1;

struct ToolRow {
    const char *name;
    std::int32_t type;
    const char *button;
    /// Index into the tool's colours; -1 for a tool without colours.
    std::int32_t color;
    float size;
};

constexpr std::array kRows{
    ToolRow{"more", annotation_type::none, "moreButton", -1, 0.0F},
    ToolRow{"savess", annotation_type::none, "saveSSButton", -1, 0.0F},
    ToolRow{"snapshot", annotation_type::none, "snapshotButton", -1, 0.0F},
    ToolRow{"gallery", annotation_type::none, "galleryButton", -1, 0.0F},
    ToolRow{"pen", annotation_type::pen, "penButton", 4, kPenSize},
    ToolRow{"highlighter", annotation_type::highlighter, "highlighterButton", 1, kHighlighterSize},
    ToolRow{"eraser", annotation_type::eraser, "eraserButton", -1, kEraserSize},
    ToolRow{"circle", annotation_type::ellipse, "circleButton", 2, kPenSize},
    ToolRow{"rectangle", annotation_type::rectangle, "rectangleButton", 2, kPenSize},
    ToolRow{"text", annotation_type::text, "textButton", 4, kTextSize},
    ToolRow{"line", annotation_type::line, "lineButton", 2, kPenSize},
    ToolRow{"stamp", annotation_type::stamp, "stampButton", kStarStamp, kStampSize},
    ToolRow{"undo", annotation_type::none, "undoButton", -1, 0.0F},
    ToolRow{"redo", annotation_type::none, "redoButton", -1, 0.0F},
    ToolRow{"closess", annotation_type::none, "closeSSButton", -1, 0.0F},
    ToolRow{"flipchart", annotation_type::none, "flipchartButton", -1, 0.0F},
    ToolRow{"eraseall", annotation_type::none, "eraseallButton", -1, 0.0F},
};

Color colorOf(const ToolRow &row)
{
    const auto index = static_cast<std::size_t>(row.color);
    if (row.type == annotation_type::highlighter) {
        return kHighlighterColors.at(index);
    }
    if (row.type == annotation_type::stamp) {
        return fromBytes(0, 0, row.color);
    }
    return kDrawingColors.at(index);
}

std::function<void()> actionOf(const std::string &name, const TransientActions &actions)
{
    if (name == "undo") {
        return actions.undoAnnotation;
    }
    if (name == "redo") {
        return actions.redoAnnotation;
    }
    if (name == "eraseall") {
        return actions.clearAnnotationsWithSqueegee;
    }
    return [] {};
}

std::uint32_t stampOfSubtype(std::uint16_t subtype)
{
    switch (subtype) {
    case 2:
        return 2;
    case 3:
        return 0;
    case 4:
        return 3;
    case 5:
        return 1;
    case 6:
        return 5;
    default:
        return 4;
    }
}

constexpr float kStampSizeOffset = 100.0F;
constexpr std::uint16_t kArrowSubtype = 2;
constexpr std::int32_t kSingleArrowStyle = 98;
constexpr std::int32_t kPlainLineStyle = 99;

// In single precision, as the sizes and colours of requests are.
double component(std::uint32_t argb, unsigned shift)
{
    return static_cast<float>((argb >> shift) & 0xFFU) / 255.0F;
}

} // namespace

ToolTable buildToolTable(const SessionOutlets &outlets, const TransientActions &actions)
{
    ToolTable tools;
    for (const ToolRow &row : kRows) {
        const auto button = outlets.button(row.button);
        const auto tool = std::make_shared<AnnotationTool>(row.type, row.name, button);
        if (row.type == annotation_type::none) {
            tool->enableTransientSelection(actionOf(row.name, actions));
        } else {
            tool->setAnnotationSize(row.size);
            if (row.color >= 0) {
                tool->setAnnotationColor(colorOf(row));
                tool->selectPrimaryTraitAtIndex(row.color);
            }
        }
        tools[button ? button->title() : row.name] = tool;
    }
    return tools;
}

const char *buttonForDrawType(std::uint16_t type)
{
    switch (type) {
    case 1:
        return "highlighterButton";
    case 2:
        return "eraserButton";
    case 3:
        return "rectangleButton";
    case 4:
        return "circleButton";
    case 5:
        return "textButton";
    case 6:
        return "stampButton";
    case 7:
        return "lineButton";
    case 9:
        return nullptr;
    default:
        return "penButton";
    }
}

void applyToolRequest(const ToolRequest &request, AnnotationTool &tool)
{
    float size = request.size;
    std::uint32_t argb = request.ARGB;
    std::int32_t style = 0;
    if (tool.annotationType() == annotation_type::stamp) {
        argb = stampOfSubtype(request.subtype);
        size += kStampSizeOffset;
    } else if (tool.annotationType() == annotation_type::line) {
        style = request.subtype == kArrowSubtype ? kSingleArrowStyle : kPlainLineStyle;
    }
    tool.setFitMode(false);
    tool.setAnnotationSize(size);
    tool.setAnnotationStyle(style);
    tool.setAnnotationDash(request.spacing != 0);
    tool.setAnnotationColor(
        {component(argb, 16), component(argb, 8), component(argb, 0), component(argb, 24)});
}

} // namespace orv

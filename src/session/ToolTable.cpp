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
// Fractions of the display's width; of a stamp, size codes.
using Sizes = std::array<float, 4>;
constexpr Sizes kPenSizes{0.002F, 0.005F, 0.01F, 0.02F};
constexpr Sizes kHighlighterSizes{0.01F, 0.015F, 0.025F, 0.035F};
constexpr Sizes kEraserSizes{0.005F, 0.05F, 0.075F, 0.1F};
constexpr Sizes kTextSizes{0.025F, 0.05F, 0.075F, 0.1F};
constexpr Sizes kStampSizes{1.0F, 2.0F, 3.0F, 4.0F};
constexpr std::int32_t kStampKinds = 6;
constexpr std::int32_t kLineStyles = 4;
// A stamp's kind travels in the blue of its colour.
constexpr int kStarStamp = 1;

struct ToolRow {
    const char *name;
    std::int32_t type;
    const char *button;
    /// Index into the tool's colours at the start; 0 for a tool without colours.
    std::int32_t color;
};

constexpr std::array kRows{
    ToolRow{"more", annotation_type::none, "moreButton", 0},
    ToolRow{"savess", annotation_type::none, "saveSSButton", 0},
    ToolRow{"snapshot", annotation_type::none, "snapshotButton", 0},
    ToolRow{"gallery", annotation_type::none, "galleryButton", 0},
    ToolRow{"pen", annotation_type::pen, "penButton", 4},
    ToolRow{"highlighter", annotation_type::highlighter, "highlighterButton", 1},
    ToolRow{"eraser", annotation_type::eraser, "eraserButton", 0},
    ToolRow{"circle", annotation_type::ellipse, "circleButton", 2},
    ToolRow{"rectangle", annotation_type::rectangle, "rectangleButton", 2},
    ToolRow{"text", annotation_type::text, "textButton", 4},
    ToolRow{"line", annotation_type::line, "lineButton", 2},
    ToolRow{"stamp", annotation_type::stamp, "stampButton", kStarStamp},
    ToolRow{"undo", annotation_type::none, "undoButton", 0},
    ToolRow{"redo", annotation_type::none, "redoButton", 0},
    ToolRow{"closess", annotation_type::none, "closeSSButton", 0},
    ToolRow{"flipchart", annotation_type::none, "flipchartButton", 0},
    ToolRow{"eraseall", annotation_type::none, "eraseallButton", 0},
};

template <class List>
auto at(const List &list, std::int32_t index) -> std::optional<typename List::value_type>
{
    if (index < 0 || index >= std::ssize(list)) {
        return std::nullopt;
    }
    return list[static_cast<std::size_t>(index)];
}

std::optional<Color> colorAt(std::int32_t type, std::int32_t index)
{
    switch (type) {
    case annotation_type::highlighter:
        return at(kHighlighterColors, index);
    case annotation_type::stamp:
        return index >= 0 && index < kStampKinds ? std::optional(fromBytes(0, 0, index))
                                                 : std::nullopt;
    case annotation_type::eraser:
        return std::nullopt;
    default:
        return at(kDrawingColors, index);
    }
}

std::optional<float> sizeAt(std::int32_t type, std::int32_t index)
{
    switch (type) {
    case annotation_type::highlighter:
        return at(kHighlighterSizes, index);
    case annotation_type::eraser:
        return at(kEraserSizes, index);
    case annotation_type::text:
        return at(kTextSizes, index);
    case annotation_type::stamp:
        return at(kStampSizes, index);
    default:
        return at(kPenSizes, index);
    }
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
            applyTraits({row.color, 0, 0}, *tool);
        }
        tools[button ? button->title() : row.name] = tool;
    }
    return tools;
}

void applyTraits(const ToolTraits &traits, AnnotationTool &tool)
{
    const std::int32_t type = tool.annotationType();
    if (const auto color = colorAt(type, traits.color)) {
        tool.setAnnotationColor(*color);
        tool.selectPrimaryTraitAtIndex(traits.color);
    }
    if (const auto size = sizeAt(type, traits.size)) {
        tool.setAnnotationSize(*size);
        tool.selectSecondaryTraitAtIndex(traits.size);
    }
    if (type == annotation_type::line && traits.style >= 0 && traits.style < kLineStyles) {
        tool.setAnnotationStyle(traits.style);
        tool.selectTertiaryTraitAtIndex(traits.style);
    }
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

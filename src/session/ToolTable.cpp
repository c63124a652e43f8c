#include "session/ToolTable.h"

#include "session/ToolPictures.h"
#include "toolbox/DrawingMenuController.h"

#include <array>

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
// A stamp's kind travels in the blue of its colour.
constexpr std::array kStampColors{fromBytes(0, 0, 0), fromBytes(0, 0, 1), fromBytes(0, 0, 2),
                                  fromBytes(0, 0, 3), fromBytes(0, 0, 4), fromBytes(0, 0, 5)};
constexpr std::int32_t kStarStamp = 1;
// Fractions of the display's width; of a stamp, size codes.
using Sizes = std::array<float, 4>;
constexpr Sizes kPenSizes{0.002F, 0.005F, 0.01F, 0.02F};
constexpr Sizes kHighlighterSizes{0.01F, 0.015F, 0.025F, 0.035F};
constexpr Sizes kEraserSizes{0.005F, 0.05F, 0.075F, 0.1F};
constexpr Sizes kTextSizes{0.025F, 0.05F, 0.075F, 0.1F};
constexpr Sizes kStampSizes{1.0F, 2.0F, 3.0F, 4.0F};
// Plain, an arrow at the end, arrows at both ends, dashed.
constexpr std::array<std::int32_t, 4> kLineStyles{0, 1, 2, 3};
constexpr platform::Point kHotSpot{1.0, 1.0};

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

template <class List> auto listOf(const List &values)
{
    return std::vector<typename List::value_type>(values.begin(), values.end());
}

template <class Menu>
std::unique_ptr<AnnotationMenuController> menuWith(std::vector<Color> colors, const Sizes &sizes)
{
    auto menu = std::make_unique<Menu>();
    menu->setColorValues(std::move(colors));
    menu->setSizeValues(listOf(sizes));
    if constexpr (std::is_same_v<Menu, LineMenuController>) {
        menu->setStyleValues(listOf(kLineStyles));
    }
    return menu;
}

std::unique_ptr<AnnotationMenuController> menuOf(std::int32_t type)
{
    switch (type) {
    case annotation_type::highlighter:
        return menuWith<DrawingMenuController>(listOf(kHighlighterColors), kHighlighterSizes);
    case annotation_type::eraser: {
        auto menu = std::make_unique<EraserMenuController>();
        menu->setSizeValues(listOf(kEraserSizes));
        return menu;
    }
    case annotation_type::text:
        return menuWith<DrawingMenuController>(listOf(kDrawingColors), kTextSizes);
    case annotation_type::line:
        return menuWith<LineMenuController>(listOf(kDrawingColors), kPenSizes);
    case annotation_type::stamp:
        return menuWith<DrawingMenuController>(listOf(kStampColors), kStampSizes);
    default:
        return menuWith<DrawingMenuController>(listOf(kDrawingColors), kPenSizes);
    }
}

std::function<void()> actionOf(const std::string &name, const TransientActions &actions)
{
    const auto found = actions.find(name);
    return found == actions.end() ? nullptr : found->second;
}

std::string titleOf(const ToolRow &row, const std::shared_ptr<platform::Button> &button)
{
    return button ? button->title() : row.name;
}

} // namespace

ToolTable buildToolTable(const SessionOutlets &outlets,
                         const std::shared_ptr<AnnotationsView> &canvas,
                         const TransientActions &actions, const SavedTraits &saved)
{
    ToolTable tools;
    for (const ToolRow &row : kRows) {
        const auto button = outlets.button(row.button);
        const std::string title = titleOf(row, button);
        const auto tool =
            std::make_shared<AnnotationTool>(row.type, row.name, button, picturesOfTool(row.name));
        tools[title] = tool;
        if (row.type == annotation_type::none) {
            tool->enableTransientSelection(actionOf(row.name, actions));
            continue;
        }
        tool->enableCursorWithImages(cursorsOfTool(row.name), kHotSpot, canvas);
        tool->setMenuController(menuOf(row.type));
        applyTraits({row.color, 0, 0}, *tool);
        if (const auto settings = saved(title)) {
            applyTraits(*settings, *tool);
        }
        tool->enableSelectedImageMirroringToButton(outlets.button("iconButton"));
    }
    return tools;
}

void applyTraits(const ToolTraits &traits, AnnotationTool &tool)
{
    if (AnnotationMenuController *menu = tool.menuController()) {
        menu->selectColorAtIndex(traits.color);
        menu->selectSizeAtIndex(traits.size);
        menu->selectStyleAtIndex(traits.style);
    }
}

} // namespace orv

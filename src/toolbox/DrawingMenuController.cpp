#include "toolbox/DrawingMenuController.h"

#include "canvas/Annotation.h"

namespace orv {

namespace {

/// Makes the index the chosen one and hands its value to the tool, where both are there.
template <class Value, class Apply>
bool choose(const std::vector<Value> &values, std::int32_t index, MenuTool *tool,
            std::int32_t &chosen, Apply apply)
{
    if (index < 0 || index >= std::ssize(values) || tool == nullptr) {
        return false;
    }
    chosen = index;
    apply(*tool, values[static_cast<std::size_t>(index)]);
    return true;
}

void applySize(MenuTool &tool, float size, std::int32_t index)
{
    tool.setAnnotationSize(size);
    tool.selectSecondaryTraitAtIndex(index);
}

} // namespace

void DrawingMenuController::endRunningText()
{
    if (tool()->annotationType() == annotation_type::text) {
        tool()->selectOnCanvas();
    }
}

void DrawingMenuController::selectColorAtIndex(std::int32_t index)
{
    const auto apply = [index](MenuTool &tool, const platform::Color &color) {
        tool.setAnnotationColor(color);
        tool.selectPrimaryTraitAtIndex(index);
    };
    if (choose(colorValues_, index, tool(), colorIndex_, apply)) {
        endRunningText();
    }
}

void DrawingMenuController::selectSizeAtIndex(std::int32_t index)
{
    const auto apply = [index](MenuTool &tool, float size) { applySize(tool, size, index); };
    if (choose(sizeValues_, index, tool(), sizeIndex_, apply)) {
        endRunningText();
    }
}

void LineMenuController::selectStyleAtIndex(std::int32_t index)
{
    const auto apply = [index](MenuTool &tool, std::int32_t style) {
        tool.setAnnotationStyle(style);
        tool.selectTertiaryTraitAtIndex(index);
    };
    if (choose(styleValues_, index, tool(), styleIndex_, apply)) {
        endRunningText();
    }
}

void EraserMenuController::selectSizeAtIndex(std::int32_t index)
{
    const auto apply = [index](MenuTool &tool, float size) { applySize(tool, size, index); };
    choose(sizeValues_, index, tool(), sizeIndex_, apply);
}

} // namespace orv

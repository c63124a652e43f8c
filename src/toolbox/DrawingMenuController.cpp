#include "toolbox/DrawingMenuController.h"

#include "canvas/Annotation.h"

namespace orv {

namespace {

template <class Value> const Value *valueAt(const std::vector<Value> &values, std::int32_t index)
{
    return index >= 0 && index < std::ssize(values) ? &values[static_cast<std::size_t>(index)]
                                                    : nullptr;
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
    const platform::Color *color = valueAt(colorValues_, index);
    if (color == nullptr || tool() == nullptr) {
        return;
    }
    colorIndex_ = index;
    tool()->setAnnotationColor(*color);
    tool()->selectPrimaryTraitAtIndex(index);
    endRunningText();
}

void DrawingMenuController::selectSizeAtIndex(std::int32_t index)
{
    const float *size = valueAt(sizeValues_, index);
    if (size == nullptr || tool() == nullptr) {
        return;
    }
    sizeIndex_ = index;
    tool()->setAnnotationSize(*size);
    tool()->selectSecondaryTraitAtIndex(index);
    endRunningText();
}

void LineMenuController::selectStyleAtIndex(std::int32_t index)
{
    const std::int32_t *style = valueAt(styleValues_, index);
    if (style == nullptr || tool() == nullptr) {
        return;
    }
    styleIndex_ = index;
    tool()->setAnnotationStyle(*style);
    tool()->selectTertiaryTraitAtIndex(index);
    endRunningText();
}

void EraserMenuController::selectSizeAtIndex(std::int32_t index)
{
    const float *size = valueAt(sizeValues_, index);
    if (size == nullptr || tool() == nullptr) {
        return;
    }
    sizeIndex_ = index;
    tool()->setAnnotationSize(*size);
    tool()->selectSecondaryTraitAtIndex(index);
}

} // namespace orv

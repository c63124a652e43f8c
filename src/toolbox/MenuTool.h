#pragma once

#include "platform/values/Color.h"

#include <cstdint>

namespace orv {

/// What a menu sets on the tool that it belongs to.
class MenuTool {
public:
    [[nodiscard]] virtual std::int32_t annotationType() const = 0;
    virtual void setAnnotationColor(const platform::Color &color) = 0;
    /// A fraction of the canvas's width, or a stamp's size code.
    virtual void setAnnotationSize(float size) = 0;
    virtual void setAnnotationStyle(std::int32_t style) = 0;
    virtual void selectPrimaryTraitAtIndex(std::int32_t index) = 0;
    virtual void selectSecondaryTraitAtIndex(std::int32_t index) = 0;
    virtual void selectTertiaryTraitAtIndex(std::int32_t index) = 0;
    /// Gives itself to the canvas once more, which ends a running text.
    virtual void selectOnCanvas() = 0;

protected:
    virtual ~MenuTool() = default;
};

} // namespace orv

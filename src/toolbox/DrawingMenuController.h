#pragma once

#include "toolbox/AnnotationMenuController.h"

#include <vector>

namespace orv {

/// The menu of a tool that draws: a colour and a size, and of a stamp its kind in place of a
/// colour.
class DrawingMenuController : public AnnotationMenuController {
public:
    void setColorValues(std::vector<platform::Color> values) { colorValues_ = std::move(values); }
    void setSizeValues(std::vector<float> values) { sizeValues_ = std::move(values); }
    [[nodiscard]] std::int32_t colorIndex() const { return colorIndex_; }
    [[nodiscard]] std::int32_t sizeIndex() const { return sizeIndex_; }

    void selectColorAtIndex(std::int32_t index) override;
    void selectSizeAtIndex(std::int32_t index) override;

protected:
    /// A text that is being typed keeps its look: a choice ends it and counts for the next one.
    void endRunningText();

private:
    std::vector<platform::Color> colorValues_;
    std::vector<float> sizeValues_;
    std::int32_t colorIndex_ = 0;
    std::int32_t sizeIndex_ = 0;
};

/// The menu of the line tool: adds arrows and dashes.
class LineMenuController : public DrawingMenuController {
public:
    void setStyleValues(std::vector<std::int32_t> values) { styleValues_ = std::move(values); }
    [[nodiscard]] std::int32_t styleIndex() const { return styleIndex_; }

    void selectStyleAtIndex(std::int32_t index) override;

private:
    std::vector<std::int32_t> styleValues_;
    std::int32_t styleIndex_ = 0;
};

/// The menu of the eraser: a size alone.
class EraserMenuController : public AnnotationMenuController {
public:
    void setSizeValues(std::vector<float> values) { sizeValues_ = std::move(values); }
    [[nodiscard]] std::int32_t sizeIndex() const { return sizeIndex_; }

    void selectSizeAtIndex(std::int32_t index) override;

private:
    std::vector<float> sizeValues_;
    std::int32_t sizeIndex_ = 0;
};

} // namespace orv

#pragma once

#include "canvas/CanvasTool.h"
#include "platform/values/Color.h"
#include "platform/views/Button.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orv {

/// One entry of the toolbox: a drawing instrument, or a button that fires an action.
///
/// Owns     nothing but its values; shares its button with the view tree.
/// Thread   main thread, or the host's under the monitor.
/// Units    `annotationSize` is a fraction of the canvas's width while `fitMode`, else points.
class AnnotationTool : public CanvasTool {
public:
    AnnotationTool(std::int32_t annotationType, std::string name,
                   std::shared_ptr<platform::Button> button);

    [[nodiscard]] const std::string &name() const override { return name_; }
    [[nodiscard]] bool createsAnnotations() const override
    {
        return annotationType_ != annotation_type::none;
    }
    [[nodiscard]] std::int32_t annotationType() const override { return annotationType_; }
    [[nodiscard]] bool transient() const override { return static_cast<bool>(transientAction_); }
    [[nodiscard]] std::optional<platform::Cursor> cursor() const override { return std::nullopt; }
    [[nodiscard]] std::shared_ptr<Annotation>
    createAnnotationInView(const std::shared_ptr<platform::View> &view) const override;

    [[nodiscard]] const std::shared_ptr<platform::Button> &button() const { return button_; }
    [[nodiscard]] bool isSelected() const { return isSelected_; }
    void deselect() { isSelected_ = false; }
    /// Marks a drawing tool as selected; a transient one performs its action on the main thread,
    /// and waits for it.
    void selectAndToggleMenu(bool toggleMenu);
    /// Makes the tool transient.
    void enableTransientSelection(std::function<void()> action);

    [[nodiscard]] const platform::Color &annotationColor() const { return annotationColor_; }
    void setAnnotationColor(const platform::Color &color) { annotationColor_ = color; }
    [[nodiscard]] float annotationSize() const { return annotationSize_; }
    void setAnnotationSize(float size) { annotationSize_ = size; }
    [[nodiscard]] std::int32_t annotationStyle() const { return annotationStyle_; }
    void setAnnotationStyle(std::int32_t style) { annotationStyle_ = style; }
    [[nodiscard]] bool annotationDash() const { return annotationDash_; }
    void setAnnotationDash(bool dash) { annotationDash_ = dash; }
    [[nodiscard]] bool fitMode() const { return fitMode_; }
    void setFitMode(bool fitMode) { fitMode_ = fitMode; }

    [[nodiscard]] std::int32_t primaryTraitIndex() const { return primaryTraitIndex_; }
    void selectPrimaryTraitAtIndex(std::int32_t index) { primaryTraitIndex_ = index; }
    [[nodiscard]] std::int32_t secondaryTraitIndex() const { return secondaryTraitIndex_; }
    void selectSecondaryTraitAtIndex(std::int32_t index) { secondaryTraitIndex_ = index; }
    [[nodiscard]] std::int32_t tertiaryTraitIndex() const { return tertiaryTraitIndex_; }
    void selectTertiaryTraitAtIndex(std::int32_t index) { tertiaryTraitIndex_ = index; }

private:
    [[nodiscard]] float fitSizeWithScreenSize(float size, const platform::View *view) const;

    std::int32_t annotationType_;
    std::string name_;
    std::shared_ptr<platform::Button> button_;
    std::function<void()> transientAction_;
    bool isSelected_ = false;
    bool fitMode_ = true;
    bool annotationDash_ = false;
    std::int32_t primaryTraitIndex_ = 0;
    std::int32_t secondaryTraitIndex_ = 0;
    std::int32_t tertiaryTraitIndex_ = 0;
    platform::Color annotationColor_{0.0, 0.0, 0.0, 1.0};
    float annotationSize_ = 0.0F;
    std::int32_t annotationStyle_ = 0;
};

} // namespace orv

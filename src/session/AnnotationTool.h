#pragma once

#include "canvas/AnnotationsView.h"
#include "canvas/CanvasTool.h"
#include "platform/values/Color.h"
#include "platform/views/Button.h"
#include "session/ToolPictures.h"
#include "toolbox/AnnotationMenuController.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orv {

/// One entry of the toolbox: a drawing instrument, or a button that fires an action.
///
/// Owns     its menu and its values; shares its buttons with the view tree and its pictures with
///          nobody. Holds the canvas weakly.
/// Thread   main thread, or the host's under the monitor.
/// Units    `annotationSize` is a fraction of the canvas's width while `fitMode`, else points.
class AnnotationTool : public CanvasTool,
                       public MenuTool,
                       public std::enable_shared_from_this<AnnotationTool> {
public:
    AnnotationTool(std::int32_t annotationType, std::string name,
                   std::shared_ptr<platform::Button> button, const ToolPictures &pictures);

    [[nodiscard]] const std::string &name() const override { return name_; }
    [[nodiscard]] bool createsAnnotations() const override
    {
        return annotationType_ != annotation_type::none;
    }
    [[nodiscard]] std::int32_t annotationType() const override { return annotationType_; }
    [[nodiscard]] bool transient() const override { return transient_; }
    /// Nothing stands for the arrow.
    [[nodiscard]] std::optional<platform::Cursor> cursor() const override { return cursor_; }
    [[nodiscard]] std::shared_ptr<Annotation>
    createAnnotationInView(const std::shared_ptr<platform::View> &view) const override;

    [[nodiscard]] const std::shared_ptr<platform::Button> &button() const { return button_; }
    [[nodiscard]] bool isSelected() const { return isSelected_; }
    void deselect();
    /// Marks a drawing tool as selected; a transient one performs its action on the main thread,
    /// and waits for it. With `toggleMenu` the menu then opens or closes.
    void selectAndToggleMenu(bool toggleMenu);
    /// The button shows the selected picture of this tool too, and goes on showing it after.
    void enableSelectedImageMirroringToButton(std::shared_ptr<platform::Button> button);
    /// A picture for each primary index; `hotSpot` from its top left corner, in points.
    void enableCursorWithImages(const std::vector<std::string> &names, platform::Point hotSpot,
                                const std::shared_ptr<AnnotationsView> &view);
    /// Makes the tool transient. Without an action its selection does no more than toggle the menu.
    void enableTransientSelection(std::function<void()> action);

    void setMenuController(std::unique_ptr<AnnotationMenuController> menu);
    /// Null for a tool without one.
    [[nodiscard]] AnnotationMenuController *menuController() const { return menu_.get(); }
    void hideMenu();
    /// In the coordinates of the panel; empty when the menu has no view.
    [[nodiscard]] platform::Rect getToolMenuRect() const;
    /// True without a menu.
    [[nodiscard]] bool getToolMenuIsHidden() const;
    /// Tells the canvas that a choice was made for this tool.
    void selectToolNoifty();
    void selectOnCanvas() override;

    [[nodiscard]] const platform::Color &annotationColor() const { return annotationColor_; }
    void setAnnotationColor(const platform::Color &color) override { annotationColor_ = color; }
    [[nodiscard]] float annotationSize() const { return annotationSize_; }
    void setAnnotationSize(float size) override { annotationSize_ = size; }
    [[nodiscard]] std::int32_t annotationStyle() const { return annotationStyle_; }
    void setAnnotationStyle(std::int32_t style) override { annotationStyle_ = style; }
    [[nodiscard]] bool annotationDash() const { return annotationDash_; }
    void setAnnotationDash(bool dash) { annotationDash_ = dash; }
    [[nodiscard]] bool fitMode() const { return fitMode_; }
    void setFitMode(bool fitMode) { fitMode_ = fitMode; }

    [[nodiscard]] std::int32_t primaryTraitIndex() const { return primaryTraitIndex_; }
    void selectPrimaryTraitAtIndex(std::int32_t index) override;
    [[nodiscard]] std::int32_t secondaryTraitIndex() const { return secondaryTraitIndex_; }
    /// A size does not change the button's picture.
    void selectSecondaryTraitAtIndex(std::int32_t index) override { secondaryTraitIndex_ = index; }
    [[nodiscard]] std::int32_t tertiaryTraitIndex() const { return tertiaryTraitIndex_; }
    void selectTertiaryTraitAtIndex(std::int32_t index) override;

private:
    [[nodiscard]] float fitSizeWithScreenSize(float size, const platform::View *view) const;
    void refreshVisualElements();
    void refreshButtons();

    using Images = std::vector<platform::PictureResourcePtr>;

    std::int32_t annotationType_;
    std::string name_;
    std::shared_ptr<platform::Button> button_;
    std::shared_ptr<platform::Button> mirrorButton_;
    Images offImages_;
    Images offAltImages_;
    Images onImages_;
    Images onAltImages_;
    std::vector<platform::Cursor> cursors_;
    std::optional<platform::Cursor> cursor_;
    std::weak_ptr<AnnotationsView> annotationsView_;
    std::unique_ptr<AnnotationMenuController> menu_;
    bool transient_ = false;
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

#pragma once

#include "platform/views/PictureResource.h"
#include "platform/views/View.h"

#include <functional>
#include <string>

namespace orv::platform {

/// A push button with a title or a picture.
class Button : public View {
public:
    using Action = std::function<void(Button &sender)>;

    using View::View;

    [[nodiscard]] std::string className() const override { return "Button"; }
    [[nodiscard]] const std::string &title() const { return title_; }
    void setTitle(std::string title);
    /// A number that its action may look at.
    [[nodiscard]] int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }
    [[nodiscard]] bool isEnabled() const { return isEnabled_; }
    void setEnabled(bool enabled);
    /// The picture and the one that is shown while it is pressed; null shows the title.
    void setImage(PictureResourcePtr image);
    void setAlternateImage(PictureResourcePtr image);
    [[nodiscard]] const PictureResourcePtr &image() const { return image_; }
    [[nodiscard]] const PictureResourcePtr &alternateImage() const { return alternateImage_; }

    /// Called by a click and by `performClick` while it is enabled.
    void setAction(Action action) { action_ = std::move(action); }
    void performClick();

    void drawRect(GraphicsContext &context, const Rect &dirty) override;
    void mouseDown(const Event &event) override;
    void mouseDragged(const Event &event) override;
    void mouseUp(const Event &event) override;
    [[nodiscard]] bool acceptsFirstMouse() const override { return true; }

private:
    void drawTitle(GraphicsContext &context) const;

    std::string title_;
    int tag_ = 0;
    bool isEnabled_ = true;
    bool isPressed_ = false;
    PictureResourcePtr image_;
    PictureResourcePtr alternateImage_;
    Action action_;
};

} // namespace orv::platform

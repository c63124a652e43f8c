#pragma once

#include "platform/views/PictureResource.h"
#include "platform/views/View.h"

namespace orv::platform {

/// A view that shows a picture, scaled to its bounds. It takes no clicks of its own.
class ImageView : public View {
public:
    using View::View;

    [[nodiscard]] std::string className() const override { return "ImageView"; }
    /// Null shows nothing.
    void setImage(PictureResourcePtr image);
    [[nodiscard]] const PictureResourcePtr &image() const { return image_; }

    void drawRect(GraphicsContext &context, const Rect &dirty) override;

private:
    PictureResourcePtr image_;
};

} // namespace orv::platform

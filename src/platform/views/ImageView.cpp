#include "platform/views/ImageView.h"

#include <utility>

namespace orv::platform {

void ImageView::setImage(PictureResourcePtr image)
{
    image_ = std::move(image);
    setNeedsDisplay(true);
}

void ImageView::drawRect(GraphicsContext &context, const Rect & /*dirty*/)
{
    if (const ImagePtr picture = image_ ? image_->image() : nullptr) {
        context.drawImage(picture, bounds(), CompositingOperation::sourceOver, 1.0);
    }
}

} // namespace orv::platform

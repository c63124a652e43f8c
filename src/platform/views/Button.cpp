#include "platform/views/Button.h"

#include "platform/foundation/TextConversion.h"

namespace orv::platform {

namespace {

constexpr double kDisabledFraction = 0.6;
constexpr double kCornerRadius = 5.0;
constexpr double kTitleSize = 11.0;

} // namespace

void Button::setTitle(std::string title)
{
    title_ = std::move(title);
    setNeedsDisplay(true);
}

void Button::setEnabled(bool enabled)
{
    if (enabled != isEnabled_) {
        isEnabled_ = enabled;
        setNeedsDisplay(true);
    }
}

void Button::setImage(PictureResourcePtr image)
{
    image_ = std::move(image);
    setNeedsDisplay(true);
}

void Button::setAlternateImage(PictureResourcePtr image)
{
    alternateImage_ = std::move(image);
    setNeedsDisplay(true);
}

void Button::performClick()
{
    if (isEnabled_ && action_) {
        const auto keep = shared_from_this();
        action_(*this);
    }
}

void Button::drawRect(GraphicsContext &context, const Rect & /*dirty*/)
{
    const PictureResourcePtr &shown =
        isEnabled_ && isPressed_ && alternateImage_ ? alternateImage_ : image_;
    if (const ImagePtr picture = shown ? shown->image() : nullptr) {
        context.drawImage(picture, bounds(), CompositingOperation::sourceOver,
                          isEnabled_ ? 1.0 : kDisabledFraction);
    } else {
        drawTitle(context);
    }
}

void Button::drawTitle(GraphicsContext &context) const
{
    const double fraction = isEnabled_ ? 1.0 : kDisabledFraction;
    const double face = isPressed_ && isEnabled_ ? 0.75 : 0.95;
    Path outline;
    outline.addRoundedRect(bounds().insetBy(1.0, 1.0), kCornerRadius, kCornerRadius);
    context.setFillColor(Color(face, face, face, fraction));
    context.fillPath(outline);
    const Font font{"Helvetica", kTitleSize};
    const std::u16string text = utf16FromUtf8(title_);
    const Size size = context.measureText(text, font);
    const Rect line = Rect::make(0.0, (bounds().size.height - size.height) / 2.0,
                                 bounds().size.width, size.height);
    context.setFillColor(Color(0.1, 0.1, 0.1, fraction));
    context.drawText(text, line, font, TextAlignment::center);
}

void Button::mouseDown(const Event & /*event*/)
{
    isPressed_ = isEnabled_;
    setNeedsDisplay(true);
}

void Button::mouseDragged(const Event & /*event*/) {}

void Button::mouseUp(const Event &event)
{
    const bool clicked = isPressed_ && bounds().containsMouse(convertFromWindow(event.location));
    isPressed_ = false;
    setNeedsDisplay(true);
    if (clicked) {
        performClick();
    }
}

} // namespace orv::platform

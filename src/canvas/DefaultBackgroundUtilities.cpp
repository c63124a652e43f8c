#include "canvas/DefaultBackgroundUtilities.h"

#include "canvas/BackgroundDrawings.h"
#include "platform/ports/Pictures.h"
#include "platform/ports/Platform.h"

namespace orv {

namespace {

using platform::CompositingOperation;
using platform::GraphicsContext;

/// Sides from here on are refused before they are cut to an integer.
constexpr double kTooLong = 16385.0;

bool isPaintable(double side)
{
    return side >= 1.0 && side < kTooLong;
}

} // namespace

DefaultBackgroundUtilities::DefaultBackgroundUtilities(platform::Size size) : size_(size) {}

bool DefaultBackgroundUtilities::paint(const std::function<void(GraphicsContext &)> &body)
{
    if (isPaintable(size_.width) && isPaintable(size_.height)) {
        image_ = platform::Platform::current().pictures().paint(
            static_cast<int>(size_.width), static_cast<int>(size_.height), body);
    }
    return true;
}

bool DefaultBackgroundUtilities::addTileColor(const platform::Color &color)
{
    return paint([this, &color](GraphicsContext &context) {
        context.setFillColor(color);
        context.fillRect(backgrounds::getImageFrame(size_), CompositingOperation::copy);
    });
}

bool DefaultBackgroundUtilities::addTilePattern(const platform::ImagePtr &pattern)
{
    return paint([this, &pattern](GraphicsContext &context) {
        context.fillPattern(backgrounds::getImageFrame(size_), pattern, CompositingOperation::copy);
    });
}

bool DefaultBackgroundUtilities::addVenn2()
{
    return paint([this](GraphicsContext &context) { backgrounds::drawVenn2(context, size_); });
}

bool DefaultBackgroundUtilities::addVenn3()
{
    return paint([this](GraphicsContext &context) { backgrounds::drawVenn3(context, size_); });
}

bool DefaultBackgroundUtilities::addQuardrant()
{
    return paint([this](GraphicsContext &context) { backgrounds::drawQuardrant(context, size_); });
}

bool DefaultBackgroundUtilities::addKWL()
{
    return paint([this](GraphicsContext &context) { backgrounds::drawKWL(context, size_); });
}

bool DefaultBackgroundUtilities::saveToFile(const std::string &path, float quality) const
{
    if (image_) {
        platform::Platform::current().pictures().save(path, *image_, platform::PictureKind::jpeg,
                                                      quality);
    }
    return true;
}

} // namespace orv

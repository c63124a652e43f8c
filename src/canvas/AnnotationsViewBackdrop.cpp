#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationsView.h"
#include "canvas/DefaultBackgroundUtilities.h"
#include "platform/ports/Files.h"
#include "platform/ports/Pictures.h"
#include "platform/ports/Platform.h"

#include <cmath>

// What lies behind the ink. It is prepared once per change, at the size of the canvas, so that each
// redraw is one fill.

namespace orv {

namespace {

using platform::Color;
using platform::ImagePtr;
using platform::Rect;
using platform::Size;

namespace backdrop {
constexpr std::int32_t none = 0;
constexpr std::int32_t white = 1;
constexpr std::int32_t linedPaper = 2;
constexpr std::int32_t graphPaper = 3;
constexpr std::int32_t venn2 = 4;
constexpr std::int32_t venn3 = 5;
constexpr std::int32_t quadrant = 6;
constexpr std::int32_t userImage = 7;
constexpr std::int32_t kwl = 8;
} // namespace backdrop

platform::Pictures &pictures()
{
    return platform::Platform::current().pictures();
}

ImagePtr paintedAt(Size size, const std::function<void(platform::GraphicsContext &)> &body)
{
    return pictures().paint(static_cast<int>(size.width), static_cast<int>(size.height), body);
}

ImagePtr tiled(const char *resource, Size size)
{
    const ImagePtr tile = pictures().picture(platform::pathForImageResource(resource));
    if (!tile) {
        return nullptr;
    }
    return paintedAt(size, [&](platform::GraphicsContext &context) {
        context.fillPattern({{0.0, 0.0}, size}, tile, platform::CompositingOperation::copy);
    });
}

// The drawing goes through the file that all canvases share; when that can't be written it is
// shown as it was drawn.
ImagePtr FlipchartDefaultBG(const std::string &path, std::int32_t type, Size size)
{
    DefaultBackgroundUtilities drawing(size);
    switch (type) {
    case backdrop::venn3:
        drawing.addVenn3();
        break;
    case backdrop::quadrant:
        drawing.addQuardrant();
        break;
    case backdrop::kwl:
        drawing.addKWL();
        break;
    default:
        drawing.addVenn2();
        break;
    }
    drawing.saveToFile(path, 1.0F);
    const ImagePtr written = pictures().picture(path);
    const ImagePtr drawn = drawing.image();
    return written && drawn && written->size() == drawn->size() ? written : drawn;
}

std::string sharedDrawingPath()
{
    platform::Files &files = platform::Platform::current().files();
    return platform::joinPath(files.userFolder(platform::UserFolder::temporary), ".whiteboard.jpg");
}

// Fitted into the box of its proportions, but no larger than it is.
Size shownSize(Size image, Size canvas)
{
    const double ratio = image.width / image.height;
    const Size box = ratio > canvas.width / canvas.height
                         ? Size{canvas.width, canvas.width / ratio}
                         : Size{ratio * canvas.height, canvas.height};
    return image.width < box.width ? image : box;
}

ImagePtr centredOnWhite(const ImagePtr &image, Size canvas)
{
    return paintedAt(canvas, [&](platform::GraphicsContext &context) {
        context.setFillColor(Color::white());
        context.fillRect({{0.0, 0.0}, canvas}, platform::CompositingOperation::copy);
        if (image) {
            const Size shown = shownSize(image->size(), canvas);
            const Rect place = Rect{{0.0, 0.0}, canvas}.insetBy(
                (canvas.width - shown.width) / 2.0, (canvas.height - shown.height) / 2.0);
            context.drawImage(image, place, platform::CompositingOperation::sourceOver, 1.0);
        }
    });
}

} // namespace

void AnnotationsView::setCurrentBackdrop(std::int32_t backdrop)
{
    currentBackdrop_ = backdrop;
    const Size size = getFrameSize();
    switch (backdrop) {
    case backdrop::white:
        setBackdropColor(Color::white());
        break;
    case backdrop::linedPaper:
        setBackdropPattern(tiled("bg_linedpaper.png", size));
        break;
    case backdrop::graphPaper:
        setBackdropPattern(tiled("bg_graphpaper.png", size));
        break;
    case backdrop::venn2:
    case backdrop::venn3:
    case backdrop::quadrant:
    case backdrop::kwl:
        setBackdropPattern(FlipchartDefaultBG(sharedDrawingPath(), backdrop, size));
        break;
    default:
        if (backdrop == backdrop::none) {
            paths_.flipchartImageFilePath.clear();
        }
        setBackdropColor(Color::clear());
        break;
    }
}

void AnnotationsView::setCurrentBackdropUsingImageFile(const std::string &path)
{
    const Size size = overlayWindow_ == nullptr ? Size{} : overlayWindow_->frame().size;
    setBackdropPattern(centredOnWhite(pictures().picture(path), size));
}

void AnnotationsView::setCurrentBackdropUsingImageFile(const std::string &path, std::int32_t type)
{
    setCurrentBackdrop(type);
    setCurrentBackdropUsingImageFile(path);
}

void AnnotationsView::setBackdropColor(const Color &color)
{
    if (overlayWindow_ != nullptr) {
        overlayWindow_->setBackgroundColor(color);
    }
}

void AnnotationsView::setBackdropPattern(const ImagePtr &pattern)
{
    if (overlayWindow_ != nullptr) {
        overlayWindow_->setBackgroundPattern(pattern);
    }
}

void AnnotationsView::resetDisplay()
{
    if (!paths_.snapshotImageFilePath.empty()) {
        setCurrentBackdropUsingImageFile(paths_.snapshotImageFilePath);
    } else if (currentBackdrop_ == backdrop::userImage) {
        setCurrentBackdropUsingImageFile(paths_.backdropImageFilePath, backdrop::userImage);
    } else if (currentBackdrop_ != backdrop::none) {
        setCurrentBackdrop(currentBackdrop_);
    }
}

} // namespace orv

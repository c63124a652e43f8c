#include "platform/virtual/VirtualWindowSurface.h"

#include "platform/raster/RasterContext.h"
#include "platform/virtual/VirtualWindowServer.h"

#include <algorithm>

namespace orv::platform {

VirtualWindowSurface::VirtualWindowSurface(VirtualWindowServer &server, WindowEvents &events,
                                           int windowNumber)
    : server_(server), events_(events), windowNumber_(windowNumber)
{
}

VirtualWindowSurface::~VirtualWindowSurface()
{
    server_.remove(*this);
}

void VirtualWindowSurface::setFrame(const Rect &frame)
{
    const bool resized = frame.size != frame_.size;
    frame_ = frame;
    if (resized || server_.scaleOf(frame_) != contentsScale_) {
        setNeedsDisplay({{0.0, 0.0}, frame_.size});
    }
}

void VirtualWindowSurface::setLevel(int level)
{
    level_ = level;
}

void VirtualWindowSurface::setTitle(const std::string &title)
{
    title_ = title;
}

void VirtualWindowSurface::setStyleMask(std::uint32_t mask)
{
    styleMask_ = mask;
}

void VirtualWindowSurface::setHasShadow(bool hasShadow)
{
    hasShadow_ = hasShadow;
}

void VirtualWindowSurface::setAlpha(double alpha)
{
    alpha_ = alpha;
}

void VirtualWindowSurface::setIgnoresMouseEvents(bool ignores)
{
    ignoresMouseEvents_ = ignores;
}

void VirtualWindowSurface::orderFront()
{
    server_.raise(*this);
    if (!visible_) {
        visible_ = true;
        setNeedsDisplay({{0.0, 0.0}, frame_.size});
    }
}

void VirtualWindowSurface::orderOut()
{
    visible_ = false;
    painter_->forget();
    server_.hidden(windowNumber_);
}

void VirtualWindowSurface::makeKey()
{
    if (visible_) {
        server_.setKeyWindow(windowNumber_);
    }
}

bool VirtualWindowSurface::isKey() const
{
    return server_.keyWindow() == windowNumber_;
}

void VirtualWindowSurface::setNeedsDisplay(const Rect &rect)
{
    if (!visible_) {
        return;
    }
    dirty_ = dirty_.united(rect.intersection({{0.0, 0.0}, frame_.size}));
    if (!dirty_.isEmpty() && !drawScheduled_) {
        drawScheduled_ = true;
        server_.scheduleDraw(windowNumber_);
    }
}

void VirtualWindowSurface::prepareContents(const PixelGrid &grid)
{
    if (contents_ && contentsScale_ == grid.scale && contents_->width() == grid.pixelWidth() &&
        contents_->height() == grid.pixelHeight()) {
        return;
    }
    contents_ = std::make_shared<Image>(grid.pixelWidth(), grid.pixelHeight());
    contentsScale_ = grid.scale;
    dirty_ = {{0.0, 0.0}, frame_.size};
    painter_->forget();
}

void VirtualWindowSurface::displayIfNeeded()
{
    drawScheduled_ = false;
    if (!visible_ || dirty_.isEmpty()) {
        return;
    }
    const PixelGrid grid{frame_.size, server_.scaleOf(frame_)};
    prepareContents(grid);
    dirty_ = {};
    ++drawCount_;
    // The window may go while it draws: from here on nothing of this object is touched.
    const std::shared_ptr<Image> contents = contents_;
    const std::shared_ptr<FramePainter> painter = painter_;
    WindowEvents &events = events_;
    const Rect bounds{{0.0, 0.0}, frame_.size};
    painter->paint(*contents, grid,
                   [&](GraphicsContext &context) { events.draw(context, bounds); });
    painter->prepare();
}

} // namespace orv::platform

#include "platform/views/View.h"

#include "platform/views/Window.h"

#include <algorithm>
#include <array>
#include <numbers>

namespace orv::platform {

namespace {

Rect boxOf(const AffineTransform &transform, const Rect &rect)
{
    const std::array<Point, 4> corners{
        transform.apply({rect.minX(), rect.minY()}), transform.apply({rect.maxX(), rect.minY()}),
        transform.apply({rect.minX(), rect.maxY()}), transform.apply({rect.maxX(), rect.maxY()})};
    Point low = corners.front();
    Point high = low;
    for (const Point &corner : corners) {
        low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
        high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
    }
    return {low, {high.x - low.x, high.y - low.y}};
}

} // namespace

View::~View()
{
    for (const auto &view : subviews_) {
        view->superview_ = nullptr;
        view->setWindow(nullptr);
    }
}

void View::setFrame(const Rect &frame)
{
    if (frame == frame_) {
        return;
    }
    setNeedsDisplay(true);
    frame_ = frame;
    invalidateCursorRects();
    setNeedsDisplay(true);
}

void View::setFrameRotation(double degrees)
{
    setNeedsDisplay(true);
    frameRotation_ = degrees;
    updateCursorRects();
    setNeedsDisplay(true);
}

void View::setHidden(bool hidden)
{
    if (hidden == isHidden_) {
        return;
    }
    setNeedsDisplay(true);
    isHidden_ = hidden;
    updateCursorRects();
    setNeedsDisplay(true);
}

bool View::isVisible() const
{
    return !isHidden_ && (superview_ == nullptr || superview_->isVisible());
}

void View::setAlpha(double alpha)
{
    alpha_ = std::clamp(alpha, 0.0, 1.0);
    setNeedsDisplay(true);
}

void View::addSubview(const std::shared_ptr<View> &view)
{
    const std::shared_ptr<View> keep = view;
    keep->removeFromSuperview();
    subviews_.push_back(keep);
    keep->superview_ = this;
    keep->setWindow(window_);
    updateCursorRects();
    keep->setNeedsDisplay(true);
}

void View::removeFromSuperview()
{
    if (superview_ == nullptr) {
        return;
    }
    const std::shared_ptr<View> keep = shared_from_this();
    setNeedsDisplay(true);
    auto &siblings = superview_->subviews_;
    siblings.erase(std::find(siblings.begin(), siblings.end(), keep));
    updateCursorRects();
    superview_ = nullptr;
    setWindow(nullptr);
}

void View::setWindow(Window *window)
{
    window_ = window;
    for (const auto &view : subviews_) {
        view->setWindow(window);
    }
}

void View::setNeedsDisplay(bool needsDisplay)
{
    if (needsDisplay && window_ != nullptr && isVisible()) {
        window_->setNeedsDisplayInRect(frameInWindow());
    }
}

void View::drawRect(GraphicsContext & /*context*/, const Rect & /*dirty*/) {}

void View::drawTree(GraphicsContext &context, const Rect &dirtyInSuperview)
{
    const Rect visible = boxOf(toSuperview(), bounds()).intersection(dirtyInSuperview);
    if (isHidden_ || alpha_ == 0.0 || visible.isEmpty()) {
        return;
    }
    const bool ownLayer = alpha_ < 1.0;
    context.saveState();
    if (ownLayer) {
        context.beginLayer(alpha_);
    }
    context.concatenate(toSuperview());
    context.clipToRect(bounds());
    const Rect dirty = boxOf(toSuperview().inverted(), visible).intersection(bounds());
    context.saveState();
    drawRect(context, dirty);
    context.restoreState();
    const auto children = subviews_;
    for (const auto &view : children) {
        view->drawTree(context, dirty);
    }
    if (ownLayer) {
        context.endLayer();
    }
    context.restoreState();
}

AffineTransform View::toSuperview() const
{
    const AffineTransform move = AffineTransform::translation(frame_.origin.x, frame_.origin.y);
    if (frameRotation_ == 0.0) {
        return move;
    }
    return AffineTransform::rotation(frameRotation_ * std::numbers::pi / 180.0).then(move);
}

Point View::convertToSuperview(Point p) const
{
    return toSuperview().apply(p);
}

Point View::convertFromSuperview(Point p) const
{
    return toSuperview().inverted().apply(p);
}

Point View::convertToWindow(Point p) const
{
    const Point up = convertToSuperview(p);
    return superview_ == nullptr ? up : superview_->convertToWindow(up);
}

Point View::convertFromWindow(Point p) const
{
    return convertFromSuperview(superview_ == nullptr ? p : superview_->convertFromWindow(p));
}

Rect View::frameInWindow() const
{
    AffineTransform transform = toSuperview();
    for (const View *view = superview_; view != nullptr; view = view->superview_) {
        transform = transform.then(view->toSuperview());
    }
    return boxOf(transform, bounds());
}

View *View::hitTest(Point inSuperview)
{
    if (isHidden_) {
        return nullptr;
    }
    const Point own = convertFromSuperview(inSuperview);
    if (!bounds().containsMouse(own)) {
        return nullptr;
    }
    for (auto it = subviews_.rbegin(); it != subviews_.rend(); ++it) {
        if (View *hit = (*it)->hitTest(own)) {
            return hit;
        }
    }
    return this;
}

void View::mouseDown(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->mouseDown(event);
    } else if (window_ != nullptr) {
        window_->mouseDown(event);
    }
}

void View::mouseDragged(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->mouseDragged(event);
    } else if (window_ != nullptr) {
        window_->mouseDragged(event);
    }
}

void View::mouseUp(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->mouseUp(event);
    } else if (window_ != nullptr) {
        window_->mouseUp(event);
    }
}

void View::mouseMoved(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->mouseMoved(event);
    }
}

void View::rightMouseDown(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->rightMouseDown(event);
    }
}

void View::rightMouseDragged(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->rightMouseDragged(event);
    }
}

void View::rightMouseUp(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->rightMouseUp(event);
    }
}

void View::keyDown(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->keyDown(event);
    }
}

void View::keyUp(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->keyUp(event);
    }
}

void View::flagsChanged(const Event &event)
{
    if (superview_ != nullptr) {
        superview_->flagsChanged(event);
    }
}

void View::addCursorRect(const Rect &rect, const Cursor &cursor)
{
    cursorRects_.emplace_back(rect, cursor);
}

void View::invalidateCursorRects()
{
    cursorRects_.clear();
    resetCursorRects();
    updateCursorRects();
}

void View::updateCursorRects() const
{
    if (window_ != nullptr) {
        window_->updateCursorRects();
    }
}

} // namespace orv::platform

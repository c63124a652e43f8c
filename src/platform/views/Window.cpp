#include "platform/views/Window.h"

#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv::platform {

namespace {

constexpr double kDefaultResizeSeconds = 0.2;
constexpr double kFrameSeconds = 1.0 / 60.0;
// Less than this is no time left.
constexpr double kInstant = 1e-6;

// Surfaces belong to the main thread; a session that opens on a host's thread reaches them here.
template <class Task> void onMain(Task &&task)
{
    MainThread &mainThread = Platform::current().mainThread();
    if (mainThread.isCurrent()) {
        task();
    } else {
        mainThread.postAndWait(task);
    }
}

double between(double from, double to, double part)
{
    return from + (to - from) * part;
}

// Slow at both ends, as windows that glide are expected to be.
double easeInOut(double part)
{
    return part * part * (3.0 - 2.0 * part);
}

Rect rectInWindow(const View &view, const Rect &rect)
{
    const Point a = view.convertToWindow(rect.origin);
    const Point b = view.convertToWindow({rect.maxX(), rect.maxY()});
    return Rect::make(std::min(a.x, b.x), std::min(a.y, b.y), std::abs(b.x - a.x),
                      std::abs(b.y - a.y));
}

void collectCursorRects(const View &view, std::vector<CursorRect> &rects)
{
    if (view.isHidden()) {
        return;
    }
    for (const auto &[rect, cursor] : view.cursorRects()) {
        rects.push_back({rectInWindow(view, rect),
                         cursor.picture ? cursor.picture->image() : nullptr, cursor.hotSpot});
    }
    for (const auto &subview : view.subviews()) {
        collectCursorRects(*subview, rects);
    }
}

} // namespace

Window::Window(const Rect &contentRect, std::uint32_t styleMask)
    : frame_(contentRect), styleMask_(styleMask)
{
    onMain([this] {
        surface_ = Platform::current().windowServer().createSurface(*this);
        windowNumber_ = surface_->windowNumber();
        surface_->setFrame(frame_);
        surface_->setStyleMask(styleMask_);
    });
    setContentView(std::make_shared<View>());
}

Window::~Window()
{
    if (contentView_) {
        contentView_->setWindow(nullptr);
    }
    if (Platform::isInstalled()) {
        onMain([this] { surface_.reset(); });
    }
}

void Window::setFrame(const Rect &frame, bool display)
{
    const bool resized = !(frame.size == frame_.size);
    frame_ = frame;
    if (resized) {
        contentView_->setFrame({{0.0, 0.0}, frame.size});
    }
    onMain([&] {
        surface_->setFrame(frame_);
        if (resized) {
            surface_->setNeedsDisplay({{0.0, 0.0}, frame_.size});
        }
        if (display) {
            surface_->displayIfNeeded();
        }
    });
}

void Window::setFrame(const Rect &frame, bool display, bool animate)
{
    const double seconds = animate && isVisible_ ? animationResizeTime(frame) : 0.0;
    const Rect start = frame_;
    // By the clock: where frames are slow there are fewer of them, and it takes no longer.
    MainThread &mainThread = Platform::current().mainThread();
    const double begin = mainThread.now();
    double passed = 0.0;
    while (seconds - passed > kInstant) {
        mainThread.block(std::min(kFrameSeconds, seconds - passed));
        passed = mainThread.now() - begin;
        const double part = easeInOut(std::min(1.0, passed / seconds));
        setFrame(Rect::make(between(start.origin.x, frame.origin.x, part),
                            between(start.origin.y, frame.origin.y, part),
                            between(start.size.width, frame.size.width, part),
                            between(start.size.height, frame.size.height, part)),
                 display);
    }
    setFrame(frame, display);
}

double Window::animationResizeTime(const Rect & /*frame*/) const
{
    return kDefaultResizeSeconds;
}

void Window::setTitle(const std::string &title)
{
    title_ = title;
    onMain([&] { surface_->setTitle(title_); });
}

void Window::setLevel(int level)
{
    level_ = level;
    onMain([&] { surface_->setLevel(level_); });
}

void Window::setStyleMask(std::uint32_t mask)
{
    styleMask_ = mask;
    onMain([&] { surface_->setStyleMask(styleMask_); });
}

void Window::setAlpha(double alpha)
{
    alpha_ = alpha;
    onMain([&] { surface_->setAlpha(alpha_); });
}

void Window::setHasShadow(bool hasShadow)
{
    hasShadow_ = hasShadow;
    onMain([&] { surface_->setHasShadow(hasShadow_); });
}

void Window::setIgnoresMouseEvents(bool ignores)
{
    ignoresMouseEvents_ = ignores;
    onMain([&] { surface_->setIgnoresMouseEvents(ignoresMouseEvents_); });
}

void Window::setBackgroundColor(const Color &color)
{
    backgroundColor_ = color;
    backgroundPattern_ = nullptr;
    setNeedsDisplayInRect({{0.0, 0.0}, frame_.size});
}

void Window::setBackgroundPattern(ImagePtr pattern)
{
    backgroundColor_ = Color::clear();
    backgroundPattern_ = std::move(pattern);
    setNeedsDisplayInRect({{0.0, 0.0}, frame_.size});
}

void Window::setIsVisible(bool visible)
{
    if (visible && !isVisible_) {
        orderFront();
    } else if (!visible && isVisible_) {
        orderOut();
    }
}

void Window::orderFront()
{
    isVisible_ = true;
    onMain([&] {
        surface_->orderFront();
        surface_->setNeedsDisplay({{0.0, 0.0}, frame_.size});
    });
}

void Window::orderOut()
{
    isVisible_ = false;
    onMain([&] { surface_->orderOut(); });
}

void Window::makeKeyWindow()
{
    if (canBecomeKeyWindow() && isVisible_) {
        onMain([&] { surface_->makeKey(); });
    }
}

void Window::makeKeyAndOrderFront()
{
    orderFront();
    makeKeyWindow();
}

bool Window::isKeyWindow() const
{
    bool isKey = false;
    onMain([&] { isKey = surface_->isKey(); });
    return isKey;
}

void Window::setContentView(const std::shared_ptr<View> &view)
{
    if (contentView_) {
        contentView_->setWindow(nullptr);
    }
    contentView_ = view;
    contentView_->setWindow(this);
    contentView_->setFrame({{0.0, 0.0}, frame_.size});
    updateCursorRects();
}

void Window::setNeedsDisplayInRect(const Rect &rect)
{
    if (isVisible_) {
        onMain([&] { surface_->setNeedsDisplay(rect); });
    }
}

void Window::updateCursorRects()
{
    std::vector<CursorRect> rects;
    collectCursorRects(*contentView_, rects);
    if (rects != cursorRects_) {
        cursorRects_ = std::move(rects);
        onMain([&] { surface_->setCursorRects(cursorRects_); });
    }
}

void Window::sendEvent(const Event &event)
{
    if (event.isMouse()) {
        if (event.windowNumber == windowNumber_) {
            sendMouseEvent(event);
        }
    } else if (event.isKey()) {
        sendKeyEvent(event);
    }
}

void Window::sendMouseEvent(const Event &event)
{
    const bool press =
        event.type == EventType::leftMouseDown || event.type == EventType::rightMouseDown;
    std::shared_ptr<View> target;
    if (press || event.type == EventType::mouseMoved) {
        View *hit = contentView_->hitTest(event.location);
        target = hit == nullptr ? nullptr : hit->shared_from_this();
    } else {
        target = pressedView_.lock();
    }
    if (press) {
        pressedView_ = target;
        if ((styleMask_ & style::nonactivatingPanel) == 0) {
            makeKeyWindow();
        }
    }
    if (!target) {
        return;
    }
    switch (event.type) {
    case EventType::leftMouseDown:
        target->mouseDown(event);
        break;
    case EventType::leftMouseDragged:
        target->mouseDragged(event);
        break;
    case EventType::leftMouseUp:
        target->mouseUp(event);
        break;
    case EventType::rightMouseDown:
        target->rightMouseDown(event);
        break;
    case EventType::rightMouseDragged:
        target->rightMouseDragged(event);
        break;
    case EventType::rightMouseUp:
        target->rightMouseUp(event);
        break;
    default:
        target->mouseMoved(event);
        break;
    }
}

void Window::sendKeyEvent(const Event &event)
{
    const std::shared_ptr<View> target = firstResponder_.lock();
    if (!target) {
        return;
    }
    if (event.type == EventType::keyDown) {
        target->keyDown(event);
    } else if (event.type == EventType::keyUp) {
        target->keyUp(event);
    } else {
        target->flagsChanged(event);
    }
}

void Window::draw(GraphicsContext &context, const Rect &dirty)
{
    contentView_->drawTree(context, dirty);
}

void Window::mouseDown(const Event & /*event*/) {}
void Window::mouseDragged(const Event & /*event*/) {}
void Window::mouseUp(const Event & /*event*/) {}

} // namespace orv::platform

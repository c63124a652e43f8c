#include "platform/desktop/DesktopWindowSurface.h"

#include "platform/desktop/KeyTranslation.h"
#include "platform/desktop/WindowShape.h"
#include "platform/desktop/WindowTraits.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv::platform {

void DesktopWindowSurface::DetachAndDeleteLater::operator()(OverlayWindow *window) const
{
    // It may be in the middle of an event of its own.
    window->detach();
    window->hide();
    window->deleteLater();
}

DesktopWindowSurface::DesktopWindowSurface(SurfaceHost &host, WindowEvents &events, int number)
    : host_(host), events_(events), number_(number), window_(new OverlayWindow(*this))
{
}

DesktopWindowSurface::~DesktopWindowSurface()
{
    orderOut();
    host_.takeAway(*this);
    host_.pointerLink().uncover(nativeWindow());
}

void DesktopWindowSurface::setFrame(const Rect &frame)
{
    if (frame == frame_) {
        return;
    }
    frame_ = frame;
    applyFrame();
}

void DesktopWindowSurface::applyFrame()
{
    const PixelGrid pixels = grid();
    const QSize size(pixels.pixelWidth(), pixels.pixelHeight());
    window_->setGeometry(QRect(host_.deviceSpace().topLeft(frame_), size));
    if (shield_) {
        shield_->setFrame(window_->geometry());
    }
    looks_.setScale(pixels.scale);
    if (size != QSize(picture_.width(), picture_.height())) {
        picture_ = Image(size.width(), size.height());
        painter_.forget();
        setNeedsDisplay(bounds());
    }
    host_.x().flush();
}

void DesktopWindowSurface::setLevel(int level)
{
    if (std::exchange(level_, level) != level && shown_) {
        host_.bringToFront(*this);
    }
}

void DesktopWindowSurface::setTitle(const std::string &title)
{
    title_ = title;
    window_->setTitle(QString::fromStdString(title));
    host_.x().flush();
}

void DesktopWindowSurface::setAlpha(double alpha)
{
    const double clamped = std::clamp(alpha, 0.0, 1.0);
    if (std::exchange(alpha_, clamped) == clamped || !presenter_) {
        return;
    }
    setNativeOpacity();
    if (!host_.isBlended()) {
        presenter_->setShaped(true, alpha_);
    }
    host_.x().flush();
}

void DesktopWindowSurface::setIgnoresMouseEvents(bool ignores)
{
    if (std::exchange(ignoresMouse_, ignores) != ignores) {
        updateInput();
    }
}

void DesktopWindowSurface::setCursorRects(const std::vector<CursorRect> &rects)
{
    looks_.setRects(rects);
    showOtherLook();
}

void DesktopWindowSurface::createNativeWindow()
{
    window_->create();
    const XConnection &x = host_.x();
    xcb_change_window_attributes(x.get(), nativeWindow(), XCB_CW_BACK_PIXEL,
                                 &window_traits::backgroundPixel);
    const auto &shadow = window_traits::noShadow;
    x.setNumber(nativeWindow(), shadow.name, shadow.value);
    const std::string name = events_.className() + '\0' + host_.applicationClass() + '\0';
    xcb_change_property(x.get(), XCB_PROP_MODE_REPLACE, nativeWindow(), XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(name.size()), name.data());
    presenter_.emplace(*window_, x);
    presenter_->setShaped(!host_.isBlended(), alpha_);
    setNativeOpacity();
    updateInput();
}

void DesktopWindowSurface::setNativeOpacity() const
{
    const auto &opacity = window_traits::opacity;
    host_.x().setNumber(nativeWindow(), opacity.name,
                        static_cast<std::uint32_t>(std::llround(alpha_ * opacity.value)));
}

xcb_window_t DesktopWindowSurface::nativeWindow() const
{
    return window_->handle() == nullptr ? xcb_window_t{XCB_NONE}
                                        : static_cast<xcb_window_t>(window_->winId());
}

QRect DesktopWindowSurface::pictureFrame() const
{
    return {host_.deviceSpace().topLeft(frame_), QSize(picture_.width(), picture_.height())};
}

void DesktopWindowSurface::updateInput()
{
    if (!presenter_) {
        return;
    }
    const bool blended = host_.isBlended();
    WindowShape(host_.x(), nativeWindow()).setTakesInput(blended && !ignoresMouse_);
    const bool needsShield = shown_ && !blended && !ignoresMouse_;
    if (!needsShield) {
        shield_.reset();
    } else if (!shield_) {
        PointerReceiver &receiver = *this;
        shield_.emplace(host_.x(), host_.pointerLink(), window_->geometry(), receiver);
        host_.bringToFront(*this);
    }
    // The pointer may rest, and then nothing more is heard of it.
    showOtherLook();
    host_.x().flush();
}

void DesktopWindowSurface::orderFront()
{
    if (!presenter_) {
        createNativeWindow();
    }
    shown_ = true;
    window_->setHearsPointer(!host_.pointerLink().cover(nativeWindow(), *this));
    displayIfNeeded();
    window_->setVisible(true);
    updateInput();
    host_.bringToFront(*this);
    host_.x().flush();
}

void DesktopWindowSurface::orderOut()
{
    if (!std::exchange(shown_, false)) {
        return;
    }
    painter_.forget();
    host_.takeAway(*this);
    window_->setVisible(false);
    updateInput();
    host_.x().flush();
}

void DesktopWindowSurface::raise()
{
    window_->raise();
    if (shield_) {
        shield_->raise();
    }
}

void DesktopWindowSurface::makeKey()
{
    if (shown_) {
        host_.giveKeyboard(*this);
    }
}

void DesktopWindowSurface::blendingChanged()
{
    if (!presenter_) {
        return;
    }
    presenter_->setShaped(!host_.isBlended(), alpha_);
    updateInput();
}

std::uint64_t DesktopWindowSurface::pixelsSent() const
{
    return presenter_ ? presenter_->pixelsSent() : 0;
}

void DesktopWindowSurface::setNeedsDisplay(const Rect &rect)
{
    const Rect inside = rect.intersection(bounds());
    if (inside.isEmpty()) {
        return;
    }
    dirty_ = dirty_.united(inside);
    if (shown_) {
        host_.drawSoon();
    }
}

void DesktopWindowSurface::displayIfNeeded()
{
    if (shown_ && !dirty_.isEmpty()) {
        dirty_ = {};
        draw();
    }
}

void DesktopWindowSurface::draw()
{
    const auto changed = painter_.paint(
        picture_, grid(), [this](GraphicsContext &context) { events_.draw(context, bounds()); });
    presenter_->present(picture_, changed);
    painter_.prepare();
}

void DesktopWindowSurface::exposed(const QRegion &region)
{
    host_.mainThread().call([&] {
        displayIfNeeded();
        presenter_->expose(region);
    });
}

Point DesktopWindowSurface::pointAt(const QPointF &position) const
{
    const double scale = host_.deviceSpace().scale;
    return {position.x() / scale, frame_.size.height - position.y() / scale};
}

void DesktopWindowSurface::showOtherLook()
{
    shownLook_ = nullptr;
    showLook();
}

void DesktopWindowSurface::showLook()
{
    if (!pointer_) {
        return;
    }
    const QCursor &look = looks_.at(pointAt(*pointer_));
    if (std::exchange(shownLook_, &look) == &look) {
        return;
    }
    QWindow &taker = shield_ ? shield_->cursorWindow() : *window_;
    if (taker.cursor() != look) {
        taker.setCursor(look);
        host_.x().flush();
    }
}

Event DesktopWindowSurface::eventAt(const PointerInput &input)
{
    Event event;
    event.type = eventType(input);
    event.location = pointAt(input.position);
    event.modifierFlags = input.modifierFlags;
    event.timestamp = host_.mainThread().now();
    event.windowNumber = number_;
    event.eventNumber = host_.nextEventNumber();
    if (input.action == PointerInput::Action::press) {
        clicks_.press(input.button, input.position, event.timestamp);
    }
    event.clickCount = event.type == EventType::mouseMoved ? 0 : clicks_.present();
    event.pressure = input.pressure;
    event.button = input.button;
    return event;
}

void DesktopWindowSurface::pointerEntered(const QPointF &position)
{
    pointer_ = position;
    showLook();
}

void DesktopWindowSurface::pointer(const PointerInput &input)
{
    pointerEntered(input.position);
    host_.mainThread().call([&] {
        const Event event = eventAt(input);
        const bool activates =
            event.type == EventType::leftMouseDown && (styleMask_ & style::nonactivatingPanel) == 0;
        if (activates && !isKey()) {
            makeKey();
        }
        events_.sendEvent(event);
    });
}

void DesktopWindowSurface::key(const KeyInput &input)
{
    host_.pointerLink().meet(input.moment);
    Event event;
    event.type = input.moment.down ? EventType::keyDown : EventType::keyUp;
    const std::uint64_t flag = modifierOfKey(input.virtualKey);
    // The caps lock changes when it goes down, and keys that are held change nothing more.
    if (flag != 0 && (input.isRepeat || (flag == modifier::capsLock && !input.moment.down))) {
        return;
    }
    if (flag != 0) {
        event.type = EventType::flagsChanged;
    } else {
        event.characters = input.characters;
        event.isRepeat = input.isRepeat;
    }
    host_.mainThread().call([&] {
        event.keyCode = input.virtualKey;
        event.modifierFlags = input.modifierFlags;
        event.timestamp = host_.mainThread().now();
        event.windowNumber = number_;
        event.eventNumber = host_.nextEventNumber();
        events_.sendEvent(event);
    });
}

void DesktopWindowSurface::keyboard(bool gained)
{
    host_.mainThread().call([&] { host_.keyboardMoved(*this, gained); });
}

} // namespace orv::platform

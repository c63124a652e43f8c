#pragma once

#include "platform/desktop/PointerInput.h"
#include "platform/desktop/XConnection.h"

#include <QAbstractNativeEventFilter>
#include <QRect>

#include <functional>

namespace orv::platform {

/// An invisible window that takes the pointer for a shaped one.
///
/// A window that is shaped to its ink gets no clicks beside the ink. Where it is to take the mouse
/// everywhere, this one lies right above it, as large as its frame.
///
/// Thread   main thread only.
class InputShield final : public QAbstractNativeEventFilter {
public:
    using Receiver = std::function<void(const PointerInput &)>;

    /// Not shown. `receiver` gets positions relative to the shield's top left corner; it may
    /// destroy the shield.
    InputShield(const XConnection &x, const QRect &frame, Receiver receiver);
    ~InputShield() override;
    InputShield(const InputShield &) = delete;
    InputShield &operator=(const InputShield &) = delete;

    void setFrame(const QRect &frame);
    /// Shows it above all other windows.
    void raise();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    const XConnection &x_;
    Receiver receiver_;
    xcb_window_t window_;
};

} // namespace orv::platform

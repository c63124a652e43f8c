#pragma once

#include "platform/desktop/PointerInput.h"
#include "platform/desktop/PointerLink.h"
#include "platform/desktop/XConnection.h"

#include <QAbstractNativeEventFilter>
#include <QRect>
#include <QWindow>

#include <memory>

namespace orv::platform {

/// An invisible window that takes the pointer for a shaped one.
///
/// A window that is shaped to its ink gets no clicks beside the ink. Where it is to take the mouse
/// everywhere, this one lies right above it, as large as its frame.
///
/// Thread   main thread only.
class InputShield final : public QAbstractNativeEventFilter {
public:
    /// Not shown. What it borrows outlives it. `receiver` gets positions relative to the shield's
    /// top left corner, and may destroy the shield at each.
    InputShield(const XConnection &x, PointerLink &link, const QRect &frame,
                PointerReceiver &receiver);
    ~InputShield() override;
    InputShield(const InputShield &) = delete;
    InputShield &operator=(const InputShield &) = delete;

    void setFrame(const QRect &frame);
    /// Shows it above all other windows.
    void raise();
    /// The window by which the toolkit knows it, for its cursor.
    [[nodiscard]] QWindow &cursorWindow() { return *cursorWindow_; }

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    const XConnection &x_;
    PointerLink &link_;
    PointerReceiver &receiver_;
    xcb_window_t window_;
    std::unique_ptr<QWindow> cursorWindow_;
};

} // namespace orv::platform

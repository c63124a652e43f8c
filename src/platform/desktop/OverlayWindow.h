#pragma once

#include "platform/desktop/PointerInput.h"
#include "platform/desktop/PointerLink.h"

#include <QRegion>
#include <QWindow>

#include <cstdint>
#include <string>

class QSinglePointEvent;

namespace orv::platform {

/// One key going down or up while a window of ours has the keyboard.
struct KeyInput {
    KeyMoment moment;
    bool isRepeat = false;
    std::uint16_t virtualKey = 0;
    /// After this step, with the flags of the key itself.
    std::uint64_t modifierFlags = 0;
    std::u16string characters;
};

/// What an overlay window tells its surface. Main thread only.
class OverlayWindowClient : public PointerReceiver {
public:
    /// Device pixels that the X server wants put again.
    virtual void exposed(const QRegion &region) = 0;
    virtual void key(const KeyInput &input) = 0;
    virtual void keyboard(bool gained) = 0;

protected:
    ~OverlayWindowClient() = default;
};

/// A frameless window above all others, which no window manager manages: translates what the
/// toolkit tells it and knows nothing of what it shows.
///
/// Thread   main thread only.
class OverlayWindow final : public QWindow {
public:
    explicit OverlayWindow(OverlayWindowClient &client);

    /// Nothing is told any more: the client goes before the window does.
    void detach() { client_ = nullptr; }
    /// Whether the toolkit's word of the pointer is handed on.
    void setHearsPointer(bool hears) { hearsPointer_ = hears; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void tabletEvent(QTabletEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;

private:
    void pointer(PointerInput::Action action, const QSinglePointEvent &event, double pressure);
    void key(const QKeyEvent &event, bool down);

    OverlayWindowClient *client_;
    bool hearsPointer_ = true;
};

} // namespace orv::platform

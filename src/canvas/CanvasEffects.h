#pragma once

#include <cstdint>
#include <string>

namespace orv {

/// The effects that lie on one canvas: spotlight, cover, laser pointer, the panel of a transfer.
///
/// A canvas that has none does nothing when it is asked for one. Main thread only.
class CanvasEffects {
public:
    virtual ~CanvasEffects() = default;

    virtual void doSpotLight(bool on) = 0;
    virtual void toggleSpotlight() = 0;
    /// A pinch of the client's begins or ends; `handleSpotlightPichMove` is one step of it.
    virtual void handleSpotlightPichAct(bool begin) = 0;
    virtual void handleSpotlightPichMove(std::int32_t length) = 0;
    virtual void doScreenCover(bool on) = 0;
    virtual void toggleScreenCover() = 0;
    virtual void doLaserPointer(bool on) = 0;
    [[nodiscard]] virtual bool isLaserPointer() const = 0;
    /// Cover, spotlight and laser pointer go, in this order.
    virtual void recoveryScreenShade() = 0;
    virtual void fileTransferController(bool show) = 0;
    virtual void updateFileTransferStatusDlg(const std::string &text) = 0;
};

} // namespace orv

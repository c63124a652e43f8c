#pragma once

#include "channels/OrvAnnotationDebugSetting.h"
#include "platform/ports/Displays.h"
#include "platform/values/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orv {

/// What the windows and the set of canvases need of the session.
class DisplaySession {
public:
    [[nodiscard]] virtual bool isSupportMultiScreen() const = 0;
    /// Not 0: the canvases let the mouse of this machine through.
    [[nodiscard]] virtual std::int32_t isIgnoreMouseEvent() const = 0;
    /// The display that the host wants; nothing when it is gone.
    [[nodiscard]] virtual std::optional<platform::Screen> displayScreenRequested() const = 0;
    virtual void resetAllDisplayWindow() = 0;
    /// The target of the client's gesture is forgotten, since its window may be gone.
    virtual void resetEventWindow() = 0;

protected:
    virtual ~DisplaySession() = default;
};

/// What the change from one page to another needs of the session.
class PageSession {
public:
    virtual void selectDefaultTool() = 0;
    /// 0 while no effect or dialog has taken over.
    [[nodiscard]] virtual std::int32_t isEnterSpecialMode() const = 0;
    /// Saves the page and empties its lists; which way its picture slides off is the direction's.
    virtual void saveCurrentFlipchart(std::int32_t direction, bool withAnimation) = 0;
    /// Asks what is to become of the changed snapshot; the answer goes on with the pending load of
    /// the mode with this key.
    virtual void showChangeConfirm(const std::string &annotationModeKey) = 0;

protected:
    virtual ~PageSession() = default;
};

/// All that a canvas can ask the session for.
class CanvasSession : public DisplaySession, public PageSession {
public:
    virtual void hideToolMenuToggle() = 0;
    virtual void closeAnnotationToolbox() = 0;
    virtual void maximizeAnnotationToolbox() = 0;
    virtual void minimizeAnnotationToolbox() = 0;
    virtual void setIsEnterSpecialMode(std::int32_t mode) = 0;
    virtual void setIsAnimating(bool isAnimating) = 0;
    virtual void setEditModeToolMenu(bool isEditMode) = 0;
    virtual void requestChangeTool() = 0;
    /// `base` times the width over 1024 (axis 0) or the height over 768 (any other), when larger.
    [[nodiscard]] virtual float getScreenScale(std::int32_t axis, platform::Size size,
                                               float base) const = 0;
    [[nodiscard]] virtual bool debug() const = 0;
    /// Null after the session has ended.
    [[nodiscard]] virtual OrvAnnotationDebugSetting *debugSetting() = 0;
    /// As the debug text shows it.
    [[nodiscard]] virtual std::string description() const = 0;

protected:
    virtual ~CanvasSession() = default;
};

} // namespace orv

#pragma once

#include "platform/views/Button.h"
#include "platform/views/View.h"

namespace orv {

/// The controls of the toolbox that a canvas enables, shows or hides. Each may be null.
class CanvasToolbox {
public:
    [[nodiscard]] virtual platform::Button *eraserButton() const = 0;
    [[nodiscard]] virtual platform::Button *undoButton() const = 0;
    [[nodiscard]] virtual platform::Button *redoButton() const = 0;
    [[nodiscard]] virtual platform::Button *squeegeeButton() const = 0;
    [[nodiscard]] virtual platform::Button *saveSSButton() const = 0;
    [[nodiscard]] virtual platform::Button *closeSSButton() const = 0;
    [[nodiscard]] virtual platform::Button *snapshotButton() const = 0;
    [[nodiscard]] virtual platform::Button *flipchartButton() const = 0;
    [[nodiscard]] virtual platform::View *standardAnnotationModeToolbarView() const = 0;
    [[nodiscard]] virtual platform::View *snapshotEditingModeToolbarView() const = 0;

protected:
    virtual ~CanvasToolbox() = default;
};

} // namespace orv

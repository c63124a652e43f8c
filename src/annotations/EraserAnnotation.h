#pragma once

#include "canvas/PathAnnotation.h"

namespace orv {

/// A freehand stroke that clears what was drawn before it; the list itself stays as it is.
class EraserAnnotation : public PathAnnotation {
public:
    EraserAnnotation();
    using PathAnnotation::PathAnnotation;

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;

    /// The mouse's latest position.
    [[nodiscard]] platform::Point dragOrigin() const { return dragOrigin_; }

    /// While it takes input, a ring shows what the next move will clear.
    void draw(platform::GraphicsContext &context) override;
    void mouseDownEventAtPoint(platform::Point point) override;
    void mouseDraggedEventAtPoint(platform::Point point) override;
    void mouseUpEventAtPoint(platform::Point point) override;

private:
    void drawFootprint(platform::GraphicsContext &context) const;

    platform::Point dragOrigin_;
};

} // namespace orv

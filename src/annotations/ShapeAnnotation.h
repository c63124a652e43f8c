#pragma once

#include "canvas/Annotation.h"
#include "platform/values/Path.h"

namespace orv {

/// A figure that one drag defines by a box; by itself it shows the box in grey.
class ShapeAnnotation : public Annotation {
public:
    ShapeAnnotation();
    /// The box comes back, the drag does not: a finished figure has no more need of it.
    explicit ShapeAnnotation(platform::KeyedUnarchiver &coder);

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void encodeWithCoder(platform::KeyedArchiver &coder) const override;

    /// What the figure fills; width and height are never negative.
    [[nodiscard]] const platform::Rect &shapeBoundingBox() const { return shapeBoundingBox_; }
    /// Where the mouse went down.
    [[nodiscard]] platform::Point dragOrigin() const { return dragOrigin_; }
    /// From there to the mouse's latest position, signed.
    [[nodiscard]] double dragDeltaX() const { return dragDeltaX_; }
    [[nodiscard]] double dragDeltaY() const { return dragDeltaY_; }
    /// The box is a square, as Shift asks for.
    [[nodiscard]] bool constrainDimensions() const { return constrainDimensions_; }

    void draw(platform::GraphicsContext &context) override;
    void mouseDownEventAtPoint(platform::Point point) override;
    void mouseDraggedEventAtPoint(platform::Point point) override;
    void mouseUpEventAtPoint(platform::Point point) override;
    /// A change of Shift during the drag; one that was held before the drag is not seen.
    bool shouldRedrawWithFlagsChangedEvent(const platform::Event &event) override;
    /// At least one point wide and one point high, whatever the figure in the box.
    bool shouldFinalize() override;

protected:
    /// The outline in the annotation's colour, width and dash, not filled.
    void drawOutline(platform::GraphicsContext &context, const platform::Path &outline) const;
    /// Butt caps and mitred corners: a plain line drawn before may have left others behind.
    static void setPlainCapAndJoin(platform::GraphicsContext &context);
    /// Brings a drag back from an archive; the box stays as it is.
    void restoreDrag(platform::Point origin, double deltaX, double deltaY);

private:
    void updateShapeBoundingBox();

    platform::Rect shapeBoundingBox_;
    platform::Point dragOrigin_;
    double dragDeltaX_ = 0.0;
    double dragDeltaY_ = 0.0;
    bool constrainDimensions_ = false;
};

} // namespace orv

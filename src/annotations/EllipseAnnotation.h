#pragma once

#include "annotations/ShapeAnnotation.h"

namespace orv {

/// The outline of the ellipse that fills the box.
class EllipseAnnotation : public ShapeAnnotation {
public:
    EllipseAnnotation() = default;
    using ShapeAnnotation::ShapeAnnotation;

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void draw(platform::GraphicsContext &context) override;
};

} // namespace orv

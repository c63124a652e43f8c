#pragma once

#include "annotations/ShapeAnnotation.h"

namespace orv {

/// The outline of the box.
class RectangleAnnotation : public ShapeAnnotation {
public:
    RectangleAnnotation() = default;
    using ShapeAnnotation::ShapeAnnotation;

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void draw(platform::GraphicsContext &context) override;
};

} // namespace orv

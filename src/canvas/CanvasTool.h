#pragma once

#include "canvas/Annotation.h"
#include "platform/views/Cursor.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orv {

/// What a canvas needs of the tool that new annotations come from.
class CanvasTool {
public:
    virtual ~CanvasTool() = default;

    [[nodiscard]] virtual const std::string &name() const = 0;
    /// False for a tool of the type 0.
    [[nodiscard]] virtual bool createsAnnotations() const = 0;
    [[nodiscard]] virtual std::int32_t annotationType() const = 0;
    /// A button that fires an action and is never the current tool.
    [[nodiscard]] virtual bool transient() const = 0;
    [[nodiscard]] virtual std::optional<platform::Cursor> cursor() const = 0;
    /// A new annotation with the tool's size, colour, style and dash; in no list, not yet active.
    [[nodiscard]] virtual std::shared_ptr<Annotation>
    createAnnotationInView(const std::shared_ptr<platform::View> &view) const = 0;
};

} // namespace orv

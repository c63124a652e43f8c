#pragma once

#include "platform/ports/GraphicsContext.h"
#include "platform/values/Color.h"
#include "platform/values/Geometry.h"

#include <QColor>
#include <QPainter>
#include <QTransform>

#include <cstdint>

namespace orv::platform {

/// Our words in those of the painter.

[[nodiscard]] QPainter::CompositionMode painterMode(BlendMode mode);
[[nodiscard]] QPainter::CompositionMode painterMode(CompositingOperation operation);
/// Components outside 0 to 1 come to the nearer end; one that is no number counts as 0.
[[nodiscard]] QColor painterColor(const Color &color);
/// The pixel that an opaque fill of this colour leaves.
[[nodiscard]] std::uint32_t pixelOf(const Color &color);
[[nodiscard]] QTransform painterTransform(const AffineTransform &transform);

} // namespace orv::platform

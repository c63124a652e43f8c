#pragma once

#include "canvas/CanvasDocument.h"
#include "platform/foundation/UserInfo.h"

#include <optional>
#include <string>

namespace orv {

/// The standard document of a canvas as its default file holds it.
struct SavedCanvas {
    std::string annotationModeKey;
    /// Each is nothing when the archive lacks it.
    CanvasDocument::List standardAnnotations;
    std::optional<CanvasDocument::ClearedScreens> standardClearedScreens;
    CanvasDocument::List standardUndoHistory;
};

/// One keyed archive of the mode key and the three standard lists. An annotation in progress goes
/// in as it stands.
[[nodiscard]] platform::Data encodeCanvas(const CanvasDocument &document,
                                          const std::string &annotationModeKey);

/// Throws `platform::Exception` for bytes that are no such archive.
[[nodiscard]] SavedCanvas decodeCanvas(const platform::Data &bytes);

} // namespace orv

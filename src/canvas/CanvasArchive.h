#pragma once

#include "canvas/CanvasDocument.h"
#include "platform/foundation/UserInfo.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orv {

/// The lists of one mode as they stood at one moment; any thread may read them.
struct FrozenLists {
    using List = std::vector<std::shared_ptr<const platform::Archivable>>;

    List annotations;
    std::vector<List> clearedScreens;
    List undoHistory;
};

/// Shares what is settled with the document, and copies the rest as it stands. Cheap: it does not
/// encode strokes. Main thread.
[[nodiscard]] FrozenLists frozenLists(const CanvasDocument &document, const std::string &modeKey);

/// What a canvas writes into its files; any thread may encode it.
struct FrozenCanvas {
    std::string annotationModeKey;
    /// Of the standard mode; only a default file holds them.
    FrozenLists standard;
    /// Of the present mode. A default file of the standard mode does without them.
    FrozenLists current;
    std::int32_t currentBackdrop = 0;
    /// Within the application's folder; empty for none.
    std::string flipchartImageFilePath;
    std::string backdropImageFilePath;
    std::string snapshotImageFilePath;
};

/// The state of a whole canvas: the standard lists, and those of another mode when it is in one.
[[nodiscard]] platform::Data encodeDefaultData(const FrozenCanvas &canvas);
/// The present lists, whatever their mode, as those of a snapshot.
[[nodiscard]] platform::Data encodeSnapshotData(const FrozenCanvas &canvas);
/// The present lists as those of a flipchart page.
[[nodiscard]] platform::Data encodeFlipchartData(const FrozenCanvas &canvas);

/// The lists of one mode out of a file; each is nothing when the file lacks it.
struct SavedLists {
    CanvasDocument::List annotations;
    std::optional<CanvasDocument::ClearedScreens> clearedScreens;
    CanvasDocument::List undoHistory;
};

/// What a file of any of the three kinds holds.
struct SavedCanvas {
    /// That of the standard mode when the file has none.
    std::string annotationModeKey;
    SavedLists standard;
    /// Of the file's mode, where that is another one; only its own lists are read.
    SavedLists current;
    std::int32_t annotationBackdrop = 0;
    /// As they were stored; empty for none.
    std::string flipchartImageFilePath;
    std::string backdropImageFilePath;
    std::string snapshotImageFilePath;
};

/// Reads all of it, so that a damaged file is known before anything of it counts. Throws
/// `platform::Exception` for bytes that are no such archive and for a mode that does not exist.
[[nodiscard]] SavedCanvas decodeCanvas(platform::Data bytes);

} // namespace orv

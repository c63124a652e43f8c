#pragma once

#include <string>

namespace orv {

/// The pictures that a canvas shows or is about to show; empty for none.
struct CanvasPaths {
    /// The snapshot being edited.
    std::string snapshotImageFilePath;
    /// Asked for while a confirmation may still stand between; kept afterwards.
    std::string snapshotImageFilePathPendingLoad;
    /// The saved page being edited; none for a new one.
    std::string flipchartImageFilePath;
    std::string flipchartImageFilePathPendingLoad;
    /// The user's own picture behind a flipchart.
    std::string backdropImageFilePath;
};

} // namespace orv

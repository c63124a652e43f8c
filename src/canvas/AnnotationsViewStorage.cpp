#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationsView.h"
#include "canvas/CanvasArchive.h"
#include "canvas/CanvasSaver.h"
#include "canvas/DefaultBackgroundUtilities.h"
#include "canvas/RawDataFiles.h"
#include "canvas/UserFolderPaths.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Displays.h"
#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

#include <chrono>
#include <memory>
#include <utility>

// How a canvas outlives the process, in its default file, and a saved picture's annotations stay
// editable, in the raw data beside it.

namespace orv {

namespace {

// A default file older than this is yesterday's work, and the canvas starts clean.
constexpr double kAgeLimitSeconds = 7200.0;
constexpr double kViewOnlyAgeLimitSeconds = 120.0;
// Far above any drawing done by hand; what is larger is not read into memory.
constexpr std::uint64_t kLargestArchive = 1ULL << 30U;
constexpr std::int32_t kUserImageBackdrop = 7;
constexpr float kRawBackgroundQuality = 0.95F;

platform::Files &files()
{
    return platform::Platform::current().files();
}

// A file that can't be read may still be somebody's work: it is kept, under a name that is free.
void setAside(const std::string &path, const std::string &why)
{
    const auto now = platform::Platform::current().mainThread().wallClock().time_since_epoch();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now).count();
    std::string name = fmt::format("{}.damaged-{}", path, seconds);
    for (int copy = 2; files().exists(name); ++copy) {
        name = fmt::format("{}.damaged-{}-{}", path, seconds, copy);
    }
    const bool moved = files().move(path, name);
    logLine(4,
            fmt::format("-[AnnotationsView loadDefaultAnnotationData] {} can't be read and {} "
                        "{}: {}",
                        path, moved ? "was set aside as" : "could not be set aside as", name, why));
}

std::string shown(const std::string &path)
{
    return path.empty() ? "(null)" : path;
}

CanvasSave defaultSave(const AnnotationsView &view)
{
    const std::string name = view.annoDefaultDataFileName();
    logLine(2, fmt::format(">> SAVE ANNOTATION DATA [{}] <<", name));
    const std::string &mode = view.annotationModeKey();
    const CanvasPaths &paths = view.paths();
    const auto canvas = std::make_shared<FrozenCanvas>();
    canvas->annotationModeKey = mode;
    canvas->standard = frozenLists(view.document(), AnnotationsView::annotationModeKeyStandard);
    if (mode != AnnotationsView::annotationModeKeyStandard) {
        canvas->current = frozenLists(view.document(), mode);
    }
    if (mode == AnnotationsView::annotationModeKeyFlipchart) {
        canvas->currentBackdrop = view.currentBackdrop();
        canvas->flipchartImageFilePath =
            UserFolderPaths::getAbsoluteFilePath(paths.flipchartImageFilePath);
        canvas->backdropImageFilePath =
            UserFolderPaths::getAbsoluteFilePath(paths.backdropImageFilePath);
        logLine(1,
                fmt::format("flipchartImageFilePath : [{}]", shown(paths.flipchartImageFilePath)));
        logLine(1, fmt::format("backdropImageFilePath : [{}]", shown(paths.backdropImageFilePath)));
    } else if (mode == AnnotationsView::annotationModeKeySnapshot) {
        canvas->snapshotImageFilePath =
            UserFolderPaths::getAbsoluteFilePath(paths.snapshotImageFilePath);
    }
    return {platform::joinPath(AppConstants::instance().DefaultAppDataPath, name),
            "-[AnnotationsView saveDefaultAnnotationData:]",
            [canvas] { return encodeDefaultData(*canvas); }};
}

// What shows through the ink of a flipchart, for the snapshot that is made of it.
void writeRawBackground(const AnnotationsView &view, const std::string &path)
{
    DefaultBackgroundUtilities picture(view.getFrameSize());
    const AnnotationOverlayWindow *window = view.overlayWindow();
    if (window != nullptr && window->backgroundPattern()) {
        picture.addTilePattern(window->backgroundPattern());
    } else {
        picture.addTileColor(window == nullptr ? platform::Color::clear()
                                               : window->backgroundColor());
    }
    picture.saveToFile(path, kRawBackgroundQuality);
}

} // namespace

std::string AnnotationsView::annoDefaultDataFileName() const
{
    const AppConstants &constants = AppConstants::instance();
    if (!constants.isAnnotation2()) {
        return "save.dat";
    }
    if (!constants.isSupportMultiScreen()) {
        return "save_iap.dat";
    }
    const auto own =
        overlayWindow_ == nullptr ? 0 : static_cast<std::int32_t>(overlayWindow_->displayID());
    const auto id =
        own > 0
            ? own
            : static_cast<std::int32_t>(platform::Platform::current().displays().mainDisplayID());
    return fmt::format("save_{}.dat", id);
}

void AnnotationsView::saveDefaultAnnotationData()
{
    saveOnWorker(defaultSave(*this));
}

void AnnotationsView::saveDefaultAnnotationDataAndWait()
{
    saveAtOnce(defaultSave(*this));
}

void AnnotationsView::saveSanpshotData(const std::string &path)
{
    logLine(2, ">> SAVE SNAPSHOT DATA <<");
    const std::string background = platform::joinPath(folderOf(path), stemOf(path) + ".RawBG");
    logLine(1, fmt::format("[{}]", path));
    if (annotationModeKey_ == annotationModeKeyFlipchart && currentBackdrop_ != 0) {
        logLine(1, "Save Whiteboard data to bg ...");
        writeRawBackground(*this, background);
    }
    FrozenCanvas canvas;
    canvas.current = frozenLists(document_, annotationModeKey_);
    canvas.snapshotImageFilePath = UserFolderPaths::getAbsoluteFilePath(background);
    saveAtOnce({path, "-[AnnotationsView saveSanpshotData:]",
                [&canvas] { return encodeSnapshotData(canvas); }});
}

void AnnotationsView::saveFlipchartData(const std::string &path)
{
    logLine(2, ">> SAVE FLIPCHART DATA <<");
    FrozenCanvas canvas;
    canvas.current = frozenLists(document_, annotationModeKeyFlipchart);
    canvas.currentBackdrop = currentBackdrop_;
    logLine(1, fmt::format("flipchart currentBackdrop:{}", currentBackdrop_));
    canvas.backdropImageFilePath =
        UserFolderPaths::getAbsoluteFilePath(paths_.backdropImageFilePath);
    saveAtOnce({path, "-[AnnotationsView saveFlipchartData:]",
                [&canvas] { return encodeFlipchartData(canvas); }});
}

void AnnotationsView::loadDefaultAnnotationData()
{
    const std::string folder = AppConstants::instance().DefaultAppDataPath;
    files().createFolder(folder);
    const std::string path = platform::joinPath(folder, annoDefaultDataFileName());
    bool loaded = false;
    platform::guarded([&] { loaded = loadAnnotationData(path, true); },
                      [&path](const std::string &why) { setAside(path, why); });
    if (!loaded) {
        enterStandardAnnotationMode();
    } else if (annotationModeKey_ == annotationModeKeySnapshot) {
        setIsChange(isEditMode_);
    }
    setIsPressed(false);
}

bool AnnotationsView::loadAnnotationData(const std::string &path, bool check)
{
    logLine(2,
            fmt::format("-[AnnotationsView loadAnnotationData:check:] savedDataPath : [{}]", path));
    const AppConstants &constants = AppConstants::instance();
    std::string folder = UserFolderPaths::getUserFolderFormPath(path);
    if (folder.empty()) {
        folder = constants.SanitizeDeviceName();
    }
    const auto age = files().age(path);
    if (!age) {
        return false;
    }
    const double limit = constants.isViewOnly() ? kViewOnlyAgeLimitSeconds : kAgeLimitSeconds;
    if (check && *age > limit) {
        return false;
    }
    logLine(1, "<< RESTORE ANNOTATION DATA >>");
    auto bytes = files().read(path, kLargestArchive);
    if (!bytes) {
        throw platform::Exception(path + " is no readable file");
    }
    const SavedCanvas saved = decodeCanvas(std::move(*bytes));
    restoreLists(annotationModeKeyStandard, saved.standard);
    enterStandardAnnotationMode();
    setAnnotationModeKey(saved.annotationModeKey);
    const std::string fixName = check ? std::string() : folder;
    if (annotationModeKey_ == annotationModeKeyFlipchart) {
        restoreFlipchart(saved, path, folder, fixName);
    } else if (annotationModeKey_ == annotationModeKeySnapshot) {
        restoreSnapshot(saved, fixName);
    }
    refreshToolbarBasedOnAnnotationModeKeySelection();
    refreshButtonEnabledStates();
    return true;
}

void AnnotationsView::restoreLists(const std::string &modeKey, const SavedLists &lists)
{
    if (lists.annotations) {
        document_.setAnnotations(modeKey, lists.annotations);
    }
    if (lists.clearedScreens) {
        document_.setClearedScreens(modeKey, *lists.clearedScreens);
    }
    if (lists.undoHistory) {
        document_.setUndoHistory(modeKey, lists.undoHistory);
    }
}

void AnnotationsView::restoreFlipchart(const SavedCanvas &saved, const std::string &dataPath,
                                       const std::string &folder, const std::string &fixName)
{
    setCurrentBackdrop(saved.annotationBackdrop);
    setIsEditMode(UserFolderPaths::dataInUserFolder(dataPath));
    if (!saved.flipchartImageFilePath.empty()) {
        paths_.flipchartImageFilePath =
            UserFolderPaths::autoFixOldDataPath(saved.flipchartImageFilePath, fixName);
        setIsEditMode(UserFolderPaths::dataInUserFolder(paths_.flipchartImageFilePath));
    }
    paths_.backdropImageFilePath.clear();
    if (!saved.backdropImageFilePath.empty()) {
        paths_.backdropImageFilePath =
            UserFolderPaths::autoFixOldDataPath(saved.backdropImageFilePath, folder);
        setIsEditMode(UserFolderPaths::dataInUserFolder(paths_.backdropImageFilePath));
    }
    // Empties the lists, so those of the file come after it.
    if (currentBackdrop_ == kUserImageBackdrop) {
        setCurrentBackdropUsingImageFile(paths_.backdropImageFilePath, kUserImageBackdrop);
    } else {
        enterFlipchartEditingMode(currentBackdrop_);
    }
    restoreLists(annotationModeKeyFlipchart, saved.current);
}

void AnnotationsView::restoreSnapshot(const SavedCanvas &saved, const std::string &fixName)
{
    paths_.snapshotImageFilePath =
        UserFolderPaths::autoFixOldDataPath(saved.snapshotImageFilePath, fixName);
    setIsEditMode(UserFolderPaths::dataInUserFolder(paths_.snapshotImageFilePath));
    setCurrentBackdropUsingImageFile(paths_.snapshotImageFilePath);
    restoreLists(annotationModeKeySnapshot, saved.current);
}

} // namespace orv

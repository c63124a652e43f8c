#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationsView.h"
#include "canvas/CanvasArchive.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Displays.h"
#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

#include <chrono>

// How a canvas outlives the process: its default file.

namespace orv {

namespace {

// A default file older than this is yesterday's work, and the canvas starts clean.
constexpr double kAgeLimitSeconds = 7200.0;
constexpr double kViewOnlyAgeLimitSeconds = 120.0;
// Far above any drawing done by hand; what is larger is not read into memory.
constexpr std::uint64_t kLargestArchive = 1ULL << 30U;

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
    const std::string name = annoDefaultDataFileName();
    logLine(2, fmt::format(">> SAVE ANNOTATION DATA [{}] <<", name));
    const std::string path = platform::joinPath(AppConstants::instance().DefaultAppDataPath, name);
    if (!files().writeAtomically(path, encodeCanvas(document_, annotationModeKey_))) {
        logLine(4, fmt::format("-[AnnotationsView saveDefaultAnnotationData:] {} was not written",
                               path));
    }
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
    }
    setIsPressed(false);
}

bool AnnotationsView::loadAnnotationData(const std::string &path, bool check)
{
    logLine(2,
            fmt::format("-[AnnotationsView loadAnnotationData:check:] savedDataPath : [{}]", path));
    const auto age = files().age(path);
    if (!age) {
        return false;
    }
    const double limit =
        AppConstants::instance().isViewOnly() ? kViewOnlyAgeLimitSeconds : kAgeLimitSeconds;
    if (check && *age > limit) {
        return false;
    }
    logLine(1, "<< RESTORE ANNOTATION DATA >>");
    const auto bytes = files().read(path, kLargestArchive);
    if (!bytes) {
        throw platform::Exception(path + " can't be read");
    }
    SavedCanvas saved = decodeCanvas(*bytes);
    if (saved.standardAnnotations) {
        document_.setAnnotations(annotationModeKeyStandard, saved.standardAnnotations);
    }
    if (saved.standardClearedScreens) {
        document_.setClearedScreens(annotationModeKeyStandard, *saved.standardClearedScreens);
    }
    if (saved.standardUndoHistory) {
        document_.setUndoHistory(annotationModeKeyStandard, saved.standardUndoHistory);
    }
    enterStandardAnnotationMode();
    refreshToolbarBasedOnAnnotationModeKeySelection();
    refreshButtonEnabledStates();
    return true;
}

} // namespace orv

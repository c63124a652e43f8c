#include "session/PageCapture.h"

#include "OrvAnnotation/Events.h"
#include "canvas/RawDataFiles.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/ports/Files.h"
#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"
#include "platform/views/ViewAnimation.h"
#include "session/DataFolders.h"
#include "session/ScreenPictures.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <chrono>
#include <ctime>

namespace orv {

namespace {

using platform::ImagePtr;
using platform::Point;
using platform::Rect;
using platform::Size;

constexpr std::size_t kTopWindow = 0;
constexpr std::size_t kCanvasWindow = 1;
constexpr std::int32_t kWidthAxis = 0;
constexpr std::int32_t kHeightAxis = 1;

std::string folderFor(const char *type)
{
    return platform::joinPath(AppConstants::instance().AppUserDataPath, type);
}

/// Local time to the second; a second picture of the same second takes the place of the first.
std::string newPath(const char *type)
{
    const auto now = platform::Platform::current().mainThread().wallClock();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return fmt::format("{}/IMG {:%Y-%m-%d %H-%M-%S}.jpg", folderFor(type), local);
}

/// Whoever works on a clean background means the picture that it belongs to.
std::string picturePath(const std::string &path, const char *type)
{
    const std::string folder = folderOf(path);
    const bool isRaw = folder.ends_with("/.RawData") || folder == ".RawData";
    return isRaw ? platform::joinPath(folderFor(type), stemOf(path) + ".jpg") : path;
}

/// Keeps the laser pointer out of the picture for the length of a scope.
class WithoutLaserPointer {
public:
    explicit WithoutLaserPointer(AnnotationsView &canvas) : canvas_(canvas)
    {
        const CanvasEffects *effects = canvas_.effects();
        wasOn_ = effects != nullptr && effects->isLaserPointer();
        turn(false);
    }
    ~WithoutLaserPointer() { turn(true); }
    WithoutLaserPointer(const WithoutLaserPointer &) = delete;
    WithoutLaserPointer &operator=(const WithoutLaserPointer &) = delete;

private:
    void turn(bool on)
    {
        if (wasOn_ && canvas_.effects() != nullptr) {
            canvas_.effects()->doLaserPointer(on);
        }
    }

    AnnotationsView &canvas_;
    bool wasOn_ = false;
};

void saveSnapshotRawData(const CaptureDesk &desk, const std::string &path, bool overwrite)
{
    const RawDataFiles raw(path);
    platform::Platform::current().files().createFolder(raw.folder);
    // Without its background the data could not be opened again.
    if (!overwrite ||
        saveImage(raw.background, desk.displayScreen, getWindowID(kCanvasWindow), false)) {
        desk.canvas->saveSanpshotData(raw.data);
    }
}

void saveFlipchartRawData(const CaptureDesk &desk, const std::string &path)
{
    const RawDataFiles raw(path);
    platform::Platform::current().files().createFolder(raw.folder);
    desk.canvas->saveFlipchartData(raw.data);
}

ImagePtr saveSnapshotImage(const CaptureDesk &desk, const std::string &path)
{
    return saveImage(path, desk.displayScreen, getWindowID(kTopWindow), true);
}

Point getPosition(const CaptureDesk &desk)
{
    const Point origin = desk.displayScreen ? desk.displayScreen->frame.origin : Point{};
    return desk.toolbox->frame().origin - origin;
}

Rect endOfSnapshot(const CaptureDesk &desk, const Rect &start)
{
    if (AppConstants::instance().isAnnotation2() || desk.galleryButton == nullptr) {
        return {{start.size.width / 2.0, start.size.height / 2.0}, {}};
    }
    const Point strip = desk.toolMenuView == nullptr ? Point{} : desk.toolMenuView->frame().origin;
    const Rect &button = desk.galleryButton->frame();
    return {button.origin + getPosition(desk) + strip, button.size};
}

Rect endOfPage(const Rect &start, std::int32_t direction)
{
    switch (direction) {
    case 0:
        return start.offsetBy(-start.size.width, 0.0);
    case 2:
        return start.offsetBy(0.0, -start.size.height);
    case 3:
        return start.offsetBy(0.0, start.size.height);
    default:
        return start.offsetBy(start.size.width, 0.0);
    }
}

bool isUpOrDown(std::int32_t direction)
{
    return direction == 2 || direction == 3;
}

} // namespace

std::string PageCapture::saveNewSnapshot(const CaptureDesk &desk)
{
    checkWhiteboardDataFolder();
    std::string path = newPath("Snapshot");
    saveSnapshotAtPath(desk, path, true);
    return path;
}

std::optional<std::string> PageCapture::saveCurrentSnapshot(const CaptureDesk &desk)
{
    const std::string &edited = desk.canvas->paths().snapshotImageFilePath;
    std::string path = edited.empty() ? edited : picturePath(edited, "Snapshot");
    logLine(1, fmt::format("-[AnnotationManager saveCurrentSnapshot] {}",
                           path.empty() ? "(null)" : path));
    if (path.empty()) {
        return std::nullopt;
    }
    saveSnapshotAtPath(desk, path, false);
    return path;
}

std::string PageCapture::saveNewFlipchart(const CaptureDesk &desk, std::int32_t direction)
{
    checkWhiteboardDataFolder();
    std::string path = newPath("Flipchart");
    saveFlipchartAtPath(desk, path, direction);
    return path;
}

std::string PageCapture::saveCurrentFlipchart(const CaptureDesk &desk, std::int32_t direction)
{
    const std::string &edited = desk.canvas->paths().flipchartImageFilePath;
    if (edited.empty()) {
        return saveNewFlipchart(desk, direction);
    }
    std::string path = picturePath(edited, "Flipchart");
    logLine(1, fmt::format("-[AnnotationManager saveCurrentFlipchart:withAnimation:] {}", path));
    saveFlipchartAtPath(desk, path, direction);
    return path;
}

void PageCapture::saveSnapshotAtPath(const CaptureDesk &desk, const std::string &path,
                                     bool overwrite)
{
    const WithoutLaserPointer clean(*desk.canvas);
    saveSnapshotRawData(desk, path, overwrite);
    if (const ImagePtr picture = saveSnapshotImage(desk, path)) {
        sendNotifyMeesage("snapshotTaken", 0, 0);
        SnapshotAnimation(desk, picture, path);
    }
}

void PageCapture::saveFlipchartAtPath(const CaptureDesk &desk, const std::string &path,
                                      std::int32_t direction)
{
    const WithoutLaserPointer clean(*desk.canvas);
    saveFlipchartRawData(desk, path);
    if (const ImagePtr picture = saveSnapshotImage(desk, path)) {
        if (!AppConstants::instance().isAnnotation2()) {
            flipchartAnimation(desk, picture, path, direction);
        }
        desk.canvas->clearForNewAnnotations();
    }
}

std::shared_ptr<platform::ImageView>
PageCapture::showPicture(const CaptureDesk &desk, const ImagePtr &picture, const std::string &path)
{
    const Size size = desk.canvas->getWindow()->frame().size;
    auto view = std::make_shared<platform::ImageView>(Rect{{0.0, 0.0}, size});
    view->setImage(std::make_shared<platform::PictureResource>(path, picture));
    desk.canvas->addSubview(view);
    // The views stay, but not the pixels of them all.
    if (animationView_) {
        animationView_->setImage(nullptr);
    }
    animationView_ = view;
    return view;
}

void PageCapture::SnapshotAnimation(const CaptureDesk &desk, const ImagePtr &picture,
                                    const std::string &path)
{
    const auto view = showPicture(desk, picture, path);
    const Rect start = view->frame();
    platform::ViewAnimation animation{view, start, endOfSnapshot(desk, start), true, 0.0};
    animation.seconds = desk.getScreenScale(kHeightAxis, start.size, 1.0F);
    platform::runAnimation(animation);
}

void PageCapture::flipchartAnimation(const CaptureDesk &desk, const ImagePtr &picture,
                                     const std::string &path, std::int32_t direction)
{
    const auto view = showPicture(desk, picture, path);
    const Rect start = view->frame();
    platform::ViewAnimation animation{view, start, endOfPage(start, direction), false, 0.0};
    animation.seconds =
        desk.getScreenScale(isUpOrDown(direction) ? kHeightAxis : kWidthAxis, start.size, 1.0F);
    platform::startAnimation(animation);
}

} // namespace orv

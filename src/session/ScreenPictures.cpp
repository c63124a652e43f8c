#include "session/ScreenPictures.h"

#include "channels/AnnotationToolUtilities.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/ports/Pictures.h"
#include "platform/ports/Platform.h"
#include "platform/ports/ScreenCapture.h"
#include "platform/ports/WindowServer.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace orv {

namespace {

constexpr float kJpegQuality = 0.95F;
constexpr const char *kWindowNames = "Annotation";

platform::PictureKind kindOf(const std::string &path)
{
    switch (AnnotationToolUtilities::getImageSaveType(path)) {
    case 1:
        return platform::PictureKind::png;
    case 2:
        return platform::PictureKind::bmp;
    default:
        return platform::PictureKind::jpeg;
    }
}

} // namespace

platform::Rect SnapshotWithScrnRect(const std::optional<platform::Screen> &screen)
{
    platform::Displays &displays = platform::Platform::current().displays();
    const platform::Rect frame = screen ? screen->frame : platform::Rect{};
    const platform::Rect main = displays.bounds(displays.mainDisplayID());
    if (frame == main) {
        return frame;
    }
    return platform::Rect::make(frame.origin.x,
                                main.size.height - frame.origin.y - frame.size.height,
                                frame.size.width, frame.size.height);
}

int getWindowID(std::size_t index)
{
    std::vector<platform::WindowInfo> windows =
        platform::Platform::current().windowServer().windows();
    std::erase_if(windows, [](const platform::WindowInfo &window) {
        return !window.title.starts_with(kWindowNames);
    });
    if (windows.empty()) {
        throw platform::Exception("no window of the annotations is on the screen");
    }
    // Windows of one level change places: so the rearmost canvas comes first of them, below which
    // no other display has ink either.
    std::reverse(windows.begin(), windows.end());
    std::stable_sort(windows.begin(), windows.end(),
                     [](const platform::WindowInfo &a, const platform::WindowInfo &b) {
                         return a.level > b.level;
                     });
    return windows[index < windows.size() ? index : 0].number;
}

platform::ImagePtr saveImage(const std::string &path, const std::optional<platform::Screen> &screen,
                             int windowID, bool includingWindow)
{
    platform::Platform &platform = platform::Platform::current();
    platform::ImagePtr picture =
        platform.screenCapture().capture(SnapshotWithScrnRect(screen), windowID, includingWindow);
    if (!picture) {
        logLine(4, fmt::format("{} was not written: the screen gave no picture", path));
        return nullptr;
    }
    if (!platform.pictures().save(path, *picture, kindOf(path), kJpegQuality)) {
        logLine(4, fmt::format("{} was not written", path));
        return nullptr;
    }
    return picture;
}

} // namespace orv

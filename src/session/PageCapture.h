#pragma once

#include "canvas/AnnotationCanvasHandler.h"
#include "platform/ports/Displays.h"
#include "platform/views/ImageView.h"
#include "toolbox/AnnotationToolboxWindow.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orv {

/// What a capture acts on, as it stands when a save begins. The canvas, its set and the toolbox are
/// there; the others may be null.
struct CaptureDesk {
    std::shared_ptr<AnnotationsView> canvas;
    AnnotationCanvasHandler *canvasHandler = nullptr;
    const AnnotationToolboxWindow *toolbox = nullptr;
    const platform::View *toolMenuView = nullptr;
    const platform::View *galleryButton = nullptr;
    /// The display that is captured; nothing captures nothing.
    std::optional<platform::Screen> displayScreen;
    /// The session's rule for the lengths of animations.
    std::function<float(std::int32_t axis, platform::Size size, float base)> getScreenScale;
};

/// Saves what the screen shows: a snapshot with its clean background, or a flipchart page, and
/// beside it the annotations as data.
///
/// Owns     the picture of the last animation. Its view stays in the canvas, as all before it do.
/// Thread   main thread only.
/// Fails    a capture that can't be had or written sends nothing, shows nothing and empties
///          nothing; the log says so.
class PageCapture {
public:
    /// The path of the picture, named after the present second.
    std::string saveNewSnapshot(const CaptureDesk &desk);
    /// The path; nothing when no snapshot is being edited. It keeps its clean background.
    std::optional<std::string> saveCurrentSnapshot(const CaptureDesk &desk);
    /// 0 slides to the left, 2 down, 3 up, all others to the right.
    std::string saveNewFlipchart(const CaptureDesk &desk, std::int32_t direction);
    /// A new page when the present one was never saved.
    std::string saveCurrentFlipchart(const CaptureDesk &desk, std::int32_t direction);

    /// Null before the first animation.
    [[nodiscard]] const std::shared_ptr<platform::ImageView> &AnimationView() const
    {
        return animationView_;
    }

private:
    void saveSnapshotAtPath(const CaptureDesk &desk, const std::string &path, bool overwrite);
    void saveFlipchartAtPath(const CaptureDesk &desk, const std::string &path,
                             std::int32_t direction);
    void SnapshotAnimation(const CaptureDesk &desk, const platform::ImagePtr &picture,
                           const std::string &path);
    void flipchartAnimation(const CaptureDesk &desk, const platform::ImagePtr &picture,
                            const std::string &path, std::int32_t direction);
    std::shared_ptr<platform::ImageView> showPicture(const CaptureDesk &desk,
                                                     const platform::ImagePtr &picture,
                                                     const std::string &path);

    std::shared_ptr<platform::ImageView> animationView_;
};

} // namespace orv

#include "session/AnnotationManager.h"

#include "OrvAnnotation/Events.h"
#include "platform/ports/Platform.h"

// Saving what the screen shows, and the modes that a client switches.

namespace orv {

namespace {

constexpr std::uint32_t kFlipchartMode = 1;
constexpr std::uint32_t kSnapshotMode = 2;
constexpr std::uint32_t kSpotlightMode = 3;
constexpr std::uint32_t kScreenCoverMode = 4;
constexpr std::int32_t kWhiteSheet = 1;

} // namespace

CaptureDesk AnnotationManager::captureDesk() const
{
    CaptureDesk desk;
    desk.canvas = annotationsView();
    desk.canvasHandler = canvasHandler_.get();
    desk.toolbox = outlets_.toolboxWindow.get();
    desk.toolMenuView = outlets_.toolMenuView.get();
    desk.galleryButton = outlets_.button("galleryButton").get();
    desk.displayScreen = displayScreen_;
    desk.getScreenScale = [this](std::int32_t axis, platform::Size size, float base) {
        return getScreenScale(axis, size, base);
    };
    return desk;
}

std::string AnnotationManager::saveNewSnapshot()
{
    return canvasHandler_ ? pageCapture_.saveNewSnapshot(captureDesk()) : std::string();
}

std::optional<std::string> AnnotationManager::saveCurrentSnapshot()
{
    return canvasHandler_ ? pageCapture_.saveCurrentSnapshot(captureDesk()) : std::nullopt;
}

std::string AnnotationManager::saveNewFlipchart(std::int32_t direction, bool /*withAnimation*/)
{
    return canvasHandler_ ? pageCapture_.saveNewFlipchart(captureDesk(), direction) : std::string();
}

void AnnotationManager::saveCurrentFlipchart(std::int32_t direction, bool /*withAnimation*/)
{
    if (canvasHandler_) {
        pageCapture_.saveCurrentFlipchart(captureDesk(), direction);
    }
}

void AnnotationManager::showChangeConfirm(const std::string & /*annotationModeKey*/) {}

void AnnotationManager::handleDoSave(std::uint32_t action)
{
    constexpr std::uint32_t atOnce = 1;
    if (action == atOnce) {
        platform::Platform::current().mainThread().post([self = weak_from_this()] {
            if (const auto manager = self.lock()) {
                manager->saveNewSnapshot();
            }
        });
    }
}

void AnnotationManager::enableFlipchart(bool enable)
{
    if (enable) {
        canvasHandler_->enterFlipchartEditingMode(kWhiteSheet);
        return;
    }
    const bool onPage =
        canvasHandler_->annotationModeKey() == AnnotationsView::annotationModeKeyFlipchart;
    if (onPage && canvasHandler_->currentBackdrop() != 0) {
        annotationsView()->confirmSaveFlipchart();
    }
    sendSwitchModeAckInfo(kFlipchartMode, 0, 1, 0, true, true);
    canvasHandler_->enterStandardAnnotationMode();
}

void AnnotationManager::handleOthersMode(std::uint32_t mode, std::uint8_t subMode, bool enable)
{
    if (!canvasHandler_) {
        return;
    }
    if (mode == kFlipchartMode && subMode == 0) {
        enableFlipchart(enable);
    } else if (mode == kSnapshotMode && subMode == 0 && enable) {
        annotationsView()->leaveCurrentEditingModeNotify();
    } else if (mode == kSnapshotMode && subMode != 0 && !enable) {
        canvasHandler_->setIsEditMode(true);
    } else if (mode == kSpotlightMode) {
        canvasHandler_->doSpotLight(enable);
    } else if (mode == kScreenCoverMode) {
        canvasHandler_->doScreenCover(enable);
    }
}

void AnnotationManager::leaveOthersMode()
{
    if (canvasHandler_) {
        canvasHandler_->doSpotLight(false);
        canvasHandler_->doScreenCover(false);
    }
}

} // namespace orv

#include "canvas/AnnotationCanvasHandler.h"

#include "platform/ports/Platform.h"

// Which canvas a request to the set is for: every one of them, or the main one.

namespace orv {

namespace {

using Lock = platform::Monitor::Hold;

// What an empty canvas would answer stands in for a main canvas that is not there.
template <class Answer>
auto answerOf(const AnnotationsView *view, Answer answer) -> decltype(answer(*view))
{
    return view == nullptr ? decltype(answer(*view)){} : answer(*view);
}

} // namespace

void AnnotationCanvasHandler::setIsHidden(bool hidden)
{
    forEachCanvas([hidden](AnnotationsView &view) { view.setIsHidden(hidden); });
}

void AnnotationCanvasHandler::setIsChange(bool isChange)
{
    forEachCanvas([isChange](AnnotationsView &view) { view.setIsChange(isChange); });
}

void AnnotationCanvasHandler::setIsEditMode(bool isEditMode)
{
    forEachCanvas([isEditMode](AnnotationsView &view) { view.setIsEditMode(isEditMode); });
}

void AnnotationCanvasHandler::setIsEditModePendingSet(bool pending)
{
    forEachCanvas([pending](AnnotationsView &view) { view.setIsEditModePendingSet(pending); });
}

void AnnotationCanvasHandler::setAnnotationModeKey(const std::string &key)
{
    forEachCanvas([&key](AnnotationsView &view) { view.setAnnotationModeKey(key); });
}

void AnnotationCanvasHandler::setCurrentBackdrop(std::int32_t backdrop)
{
    forEachCanvas([backdrop](AnnotationsView &view) { view.setCurrentBackdrop(backdrop); });
}

void AnnotationCanvasHandler::setSnapshotImageFilePath(const std::string &path)
{
    forEachCanvas([&path](AnnotationsView &view) { view.setSnapshotImageFilePath(path); });
}

void AnnotationCanvasHandler::setSnapshotImageFilePathPendingLoad(const std::string &path)
{
    forEachCanvas(
        [&path](AnnotationsView &view) { view.setSnapshotImageFilePathPendingLoad(path); });
}

void AnnotationCanvasHandler::setIsComfirmMode(bool isComfirmMode)
{
    forEachCanvas([isComfirmMode](AnnotationsView &view) { view.setIsComfirmMode(isComfirmMode); });
}

void AnnotationCanvasHandler::setFlipchartImageFilePath(const std::string &path)
{
    forEachCanvas([&path](AnnotationsView &view) { view.setFlipchartImageFilePath(path); });
}

void AnnotationCanvasHandler::setFlipchartImageFilePathPendingLoad(const std::string &path)
{
    forEachCanvas(
        [&path](AnnotationsView &view) { view.setFlipchartImageFilePathPendingLoad(path); });
}

void AnnotationCanvasHandler::setBackdropImageFilePath(const std::string &path)
{
    forEachCanvas([&path](AnnotationsView &view) { view.setBackdropImageFilePath(path); });
}

void AnnotationCanvasHandler::setCurrentTool(const std::shared_ptr<CanvasTool> &tool)
{
    forEachCanvas([&tool](AnnotationsView &view) { view.setCurrentTool(tool); });
}

void AnnotationCanvasHandler::setCurrentCursor(const std::optional<platform::Cursor> &cursor)
{
    forEachCanvas([&cursor](AnnotationsView &view) { view.setCurrentCursor(cursor); });
}

void AnnotationCanvasHandler::resetCursorRects()
{
    forEachCanvas([](AnnotationsView &view) { view.resetCursorRects(); });
}

void AnnotationCanvasHandler::refreshCursor()
{
    forEachCanvas([](AnnotationsView &view) { view.refreshCursor(); });
}

void AnnotationCanvasHandler::refreshButtonEnabledStates()
{
    forEachCanvas([](AnnotationsView &view) { view.refreshButtonEnabledStates(); });
}

void AnnotationCanvasHandler::clearForNewAnnotations()
{
    forEachCanvas([](AnnotationsView &view) { view.clearForNewAnnotations(); });
}

void AnnotationCanvasHandler::clearAnnotations(const platform::Button *sender)
{
    forEachCanvas([sender](AnnotationsView &view) { view.clearAnnotations(sender); });
}

void AnnotationCanvasHandler::enterFlipchartEditingMode(std::int32_t backdrop)
{
    forEachCanvas([backdrop](AnnotationsView &view) { view.enterFlipchartEditingMode(backdrop); });
}

void AnnotationCanvasHandler::enterStandardAnnotationMode()
{
    forEachCanvas([](AnnotationsView &view) { view.enterStandardAnnotationMode(); });
}

void AnnotationCanvasHandler::loadDefaultAnnotationData()
{
    forEachCanvas([](AnnotationsView &view) { view.loadDefaultAnnotationData(); });
}

void AnnotationCanvasHandler::saveDefaultAnnotationData()
{
    forEachCanvas([](AnnotationsView &view) { view.saveDefaultAnnotationData(); });
}

void AnnotationCanvasHandler::saveDefaultAnnotationDataAndWait()
{
    forEachCanvas([](AnnotationsView &view) { view.saveDefaultAnnotationDataAndWait(); });
}

void AnnotationCanvasHandler::forEachEffects(
    const std::function<void(CanvasEffects &)> &visit) const
{
    forEachCanvas([&visit](AnnotationsView &view) {
        if (CanvasEffects *effects = view.effects()) {
            visit(*effects);
        }
    });
}

void AnnotationCanvasHandler::handleSpotlightPichAct(bool begin)
{
    forEachEffects([begin](CanvasEffects &effects) { effects.handleSpotlightPichAct(begin); });
}

void AnnotationCanvasHandler::handleSpotlightPichMove(std::int32_t length)
{
    forEachEffects([length](CanvasEffects &effects) { effects.handleSpotlightPichMove(length); });
}

void AnnotationCanvasHandler::recoveryScreenShade()
{
    forEachEffects([](CanvasEffects &effects) { effects.recoveryScreenShade(); });
}

void AnnotationCanvasHandler::doSpotLight(bool on)
{
    forEachEffects([on](CanvasEffects &effects) { effects.doSpotLight(on); });
}

void AnnotationCanvasHandler::doScreenCover(bool on)
{
    forEachEffects([on](CanvasEffects &effects) { effects.doScreenCover(on); });
}

void AnnotationCanvasHandler::doLaserPointer(bool on)
{
    forEachEffects([on](CanvasEffects &effects) { effects.doLaserPointer(on); });
}

void AnnotationCanvasHandler::toggleSpotlight()
{
    forEachEffects([](CanvasEffects &effects) { effects.toggleSpotlight(); });
}

void AnnotationCanvasHandler::toggleScreenCover()
{
    forEachEffects([](CanvasEffects &effects) { effects.toggleScreenCover(); });
}

void AnnotationCanvasHandler::setStyleMask(std::uint32_t mask)
{
    const Lock lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        window->setStyleMask(mask);
    }
}

bool AnnotationCanvasHandler::isHidden() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) { return view.isHidden(); });
}

bool AnnotationCanvasHandler::isChange() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) { return view.isChange(); });
}

bool AnnotationCanvasHandler::isEditMode() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) { return view.isEditMode(); });
}

bool AnnotationCanvasHandler::isEditModePendingSet() const
{
    return answerOf(mainView(),
                    [](const AnnotationsView &view) { return view.isEditModePendingSet(); });
}

std::string AnnotationCanvasHandler::annotationModeKey() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) {
        return std::string(view.annotationModeKey());
    });
}

std::int32_t AnnotationCanvasHandler::currentBackdrop() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) { return view.currentBackdrop(); });
}

bool AnnotationCanvasHandler::isComfirmMode() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) { return view.isComfirmMode(); });
}

std::int32_t AnnotationCanvasHandler::currentAnnotationMode() const
{
    return answerOf(mainView(),
                    [](const AnnotationsView &view) { return view.currentAnnotationMode(); });
}

bool AnnotationCanvasHandler::hasAnnotations() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) { return view.hasAnnotations(); });
}

bool AnnotationCanvasHandler::hasHistoryAnnotations() const
{
    return answerOf(mainView(),
                    [](const AnnotationsView &view) { return view.hasHistoryAnnotations(); });
}

std::string AnnotationCanvasHandler::snapshotImageFilePath() const
{
    return answerOf(mainView(),
                    [](const AnnotationsView &view) { return view.paths().snapshotImageFilePath; });
}

std::string AnnotationCanvasHandler::snapshotImageFilePathPendingLoad() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) {
        return view.paths().snapshotImageFilePathPendingLoad;
    });
}

std::string AnnotationCanvasHandler::flipchartImageFilePath() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) {
        return view.paths().flipchartImageFilePath;
    });
}

std::string AnnotationCanvasHandler::flipchartImageFilePathPendingLoad() const
{
    return answerOf(mainView(), [](const AnnotationsView &view) {
        return view.paths().flipchartImageFilePathPendingLoad;
    });
}

std::string AnnotationCanvasHandler::backdropImageFilePath() const
{
    return answerOf(mainView(),
                    [](const AnnotationsView &view) { return view.paths().backdropImageFilePath; });
}

std::uint32_t AnnotationCanvasHandler::styleMask() const
{
    const AnnotationOverlayWindow *window = mainCanvas();
    return window == nullptr ? 0 : window->styleMask();
}

CanvasEffects *AnnotationCanvasHandler::mainEffects() const
{
    const AnnotationsView *view = mainView();
    return view == nullptr ? nullptr : view->effects();
}

bool AnnotationCanvasHandler::isLaserPointer() const
{
    const CanvasEffects *effects = mainEffects();
    return effects != nullptr && effects->isLaserPointer();
}

void AnnotationCanvasHandler::fileTransferController(bool show)
{
    if (CanvasEffects *effects = mainEffects()) {
        effects->fileTransferController(show);
    }
}

void AnnotationCanvasHandler::updateFileTransferStatusDlg(const std::string &text)
{
    if (CanvasEffects *effects = mainEffects()) {
        effects->updateFileTransferStatusDlg(text);
    }
}

void AnnotationCanvasHandler::requestHelp()
{
    if (AnnotationsView *view = mainView()) {
        view->requestHelp();
    }
}

void AnnotationCanvasHandler::ShowOrHideToolBar(bool show)
{
    if (AnnotationsView *view = mainView()) {
        view->ShowOrHideToolBar(show);
    }
}

void AnnotationCanvasHandler::undoAnnotation()
{
    if (AnnotationsView *view = mainView()) {
        view->refreshButtonEnabledStates();
    }
}

void AnnotationCanvasHandler::redoAnnotation()
{
    undoAnnotation();
}

void AnnotationCanvasHandler::clearAnnotationsWithSqueegee()
{
    const Lock lock(monitor_);
    for (const auto &[id, window] : CanvasDict(canvasDict_)) {
        const auto view = window->annotationsView();
        if (view->hasAnnotations()) {
            platform::Platform::current().mainThread().post(
                [view] { view->clearAnnotationsWithSqueegee(); });
        }
    }
}

std::optional<bool> AnnotationCanvasHandler::isPressed(const AnnotationOverlayWindow * /*window*/)
{
    return isPressed_;
}

void AnnotationCanvasHandler::mouseStatus(const AnnotationOverlayWindow * /*window*/, bool pressed)
{
    isPressed_ = pressed;
}

} // namespace orv

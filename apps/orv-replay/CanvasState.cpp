#include "orv-replay/CanvasState.h"

#include "orv-replay/AnnotationState.h"
#include "orv-replay/SessionState.h"

#include <array>

namespace orv::apps {

namespace {

constexpr std::array kModes{AnnotationsView::annotationModeKeyStandard,
                            AnnotationsView::annotationModeKeySnapshot,
                            AnnotationsView::annotationModeKeyFlipchart};

OutputJson listState(const CanvasDocument::List &list)
{
    OutputJson state = OutputJson::array();
    for (const auto &annotation : *list) {
        state.push_back(annotationState(*annotation));
    }
    return state;
}

void addDocument(OutputJson &state, const CanvasDocument &document)
{
    OutputJson annotations = OutputJson::object();
    OutputJson cleared = OutputJson::object();
    OutputJson undone = OutputJson::object();
    for (const char *mode : kModes) {
        if (const auto list = document.annotations(mode)) {
            annotations[mode] = listState(list);
        }
        if (const auto *screens = document.clearedScreens(mode)) {
            cleared[mode] = OutputJson::array();
            for (const auto &screen : *screens) {
                cleared[mode].push_back(listState(screen));
            }
        }
        if (const auto list = document.undoHistory(mode)) {
            undone[mode] = listState(list);
        }
    }
    state["annotations"] = std::move(annotations);
    state["clearedScreens"] = std::move(cleared);
    state["undoHistory"] = std::move(undone);
}

OutputJson pathOrNull(const std::string &path, const std::string &home)
{
    return path.empty() ? OutputJson(nullptr) : OutputJson(relativePath(path, home));
}

void addPaths(OutputJson &state, const CanvasPaths &paths, const std::string &home)
{
    state["snapshotImageFilePath"] = pathOrNull(paths.snapshotImageFilePath, home);
    state["flipchartImageFilePath"] = pathOrNull(paths.flipchartImageFilePath, home);
    state["backdropImageFilePath"] = pathOrNull(paths.backdropImageFilePath, home);
}

OutputJson canvasState(const AnnotationOverlayWindow &window, const std::string &home)
{
    const AnnotationsView &view = *window.annotationsView();
    const std::string &mode = view.annotationModeKey();
    OutputJson state{{"displayID", window.displayID()},
                     {"isMain", window.isMain()},
                     {"enable", window.enable()},
                     {"isVisible", window.isVisible()},
                     {"annotationModeKey", mode.empty() ? OutputJson(nullptr) : OutputJson(mode)},
                     {"currentAnnotationMode", view.currentAnnotationMode()},
                     {"isChange", view.isChange()},
                     {"isEditMode", view.isEditMode()},
                     {"isEditModePendingSet", view.isEditModePendingSet()},
                     {"isPressed", view.ownIsPressed()},
                     {"isHidden", view.isHidden()},
                     {"currentBackdrop", view.currentBackdrop()},
                     {"currentTool", toolName(view.currentTool().get())}};
    addPaths(state, view.paths(), home);
    addDocument(state, view.document());
    return state;
}

} // namespace

OutputJson canvasesState(const AnnotationManager &manager, const std::string &home)
{
    OutputJson state = OutputJson::array();
    if (const AnnotationCanvasHandler *handler = manager.canvasHandler()) {
        for (const auto &[id, window] : handler->canvasDict()) {
            state.push_back(canvasState(*window, home));
        }
    }
    return state;
}

} // namespace orv::apps

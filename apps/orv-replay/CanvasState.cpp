#include "orv-replay/CanvasState.h"

#include "canvas/PathAnnotation.h"
#include "orv-replay/SessionState.h"

#include <array>

namespace orv::apps {

namespace {

constexpr std::array kModes{AnnotationsView::annotationModeKeyStandard,
                            AnnotationsView::annotationModeKeySnapshot,
                            AnnotationsView::annotationModeKeyFlipchart};

OutputJson pathState(const platform::Path &path)
{
    OutputJson elements = OutputJson::array();
    path.forEach([&elements](const platform::Path::Element &element) {
        OutputJson item = OutputJson::array({static_cast<int>(element.type)});
        for (int i = 0; i < platform::pointCount(element.type); ++i) {
            item.push_back(element.points[i].x);
            item.push_back(element.points[i].y);
        }
        elements.push_back(std::move(item));
    });
    return elements;
}

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

OutputJson canvasState(const AnnotationOverlayWindow &window)
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
    addDocument(state, view.document());
    return state;
}

} // namespace

OutputJson canvasesState(const AnnotationManager &manager)
{
    OutputJson state = OutputJson::array();
    if (const AnnotationCanvasHandler *handler = manager.canvasHandler()) {
        for (const auto &[id, window] : handler->canvasDict()) {
            state.push_back(canvasState(*window));
        }
    }
    return state;
}

OutputJson annotationState(const Annotation &annotation)
{
    OutputJson state{{"annotationType", annotation.annotationType()},
                     {"class", annotation.className()},
                     {"annotationSize", annotation.annotationSize()},
                     {"annotationStyle", annotation.annotationStyle()},
                     {"blendMode", static_cast<std::int32_t>(annotation.blendMode())},
                     {"color", colorState(annotation.color())},
                     {"dashMode", annotation.dashMode()},
                     {"isActive", annotation.isActive()}};
    if (const auto *stroke = dynamic_cast<const PathAnnotation *>(&annotation)) {
        state["path"] = pathState(stroke->path());
    }
    return state;
}

} // namespace orv::apps

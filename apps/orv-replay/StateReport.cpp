#include "orv-replay/StateReport.h"

#include "channels/controller/ControllerParts.h"
#include "orv-replay/CanvasState.h"
#include "orv-replay/ReplayHost.h"
#include "orv-replay/SessionState.h"
#include "orv-replay/WindowState.h"

namespace orv::apps {

OutputJson stateReport(ReplayHost &host)
{
    OutputJson state = OutputJson::object();
    if (AnnotationController *controller = host.controller()) {
        const ControllerState &parts = controller->parts().state;
        state["controller"] = controllerState(parts);
        state["paths"] = pathsState(host.folders().home);
        state["tools"] = OutputJson::object();
        state["canvases"] = OutputJson::array();
        if (const AnnotationManager *manager = parts.m_annotationManager.get()) {
            state["manager"] = managerState(*manager);
            state["tools"] = toolsState(manager->tools());
            state["canvases"] = canvasesState(*manager, host.folders().home);
        }
    }
    state["windows"] = windowsState(host.platform().windowServer());
    return state;
}

} // namespace orv::apps

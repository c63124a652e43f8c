#pragma once

#include "canvas/PathAnnotation.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "session/AnnotationManager.h"
#include "support/EventLog.h"
#include "support/VirtualDesk.h"

#include <memory>
#include <string>
#include <vector>

namespace orv::test {

/// A session without a controller, on a virtual desk; its windows are loaded by `load`.
class SessionDesk : public VirtualDesk {
protected:
    SessionDesk() { OrvFrameworkLogger::shared().setStandardOutput(false); }
    ~SessionDesk() override
    {
        if (manager) {
            manager->terminate();
        }
        manager.reset();
        AppConstants::destroy();
        OrvFrameworkLogger::release();
    }
    void make(std::uint32_t plugin)
    {
        manager = std::make_shared<AnnotationManager>(plugin);
        manager->setDisplayID(1);
        manager->setDimension({1440.0, 900.0}, {1440.0, 900.0});
    }
    void open(std::uint32_t plugin)
    {
        make(plugin);
        manager->showWindow();
        manager->openAnnotationToolbox();
        drain();
    }
    [[nodiscard]] AnnotationsView &canvas() { return *manager->annotationsView(); }
    [[nodiscard]] std::size_t annotationCount()
    {
        return canvas().document().annotationCount(canvas().annotationModeKey());
    }
    void localStroke(platform::Point from, platform::Point to)
    {
        desk.input().sendMouse(platform::EventType::leftMouseDown, from);
        desk.input().sendMouse(platform::EventType::leftMouseDragged, to);
        desk.input().sendMouse(platform::EventType::leftMouseUp, to);
        drain();
    }
    [[nodiscard]] std::string saveFile(const std::string &name) const
    {
        return AppConstants::instance().DefaultAppDataPath + name;
    }

    std::shared_ptr<AnnotationManager> manager;
};

} // namespace orv::test

#pragma once

#include "platform/values/Geometry.h"
#include "platform/views/View.h"

#include <memory>

namespace orv::platform {

/// A view's way from one frame to another, slow at both ends.
struct ViewAnimation {
    std::shared_ptr<View> view;
    /// In the points of its superview.
    Rect startFrame;
    Rect endFrame;
    /// It becomes transparent on the way and is hidden at the end.
    bool fadesOut = false;
    /// 0 and less: it is at the end at once.
    double seconds = 0.0;
};

/// Holds the main thread until the view is there. Main thread only.
void runAnimation(const ViewAnimation &animation);

/// Returns at once; the view goes its way by itself and is kept until it is there. Main thread
/// only.
void startAnimation(const ViewAnimation &animation);

} // namespace orv::platform

#include "platform/views/ViewAnimation.h"

#include "platform/ports/MainThread.h"
#include "platform/ports/Platform.h"

#include <algorithm>

namespace orv::platform {

namespace {

constexpr double kFrameSeconds = 1.0 / 60.0;
/// Less than this is no time left.
constexpr double kInstant = 1e-6;

double easeInOut(double part)
{
    return part * part * (3.0 - 2.0 * part);
}

double between(double from, double to, double part)
{
    return from + (to - from) * part;
}

/// `part` from 0.0 at the start to 1.0 at the end of its time.
void show(const ViewAnimation &animation, double part)
{
    const double way = easeInOut(part);
    const Rect &from = animation.startFrame;
    const Rect &to = animation.endFrame;
    if (animation.fadesOut) {
        animation.view->setAlpha(1.0 - way);
    }
    animation.view->setFrame(Rect::make(between(from.origin.x, to.origin.x, way),
                                        between(from.origin.y, to.origin.y, way),
                                        between(from.size.width, to.size.width, way),
                                        between(from.size.height, to.size.height, way)));
}

void finish(const ViewAnimation &animation)
{
    animation.view->setFrame(animation.endFrame);
    if (animation.fadesOut) {
        animation.view->setHidden(true);
        animation.view->setAlpha(1.0);
    }
}

MainThread &mainThread()
{
    return Platform::current().mainThread();
}

/// An animation that goes on by itself; its timer keeps it, and it ends its timer.
struct Running {
    ViewAnimation animation;
    double start = 0.0;
    TaskHandle timer;
};

} // namespace

void runAnimation(const ViewAnimation &animation)
{
    // By the clock: where frames are slow there are fewer of them, and it takes no longer.
    const double start = mainThread().now();
    double passed = 0.0;
    while (animation.seconds - passed > kInstant) {
        mainThread().block(std::min(kFrameSeconds, animation.seconds - passed));
        passed = mainThread().now() - start;
        show(animation, std::min(1.0, passed / animation.seconds));
    }
    finish(animation);
}

void startAnimation(const ViewAnimation &animation)
{
    if (!(animation.seconds > 0.0)) {
        finish(animation);
        return;
    }
    show(animation, 0.0);
    const auto running = std::make_shared<Running>();
    running->animation = animation;
    running->start = mainThread().now();
    running->timer = mainThread().every(kFrameSeconds, [running] {
        const ViewAnimation &own = running->animation;
        const double part = (mainThread().now() - running->start) / own.seconds;
        if (part < 1.0) {
            show(own, part);
            return;
        }
        finish(own);
        const TaskHandle ended = std::move(running->timer);
    });
}

} // namespace orv::platform

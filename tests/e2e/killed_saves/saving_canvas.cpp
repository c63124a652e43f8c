#include "canvas/AnnotationOverlayWindow.h"
#include "canvas/AnnotationRegistry.h"
#include "canvas/AnnotationsView.h"
#include "canvas/PathAnnotation.h"
#include "channels/AppConstants.h"
#include "channels/OrvFrameworkLogger.h"
#include "platform/foundation/Exception.h"
#include "platform/virtual/VirtualPlatform.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

// Draws and saves without end, for somebody to kill it: "opened FIRST LAST COUNT" tells which
// strokes its file has brought back, "saved LAST" after each save up to which stroke that went.
// Strokes are numbered by where they begin.

namespace {

using namespace orv;
using platform::Point;

constexpr std::size_t kMostStrokes = 150;
constexpr int kPointsAStroke = 60;

void say(const std::string &line)
{
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

/// The number of a whole stroke; -1 for one that lacks points.
long numberOf(const Annotation &annotation)
{
    const auto &path = dynamic_cast<const PathAnnotation &>(annotation).path();
    const Point end = path.currentPoint();
    const bool isWhole = path.elementCount() == kPointsAStroke + 1 && end.y == kPointsAStroke - 1;
    return isWhole ? static_cast<long>(end.x) : -1;
}

class SavingCanvas {
public:
    explicit SavingCanvas(const std::string &home) : desk_(settings(home))
    {
        platform::Platform::install(&desk_);
        registerStrokeAnnotations(AnnotationRegistry::shared());
        OrvFrameworkLogger::shared().setLevel("OrvAnnotation", 4);
        AppConstants::instance().setAppActUniqueID(16);
        AppConstants::instance().DefaultAppDataPath = home + "/data/";
        window_ = std::make_shared<AnnotationOverlayWindow>(0);
        canvas_ = std::make_shared<AnnotationsView>(window_->frame());
        window_->setAnnotationsView(canvas_);
        canvas_->loadDefaultAnnotationData();
    }

    void tellWhatCameBack()
    {
        const AnnotationList &list = strokes();
        long first = 0;
        for (const auto &annotation : list) {
            const long number = numberOf(*annotation);
            if (number < 0 || (last_ != 0 && number != last_ + 1)) {
                say("broken after " + std::to_string(last_));
            }
            first = first == 0 ? number : first;
            last_ = number;
        }
        say("opened " + std::to_string(first) + " " + std::to_string(last_) + " " +
            std::to_string(list.size()));
    }
    [[noreturn]] void saveWithoutEnd()
    {
        for (;;) {
            if (strokes().size() >= kMostStrokes) {
                canvas_->clearForNewAnnotations();
            }
            drawNext();
            if (last_ % 2 == 0) {
                canvas_->saveDefaultAnnotationDataAndWait();
            } else {
                canvas_->saveDefaultAnnotationData();
                desk_.mainThread().drain();
            }
            say("saved " + std::to_string(last_));
        }
    }

private:
    static platform::VirtualSettings settings(const std::string &home)
    {
        platform::VirtualSettings settings;
        settings.home = home;
        settings.resources = ORV_BUILT_RESOURCES;
        // A kill may come before the file has its virtual time.
        settings.wallClock = std::chrono::system_clock::now();
        return settings;
    }
    [[nodiscard]] const AnnotationList &strokes() const
    {
        return *canvas_->document().annotations(canvas_->annotationModeKey());
    }
    void drawNext()
    {
        const auto stroke = Annotation::annotationOfType(annotation_type::pen);
        const auto x = static_cast<double>(++last_);
        stroke->mouseDownEventAtPoint({x, 0.0});
        for (int point = 1; point < kPointsAStroke; ++point) {
            stroke->mouseDraggedEventAtPoint({x, static_cast<double>(point)});
        }
        stroke->mouseUpEventAtPoint({x, kPointsAStroke - 1.0});
        canvas_->document().annotations(canvas_->annotationModeKey())->push_back(stroke);
    }

    platform::VirtualPlatform desk_;
    std::shared_ptr<AnnotationOverlayWindow> window_;
    std::shared_ptr<AnnotationsView> canvas_;
    long last_ = 0;
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: saving_canvas HOME\n", stderr);
        return 2;
    }
    orv::platform::guarded(
        [argv] {
            SavingCanvas canvas(argv[1]);
            canvas.tellWhatCameBack();
            canvas.saveWithoutEnd();
        },
        [](const std::string &why) { std::fputs((why + "\n").c_str(), stderr); });
    return 1;
}

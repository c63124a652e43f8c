#include "annotations/FigureAnnotations.h"
#include "canvas/CanvasDesk.h"
#include "channels/OrvFrameworkLogger.h"
#include "support/RecordingContext.h"

#include <mutex>
#include <thread>
#include <utility>
#include <vector>

// Saves on real worker threads while the main thread goes on drawing: the thread sanitizer sees
// whether both touch the same thing, and the file tells which save has won.

namespace orv::test {
namespace {

using platform::Task;

/// The virtual main thread, but with a thread of its own for each background task.
class MainThreadWithWorkers final : public platform::MainThread {
public:
    explicit MainThreadWithWorkers(platform::MainThread &inner) : inner_(inner) {}
    ~MainThreadWithWorkers() override { join(); }

    void join()
    {
        std::vector<std::thread> workers;
        {
            const std::lock_guard lock(mutex_);
            workers.swap(workers_);
        }
        for (std::thread &worker : workers) {
            worker.join();
        }
    }
    void background(Task task) override
    {
        const std::lock_guard lock(mutex_);
        workers_.emplace_back(std::move(task));
    }
    void setErrorSink(ErrorSink sink) override { inner_.setErrorSink(std::move(sink)); }
    [[nodiscard]] bool isCurrent() const override { return inner_.isCurrent(); }
    void post(Task task) override { inner_.post(std::move(task)); }
    void postAndWait(Task task) override { inner_.postAndWait(std::move(task)); }
    [[nodiscard]] platform::TaskHandle after(double seconds, Task task) override
    {
        return inner_.after(seconds, std::move(task));
    }
    [[nodiscard]] platform::TaskHandle every(double seconds, Task task) override
    {
        return inner_.every(seconds, std::move(task));
    }
    void block(double seconds) override { inner_.block(seconds); }
    [[nodiscard]] double now() const override { return inner_.now(); }
    [[nodiscard]] std::chrono::system_clock::time_point wallClock() const override
    {
        return inner_.wallClock();
    }

private:
    platform::MainThread &inner_;
    std::mutex mutex_;
    std::vector<std::thread> workers_;
};

/// A virtual desk with such a main thread.
class DeskWithWorkers final : public platform::Platform {
public:
    explicit DeskWithWorkers(platform::VirtualPlatform &desk)
        : desk_(desk), mainThread_(desk.mainThread())
    {
    }
    MainThreadWithWorkers &mainThread() override { return mainThread_; }
    platform::Displays &displays() override { return desk_.displays(); }
    platform::WindowServer &windowServer() override { return desk_.windowServer(); }
    platform::Applications &applications() override { return desk_.applications(); }
    platform::Files &files() override { return desk_.files(); }
    platform::Pictures &pictures() override { return desk_.pictures(); }
    platform::Processes &processes() override { return desk_.processes(); }
    platform::ScreenCapture &screenCapture() override { return desk_.screenCapture(); }
    platform::SystemLog &systemLog() override { return desk_.systemLog(); }

private:
    platform::VirtualPlatform &desk_;
    MainThreadWithWorkers mainThread_;
};

class SavingBesideDrawing : public CanvasDesk {
protected:
    SavingBesideDrawing()
    {
        registerFigureAnnotations(AnnotationRegistry::shared());
        OrvFrameworkLogger::shared().setStandardOutput(false);
        canvas->loadDefaultAnnotationData();
        platform::Platform::install(&workers);
    }
    ~SavingBesideDrawing() override
    {
        workers.mainThread().join();
        platform::Platform::install(&desk);
        OrvFrameworkLogger::release();
    }
    void drawAll()
    {
        RecordingContext context;
        for (const auto &annotation : annotations()) {
            annotation->draw(context);
        }
    }
    void useDashedLine()
    {
        class DashedLineTool : public FakeTool {
        public:
            DashedLineTool() : FakeTool(annotation_type::line) {}
            [[nodiscard]] std::shared_ptr<Annotation>
            createAnnotationInView(const std::shared_ptr<platform::View> &view) const override
            {
                constexpr std::int32_t dashed = 3;
                auto line = FakeTool::createAnnotationInView(view);
                line->setStyle(dashed);
                return line;
            }
        };
        canvas->setCurrentTool(std::make_shared<DashedLineTool>());
    }
    std::size_t savedCount()
    {
        const auto other = std::make_shared<AnnotationsView>(window->frame());
        EXPECT_TRUE(other->loadAnnotationData(
            home.path() + "/data/" + other->annoDefaultDataFileName(), false));
        return other->document().annotationCount(AnnotationsView::annotationModeKeyStandard);
    }

    DeskWithWorkers workers{desk};
};

TEST_F(SavingBesideDrawing, AStrokeGrowsWhileItIsSaved)
{
    press({0.0, 0.0});
    for (int i = 1; i <= 2000; ++i) {
        drag({static_cast<double>(i), 1.0});
        if (i % 50 == 0) {
            canvas->saveDefaultAnnotationData();
        }
    }
    workers.mainThread().join();

    EXPECT_EQ(savedCount(), 1U);
}

TEST_F(SavingBesideDrawing, ADashedLineIsFirstDrawnWhileItIsSaved)
{
    useDashedLine();
    for (int i = 0; i < 30; ++i) {
        stroke({0.0, 0.0}, {50.0, 50.0});
        canvas->saveDefaultAnnotationData();
        drawAll();
    }
    workers.mainThread().join();

    EXPECT_EQ(savedCount(), 30U);
}

TEST_F(SavingBesideDrawing, ATextIsTypedAndFinishedWhileItIsSaved)
{
    canvas->setCurrentTool(std::make_shared<FakeTool>(annotation_type::text, 20.0F));
    platform::Event key = keyOf(0);
    key.characters = u"x";
    for (int i = 0; i < 10; ++i) {
        press({5.0, 5.0});
        release({5.0, 5.0});
        for (int typed = 0; typed < 10; ++typed) {
            canvas->keyDown(key);
            canvas->saveDefaultAnnotationData();
        }
    }
    canvas->finalizeLastAnnotationIgnoringActiveStatus(true);
    canvas->saveDefaultAnnotationData();
    workers.mainThread().join();

    EXPECT_EQ(savedCount(), 10U);
}

TEST_F(SavingBesideDrawing, TheListsChangeWhileTheyAreSavedAndTheLastSaveWins)
{
    for (int i = 0; i < 40; ++i) {
        stroke({0.0, 0.0}, {50.0, 50.0});
        canvas->saveDefaultAnnotationData();
        if (i % 5 == 4) {
            canvas->undoAnnotation();
            canvas->redoAnnotation();
        }
        if (i == 20) {
            canvas->clearAnnotations(nullptr);
        }
    }
    workers.mainThread().join();
    EXPECT_EQ(savedCount(), 19U);

    stroke({0.0, 0.0}, {50.0, 50.0});
    canvas->saveDefaultAnnotationData();
    stroke({0.0, 0.0}, {50.0, 50.0});
    canvas->saveDefaultAnnotationDataAndWait();
    EXPECT_EQ(savedCount(), 21U) << "written when it returns";
    workers.mainThread().join();
    EXPECT_EQ(savedCount(), 21U);
}

TEST_F(SavingBesideDrawing, InkThatOnlyTheSaveStillHoldsGoesWithIt)
{
    for (int i = 0; i < 20; ++i) {
        stroke({0.0, 0.0}, {50.0, 50.0});
        canvas->saveDefaultAnnotationData();
        canvas->clearForNewAnnotations();
    }
    workers.mainThread().join();

    EXPECT_EQ(savedCount(), 1U);
}

} // namespace
} // namespace orv::test

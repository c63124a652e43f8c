#pragma once

#include "canvas/AnnotationCanvasHandler.h"
#include "canvas/AnnotationRegistry.h"
#include "canvas/AnnotationsView.h"
#include "canvas/PathAnnotation.h"
#include "channels/AppConstants.h"
#include "support/VirtualDesk.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orv::test {

/// A session that notes what it is asked for.
class FakeSession : public CanvasSession {
public:
    std::vector<std::string> calls;
    bool multiScreen = false;
    std::int32_t ignoreMouse = 0;
    std::optional<platform::Screen> requested;
    bool debugOn = false;
    OrvAnnotationDebugSetting setting;

    [[nodiscard]] bool isSupportMultiScreen() const override { return multiScreen; }
    [[nodiscard]] std::int32_t isIgnoreMouseEvent() const override { return ignoreMouse; }
    [[nodiscard]] std::optional<platform::Screen> displayScreenRequested() const override
    {
        return requested;
    }
    void resetAllDisplayWindow() override { calls.emplace_back("resetAllDisplayWindow"); }
    void resetEventWindow() override { calls.emplace_back("resetEventWindow"); }
    void hideToolMenuToggle() override { calls.emplace_back("hideToolMenuToggle"); }
    void selectDefaultTool() override { calls.emplace_back("selectDefaultTool"); }
    void closeAnnotationToolbox() override { calls.emplace_back("closeAnnotationToolbox"); }
    void maximizeAnnotationToolbox() override { calls.emplace_back("maximize"); }
    void minimizeAnnotationToolbox() override { calls.emplace_back("minimize"); }
    std::int32_t specialMode = 0;
    [[nodiscard]] std::int32_t isEnterSpecialMode() const override { return specialMode; }
    void setIsEnterSpecialMode(std::int32_t mode) override
    {
        calls.push_back("special " + std::to_string(mode));
    }
    void saveCurrentFlipchart(std::int32_t direction, bool withAnimation) override
    {
        calls.push_back("save page " + std::to_string(direction) +
                        (withAnimation ? " animated" : ""));
    }
    void showChangeConfirm(const std::string &annotationModeKey) override
    {
        calls.push_back("confirm " + annotationModeKey);
    }
    void setIsAnimating(bool isAnimating) override
    {
        calls.emplace_back(isAnimating ? "animating" : "not animating");
    }
    void setEditModeToolMenu(bool isEditMode) override
    {
        calls.emplace_back(isEditMode ? "edit menu" : "fixed menu");
    }
    void requestChangeTool() override { calls.emplace_back("requestChangeTool"); }
    [[nodiscard]] float getScreenScale(std::int32_t axis, platform::Size size,
                                       float base) const override
    {
        const double ratio = axis == 0 ? size.width / 1024.0 : size.height / 768.0;
        return ratio > 1.0 ? base * static_cast<float>(ratio) : base;
    }
    [[nodiscard]] bool debug() const override { return debugOn; }
    [[nodiscard]] OrvAnnotationDebugSetting *debugSetting() override { return &setting; }
    [[nodiscard]] std::string description() const override { return "<session>"; }

    [[nodiscard]] int count(const std::string &call) const
    {
        return static_cast<int>(std::count(calls.begin(), calls.end(), call));
    }
};

/// Five real buttons, and nothing else.
class FakeToolbox : public CanvasToolbox {
public:
    std::shared_ptr<platform::Button> eraser = std::make_shared<platform::Button>();
    std::shared_ptr<platform::Button> undo = std::make_shared<platform::Button>();
    std::shared_ptr<platform::Button> redo = std::make_shared<platform::Button>();
    std::shared_ptr<platform::Button> squeegee = std::make_shared<platform::Button>();
    std::shared_ptr<platform::Button> saveSS = std::make_shared<platform::Button>();

    [[nodiscard]] platform::Button *eraserButton() const override { return eraser.get(); }
    [[nodiscard]] platform::Button *undoButton() const override { return undo.get(); }
    [[nodiscard]] platform::Button *redoButton() const override { return redo.get(); }
    [[nodiscard]] platform::Button *squeegeeButton() const override { return squeegee.get(); }
    [[nodiscard]] platform::Button *saveSSButton() const override { return saveSS.get(); }
    [[nodiscard]] platform::Button *closeSSButton() const override { return nullptr; }
    [[nodiscard]] platform::Button *snapshotButton() const override { return nullptr; }
    [[nodiscard]] platform::Button *flipchartButton() const override { return nullptr; }
    [[nodiscard]] platform::View *standardAnnotationModeToolbarView() const override
    {
        return nullptr;
    }
    [[nodiscard]] platform::View *snapshotEditingModeToolbarView() const override
    {
        return nullptr;
    }
};

/// A tool of a type with a size in points.
class FakeTool : public CanvasTool {
public:
    explicit FakeTool(std::int32_t type, float size = 4.0F, bool transient = false)
        : type_(type), size_(size), transient_(transient)
    {
    }
    platform::Color color{1.0, 0.0, 0.0, 1.0};
    bool dash = false;

    [[nodiscard]] const std::string &name() const override { return name_; }
    [[nodiscard]] bool createsAnnotations() const override { return type_ != 0; }
    [[nodiscard]] std::int32_t annotationType() const override { return type_; }
    [[nodiscard]] bool transient() const override { return transient_; }
    [[nodiscard]] std::optional<platform::Cursor> cursor() const override
    {
        return platform::Cursor{std::make_shared<platform::PictureResource>("cursor_hidden"),
                                {1.0, 1.0}};
    }
    [[nodiscard]] std::shared_ptr<Annotation>
    createAnnotationInView(const std::shared_ptr<platform::View> &view) const override
    {
        const auto annotation = Annotation::annotationOfType(type_);
        annotation->setContainerView(view);
        annotation->setSize(size_);
        annotation->setColor(color);
        annotation->setDashMode(dash);
        return annotation;
    }

private:
    std::string name_ = "fake";
    std::int32_t type_;
    float size_;
    bool transient_;
};

/// A canvas in its window on a virtual desk, with a session and a toolbox that take notes.
class CanvasDesk : public VirtualDesk {
protected:
    CanvasDesk()
    {
        registerStrokeAnnotations(AnnotationRegistry::shared());
        AppConstants::instance().setAppActUniqueID(16);
        AppConstants::instance().DefaultAppDataPath = home.path() + "/data/";
        window = std::make_shared<AnnotationOverlayWindow>(0);
        canvas = std::make_shared<AnnotationsView>(window->frame());
        window->setAnnotationsView(canvas);
        window->setAnnotationManager(&session);
        window->setToolboxWindow(&toolbox);
        session.requested = desk.displays().screens().front();
        canvas->setAnnotationModeKey(AnnotationsView::annotationModeKeyStandard);
        canvas->setCurrentTool(pen);
        window->orderFront();
        drain();
        session.calls.clear();
    }
    ~CanvasDesk() override
    {
        window.reset();
        canvas.reset();
        AppConstants::destroy();
    }

    static platform::Event mouseAt(platform::EventType type, platform::Point at)
    {
        platform::Event event;
        event.type = type;
        event.location = at;
        return event;
    }
    static platform::Event keyOf(std::uint16_t code)
    {
        platform::Event event;
        event.type = platform::EventType::keyDown;
        event.keyCode = code;
        return event;
    }
    void press(platform::Point at)
    {
        canvas->mouseDown(mouseAt(platform::EventType::leftMouseDown, at));
    }
    void drag(platform::Point at)
    {
        canvas->mouseDragged(mouseAt(platform::EventType::leftMouseDragged, at));
    }
    void release(platform::Point at)
    {
        canvas->mouseUp(mouseAt(platform::EventType::leftMouseUp, at));
    }
    void stroke(platform::Point from, platform::Point to)
    {
        press(from);
        drag(to);
        release(to);
    }

    [[nodiscard]] std::string mode() const { return canvas->annotationModeKey(); }
    [[nodiscard]] const AnnotationList &annotations() const
    {
        return *canvas->document().annotations(mode());
    }
    [[nodiscard]] const CanvasDocument::ClearedScreens &clearedScreens() const
    {
        return *canvas->document().clearedScreens(mode());
    }
    [[nodiscard]] const AnnotationList &undoHistory() const
    {
        return *canvas->document().undoHistory(mode());
    }

    FakeSession session;
    FakeToolbox toolbox;
    std::shared_ptr<FakeTool> pen = std::make_shared<FakeTool>(annotation_type::pen);
    std::shared_ptr<FakeTool> pointer = std::make_shared<FakeTool>(annotation_type::none);
    std::shared_ptr<AnnotationOverlayWindow> window;
    std::shared_ptr<AnnotationsView> canvas;
};

} // namespace orv::test

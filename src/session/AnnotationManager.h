#pragma once

#include "canvas/AnnotationCanvasHandler.h"
#include "canvas/CanvasSession.h"
#include "platform/ports/MainThread.h"
#include "session/PageCapture.h"
#include "session/RemoteInput.h"
#include "session/SessionOutlets.h"
#include "session/ToolRequest.h"
#include "session/ToolTable.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace orv {

/// The session of the active plug-in: brings up windows and tools, opens, closes, takes requests.
///
/// Owns     the windows, the canvases, the tools and the debug setting, until `terminate`.
/// Thread   the host's, under the monitor; the steps that say so go over to the main thread.
/// Fails    a request that has no target does nothing; nothing is reported to the client.
class AnnotationManager : public CanvasSession,
                          public std::enable_shared_from_this<AnnotationManager> {
public:
    /// `initWithApp:`: names, folders and start values for the plug-in; no window yet.
    explicit AnnotationManager(std::uint32_t appActUniqueID);
    virtual ~AnnotationManager();
    AnnotationManager(const AnnotationManager &) = delete;
    AnnotationManager &operator=(const AnnotationManager &) = delete;

    [[nodiscard]] std::int32_t appActPid() const;
    [[nodiscard]] std::uint32_t appActUniqueID() const;
    /// The canvas of the window that the layout made; null before the windows are loaded.
    [[nodiscard]] std::shared_ptr<AnnotationsView> annotationsView() const;
    [[nodiscard]] AnnotationCanvasHandler *canvasHandler() const { return canvasHandler_.get(); }
    [[nodiscard]] const SessionOutlets &outlets() const { return outlets_; }
    [[nodiscard]] const ToolTable &tools() const { return tools_; }
    [[nodiscard]] const std::shared_ptr<AnnotationTool> &currentTool() const
    {
        return currentTool_;
    }
    [[nodiscard]] const std::shared_ptr<AnnotationTool> &lastSelectedTool() const
    {
        return lastSelectedTool_;
    }

    [[nodiscard]] const RemoteInput &remoteInput() const { return remoteInput_; }

    void setIsIgnoreMouseEvent(std::int32_t ignore) { isIgnoreMouseEvent_ = ignore; }
    void setClientDimensionInfo(platform::Size size) { DEF_CLI_DIMENSION_ = size; }
    void setDeviceName(const std::optional<std::string> &name);
    /// The display for the next opening; nothing moves before that.
    void setDisplayID(platform::DisplayID displayID);
    /// Pixel size of the display, and of the client's screen.
    void setDimension(platform::Size dimension, platform::Size scaled);
    void setDebug(bool debug) { debug_ = debug; }
    void setM_bAutoClear(bool autoClear) { m_bAutoClear_ = autoClear; }
    [[nodiscard]] bool m_bAutoClear() const { return m_bAutoClear_; }
    [[nodiscard]] bool isAnimating() const { return isAnimating_; }
    [[nodiscard]] std::int32_t isEnterSpecialMode() const override { return isEnterSpecialMode_; }
    [[nodiscard]] bool frontmostApplicationDemandsFocus() const
    {
        return frontmostApplicationDemandsFocus_;
    }

    /// Loads the windows at the first call, then brings the toolbox forward.
    void showWindow();
    void openAnnotationToolbox();
    void closeAnnotationToolbox() override;
    void enterAnnotationMode();
    void exitAnnotationMode();
    void toggleAnnotationMode();
    /// First generation only.
    void minimizeAnnotationToolbox() override;
    void completeMinimizingAnnotationToolbox();
    /// First generation only.
    void maximizeAnnotationToolbox() override;
    /// Gives back all that the session holds. Any later request does nothing.
    void terminate();

    /// The tool whose title the button has. A transient one is never the current tool.
    void selectTool(const platform::Button &sender);
    /// A button of the fixed menu, by its tag: 100 leaves the snapshot, 101 takes one.
    void selectOthersToolMenu(const platform::Button &sender);
    void selectDefaultTool() override;
    void handleSetToolRequest(const ToolRequest &request);
    /// The reported number of the current tool's kind; 65535 for a kind without one.
    [[nodiscard]] std::uint32_t getCurrentToolType() const;
    /// The size without its fraction.
    [[nodiscard]] std::uint32_t getCurrentToolSize() const;
    /// Green in the top byte, blue in the lowest; red and alpha do not enter.
    [[nodiscard]] std::uint32_t getCurrentToolColor() const;

    /// The path of the picture.
    std::string saveNewSnapshot();
    /// Nothing when no snapshot is being edited.
    std::optional<std::string> saveCurrentSnapshot();
    std::string saveNewFlipchart(std::int32_t direction, bool withAnimation);
    void saveCurrentFlipchart(std::int32_t direction, bool withAnimation) override;
    void showChangeConfirm(const std::string &annotationModeKey) override;

    void handleUndoRequest();
    void handleRedoRequest();
    void handleEraseAllRequest();
    void handlePrevPageRequest();
    void handleNextPageRequest();
    void handleDoSave(std::uint32_t action);
    void handleVideoRecording(std::uint32_t action);
    void handleControlMouseEvent(const ControlEvent &event);
    void handleControlKeyboardEvent(const ControlEvent &event);
    void handleSpotlightPichAct(bool begin);
    void handleSpotlightPichMove(std::int32_t length);
    void handleOthersMode(std::uint32_t mode, std::uint8_t subMode, bool enable);
    void updateFileTransferStatusDlg(std::uint32_t status);
    void closeFileTransferStatusDlg();
    void leaveOthersMode();
    void requestHelp();
    /// Tells the client whether its mouse and keyboard are welcome.
    void controlMouseAndKeyboardEvent(bool welcome);
    [[nodiscard]] bool isResetDisplay() const;

    [[nodiscard]] bool isSupportMultiScreen() const override;
    [[nodiscard]] std::int32_t isIgnoreMouseEvent() const override { return isIgnoreMouseEvent_; }
    [[nodiscard]] std::optional<platform::Screen> displayScreenRequested() const override;
    void resetAllDisplayWindow() override;
    void resetEventWindow() override;
    void hideToolMenuToggle() override;
    void setIsEnterSpecialMode(std::int32_t mode) override { isEnterSpecialMode_ = mode; }
    void setIsAnimating(bool isAnimating) override { isAnimating_ = isAnimating; }
    void setEditModeToolMenu(bool isEditMode) override;
    void requestChangeTool() override;
    [[nodiscard]] float getScreenScale(std::int32_t axis, platform::Size size,
                                       float base) const override;
    [[nodiscard]] bool debug() const override { return debug_; }
    [[nodiscard]] OrvAnnotationDebugSetting *debugSetting() override { return debugSetting_.get(); }
    [[nodiscard]] std::string description() const override;

private:
    void windowDidLoad();
    void buildTools();
    void setFront(platform::Window &window);
    void selectToolOfOutlet(const std::string &outlet);
    void applyStyleForFrontmostApplication();
    void getApplictionLanuchStatus();
    [[nodiscard]] RemoteInputDesk remoteInputDesk() const;
    [[nodiscard]] CaptureDesk captureDesk() const;
    void enableFlipchart(bool enable);

    SessionOutlets outlets_;
    std::unique_ptr<AnnotationCanvasHandler> canvasHandler_;
    ToolTable tools_;
    std::shared_ptr<AnnotationTool> currentTool_;
    std::shared_ptr<AnnotationTool> lastSelectedTool_;
    bool enteringAnnotationMode_ = false;
    std::int32_t pidFrontmostApplication_ = 0;
    bool frontmostApplicationDemandsFocus_ = false;
    platform::TaskHandle autosaveTimer_;
    platform::TaskHandle lateRefresh_;
    platform::TaskHandle lateMinimize_;
    std::optional<platform::Screen> displayScreen_;
    std::optional<platform::Screen> displayScreenRequested_;
    platform::Size DEF_CLI_DIMENSION_;
    ClientPicture clientPicture_;
    RemoteInput remoteInput_;
    PageCapture pageCapture_;
    bool isAnimating_ = false;
    std::int32_t isEnterSpecialMode_ = 0;
    bool m_bAutoClear_ = true;
    bool debug_ = false;
    std::int32_t isIgnoreMouseEvent_ = 0;
    std::unique_ptr<OrvAnnotationDebugSetting> debugSetting_;
};

} // namespace orv

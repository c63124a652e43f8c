#include "orv-replay/SessionState.h"

#include "channels/AppConstants.h"

namespace orv::apps {

namespace {

OutputJson toolState(const AnnotationTool &tool)
{
    return {{"annotationType", tool.annotationType()},
            {"annotationColor", colorState(tool.annotationColor())},
            {"annotationSize", static_cast<double>(tool.annotationSize())},
            {"annotationStyle", tool.annotationStyle()},
            {"annotationDash", tool.annotationDash()},
            {"fitMode", tool.fitMode()},
            {"transient", tool.transient()},
            {"isSelected", tool.isSelected()},
            {"primaryTraitIndex", tool.primaryTraitIndex()},
            {"secondaryTraitIndex", tool.secondaryTraitIndex()},
            {"tertiaryTraitIndex", tool.tertiaryTraitIndex()}};
}

} // namespace

std::string relativePath(const std::string &path, const std::string &home)
{
    const std::string prefix = home + "/";
    return path.starts_with(prefix) ? path.substr(prefix.size()) : path;
}

OutputJson controllerState(const ControllerState &state)
{
    return {{"m_bInAnnotationMode", state.m_bInAnnotationMode},
            {"m_bNotificationsSubscribed", state.m_bNotificationsSubscribed},
            {"hasManager", state.m_annotationManager != nullptr}};
}

OutputJson managerState(const AnnotationManager &manager)
{
    const RemoteInput &input = manager.remoteInput();
    return {{"currentTool", toolName(manager.currentTool().get())},
            {"lastSelectedTool", toolName(manager.lastSelectedTool().get())},
            {"isAnimating", manager.isAnimating()},
            {"isEnterSpecialMode", manager.isEnterSpecialMode()},
            {"m_bAutoClear", manager.m_bAutoClear()},
            {"mouseButtonStatus", input.mouseButtonStatus()},
            {"gFlag", input.gFlag()},
            {"gMask", input.gMask()},
            {"m_nEventNumber", input.m_nEventNumber()},
            {"frontmostApplicationDemandsFocus", manager.frontmostApplicationDemandsFocus()}};
}

OutputJson pathsState(const std::string &home)
{
    const AppConstants &constants = AppConstants::instance();
    return {{"DefaultAppDataPath", relativePath(constants.DefaultAppDataPath, home)},
            {"AppDataPath", relativePath(constants.AppDataPath, home)},
            {"AppLinkPath", relativePath(constants.AppLinkPath, home)},
            {"AppUserDataPath", relativePath(constants.AppUserDataPath, home)},
            {"DeviceName", constants.DeviceName()},
            {"SanitizeDeviceName", constants.SanitizeDeviceName()},
            {"APPName", constants.APPName},
            {"APPAbbreviation", constants.APPAbbreviation}};
}

OutputJson toolsState(const ToolTable &tools)
{
    OutputJson state = OutputJson::object();
    for (const auto &[title, tool] : tools) {
        state[tool->name()] = toolState(*tool);
    }
    return state;
}

OutputJson toolName(const CanvasTool *tool)
{
    return tool == nullptr ? OutputJson(nullptr) : OutputJson(tool->name());
}

OutputJson colorState(const platform::Color &color)
{
    return OutputJson::array({color.red(), color.greenComponent(), color.blue(), color.alpha()});
}

} // namespace orv::apps

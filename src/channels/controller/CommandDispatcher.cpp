#include "channels/controller/CommandDispatcher.h"

#include "channels/controller/RecordWords.h"

#include <fmt/format.h>

namespace orv {

namespace {

// Numbers of the first generation.
namespace first {
constexpr std::int32_t toggle = 0;
constexpr std::int32_t mouse = 1;
constexpr std::int32_t keyboard = 2;
constexpr std::int32_t pageUp = 32;
constexpr std::int32_t pageDown = 33;
constexpr std::int32_t toolbar = 34;
constexpr std::int32_t redoAndUndo0 = 82;
constexpr std::int32_t redoAndUndo1 = 83;
constexpr std::int32_t save = 84;
constexpr std::int32_t eraseAll = 88;
constexpr std::int32_t spotlightPinch = 89;
constexpr std::int32_t fileTransferStatus = 96;
} // namespace first

// Numbers of the second generation, with bit 12 and the upper half taken out.
namespace second {
constexpr std::uint32_t mask = 0xEFFF;
constexpr std::uint32_t switchMode = 0;
constexpr std::uint32_t drawType = 1;
constexpr std::uint32_t autoClear = 2;
constexpr std::uint32_t page = 16;
constexpr std::uint32_t redoAndUndo = 17;
constexpr std::uint32_t save = 18;
constexpr std::uint32_t eraseAll = 19;
constexpr std::uint32_t openSettings = 20;
constexpr std::uint32_t videoRecording = 21;
constexpr std::uint32_t spotlightPinch = 0xEFFB;
constexpr std::uint32_t fileTransferStatus = 0xEFFC;
constexpr std::uint32_t mouse = 0xEFFD;
constexpr std::uint32_t keyboard = 0xEFFE;
} // namespace second

ControlEvent controlEvent(const stCommand_mgs &record)
{
    return {record.lparam, bigEndian32(record, 0), bigEndian32(record, 4)};
}

} // namespace

void CommandDispatcher::CommandClient2App(const stCommand_mgs &record)
{
    if (record.pluginID != state_.m_dwActUniqueID) {
        return;
    }
    if (state_.isAnnotation2()) {
        ProcessCommand2(record);
    } else {
        ProcessCommand(record);
    }
}

void CommandDispatcher::ProcessCommand(const stCommand_mgs &record)
{
    logLine(1, fmt::format("-[AnnotationController ProcessCommand:] - pluginID({}) wparam({}) "
                           "lparam({})",
                           record.pluginID, record.wparam, record.lparam));
    switch (static_cast<std::int32_t>(record.wparam)) {
    case first::toggle:
        session_.ToggleAnnotationMode();
        break;
    case first::mouse:
        forwarder_.controlMouseEvent(controlEvent(record));
        break;
    case first::keyboard:
        forwarder_.controlKeyboardEvent(controlEvent(record));
        break;
    case first::pageUp:
        forwarder_.NextAppPageUp();
        break;
    case first::pageDown:
        forwarder_.NextAppPageDown();
        break;
    case first::toolbar:
        if (record.lparam != 0) {
            forwarder_.ShowAnnotationToolbar();
        } else {
            forwarder_.HideAnnotationToolbar();
        }
        break;
    // Only 1 and 2 mean something there: the one undoes, the other does nothing, and this
    // generation has no redo.
    case first::redoAndUndo0:
        forwarder_.RedoAndUndo(0);
        break;
    case first::redoAndUndo1:
        forwarder_.RedoAndUndo(1);
        break;
    case first::save:
        forwarder_.DoSave(1);
        break;
    case first::eraseAll:
        forwarder_.EraseAll();
        break;
    case first::spotlightPinch:
        forwarder_.SpotlightPichAct(record.lparam, pinchLength(record));
        break;
    case first::fileTransferStatus:
        forwarder_.FileTransferStatus(record.lparam);
        break;
    default:
        break;
    }
}

void CommandDispatcher::ProcessCommand2(const stCommand_mgs &record)
{
    switch (record.wparam & second::mask) {
    case second::switchMode:
        SwitchMode(record.lparam, record.ext.data());
        break;
    case second::drawType:
        HandleDrawType(record);
        break;
    case second::autoClear:
        setAutoClear(record.lparam == 1);
        break;
    case second::page:
        forwarder_.AppPageUpAndDown(record.lparam);
        break;
    case second::redoAndUndo:
        forwarder_.RedoAndUndo(record.lparam);
        break;
    case second::save:
        forwarder_.DoSave(record.lparam);
        break;
    case second::eraseAll:
        if (record.lparam == 1) {
            forwarder_.EraseAll();
        }
        break;
    case second::openSettings:
        openSettings(record.lparam);
        break;
    case second::videoRecording:
        forwarder_.DoVideoRecording(record.lparam);
        break;
    case second::spotlightPinch:
        forwarder_.SpotlightPichAct(record.lparam, pinchLength(record));
        break;
    case second::fileTransferStatus:
        forwarder_.FileTransferStatus(record.lparam);
        break;
    case second::mouse:
        forwarder_.controlMouseEvent(controlEvent(record));
        break;
    case second::keyboard:
        forwarder_.controlKeyboardEvent(controlEvent(record));
        break;
    default:
        break;
    }
}

bool CommandDispatcher::SwitchMode(std::uint32_t mode, const std::uint8_t *pInfo)
{
    constexpr std::int32_t annotation = 0;
    constexpr std::int32_t flipchart = 1;
    constexpr std::int32_t screenCover = 4;
    if (pInfo == nullptr) {
        return false;
    }
    const auto number = static_cast<std::int32_t>(mode);
    const bool show = pInfo[0] != 0;
    const std::uint8_t sub = pInfo[1];
    logLine(1, fmt::format("-[AnnotationController SwitchMode:pInfo:] Received command - "
                           "SwitchMode, Mode:{} Sub:{} Show:{}",
                           number, sub, pInfo[0]));
    if (number == annotation) {
        session_.AnnotationMode(show);
    } else if (number >= flipchart && number <= screenCover) {
        if (const auto manager = state_.m_annotationManager) {
            manager->handleOthersMode(mode, sub, show);
        }
    }
    return false;
}

void CommandDispatcher::HandleDrawType(const stCommand_mgs &record)
{
    const std::uint16_t subtype = littleEndian16(record, 0);
    const std::uint16_t spacing = littleEndian16(record, 2);
    const std::uint16_t size = littleEndian16(record, 4);
    const std::uint32_t argb = bigEndian32(record, 6);
    const auto &bytes = record.ext;
    logLine(1,
            fmt::format("-[AnnotationController HandleDrawType:] \n\t- DrawType:{}\n\t- "
                        "DrawSubType:{}\n\t- Spacing:{}\n\t- Size:{}\n\t- Color:({:02X},{:02X},"
                        "{:02X},{:02X}) - ({},{},{},{})",
                        static_cast<std::int32_t>(record.lparam), subtype, spacing, size, bytes[6],
                        bytes[7], bytes[8], bytes[9], bytes[6], bytes[7], bytes[8], bytes[9]));
    if (const auto manager = state_.m_annotationManager) {
        manager->handleSetToolRequest({static_cast<std::uint16_t>(record.lparam), subtype,
                                       static_cast<float>(size), spacing, argb});
    }
}

void CommandDispatcher::setAutoClear(bool autoClear)
{
    if (const auto manager = state_.m_annotationManager) {
        manager->setM_bAutoClear(autoClear);
    }
}

void CommandDispatcher::openSettings(std::uint32_t which)
{
    constexpr std::uint32_t accessibility = 1;
    constexpr std::uint32_t keynote = 2;
    if ((which & accessibility) != 0) {
        forwarder_.openUniversalaccessSetting();
    } else if ((which & keynote) != 0) {
        forwarder_.openKeynoteSetting();
    }
}

} // namespace orv

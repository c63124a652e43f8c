#include "OrvAnnotation/AnnotationController.h"
#include "platform/virtual/VirtualPlatform.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

// Any sequence of records, in both generations, from any state, with pauses and changes of the
// active plug-in between them: nothing may crash, and nothing may escape.

namespace {

using namespace orv;

int ignoreRecord(const void * /*bytes*/, std::size_t /*length*/, std::uint32_t /*pluginID*/)
{
    return 0;
}

std::string makeHome()
{
    std::string home = (std::filesystem::temp_directory_path() / "orv-fuzz-XXXXXX").string();
    return ::mkdtemp(home.data());
}

platform::VirtualSettings deskSettings()
{
    static const std::string home = makeHome();
    platform::VirtualSettings settings;
    settings.home = home;
    settings.resources = ORV_BUILT_RESOURCES;
    // Small, so that time goes into records and not into pixels.
    settings.displays = {{1, platform::Rect::make(0.0, 0.0, 160.0, 120.0), 1.0},
                         {2, platform::Rect::make(160.0, 0.0, 80.0, 60.0), 1.0}};
    return settings;
}

/// Reads the input in steps: a byte says what comes, and the bytes behind it are its arguments.
class Steps {
public:
    Steps(const std::uint8_t *data, std::size_t size) : data_(data), size_(size) {}

    [[nodiscard]] bool atEnd() const { return at_ >= size_; }
    std::uint8_t byte() { return atEnd() ? 0 : data_[at_++]; }
    void bytes(void *out, std::size_t count)
    {
        const std::size_t have = std::min(count, size_ - at_);
        std::memcpy(out, data_ + at_, have);
        at_ += have;
    }

private:
    const std::uint8_t *data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

constexpr std::array<std::uint32_t, 6> kPlugins{17, 12, 16, 18, 0, 7};

stCommand_mgs recordFrom(Steps &steps, std::uint32_t plugin)
{
    // Numbers that mean something come up often, and all others now and then.
    constexpr std::array<std::uint32_t, 22> numbers{0,  1,  2,      16,     17,     18,    19, 20,
                                                    21, 32, 33,     34,     82,     83,    84, 88,
                                                    89, 96, 0xEFFB, 0xEFFC, 0xEFFD, 0xEFFE};
    stCommand_mgs record;
    record.pluginID = static_cast<std::uint16_t>(plugin);
    const std::uint8_t pick = steps.byte();
    if (pick < numbers.size() * 10) {
        record.wparam = numbers.at(pick % numbers.size());
        record.lparam = steps.byte() % 16;
    } else {
        steps.bytes(&record.wparam, sizeof record.wparam);
        steps.bytes(&record.lparam, sizeof record.lparam);
    }
    steps.bytes(record.ext.data(), 10);
    return record;
}

void play(Steps steps)
{
    platform::VirtualPlatform desk(deskSettings());
    desk.hooks().systemLog = [](const std::string &) {};
    platform::Platform::install(&desk);
    auto controller = std::make_unique<AnnotationController>();
    controller->SetClientCommandCHSender(ignoreRecord);
    controller->setM_dpID(1);
    controller->setM_clientDimension({160.0, 120.0});
    std::uint32_t plugin = kPlugins.at(steps.byte() % kPlugins.size());
    controller->SetActiveOpt(0, plugin);
    while (!steps.atEnd()) {
        switch (steps.byte() % 16) {
        case 0:
            plugin = kPlugins.at(steps.byte() % kPlugins.size());
            controller->SetActiveOpt(0, plugin);
            break;
        case 1:
            desk.mainThread().advance(steps.byte() / 100.0);
            break;
        case 2:
            controller->RecoveryDesktop();
            break;
        case 3:
            controller->setDebug(steps.byte() % 2 != 0);
            break;
        case 4:
            desk.input().sendMouse(
                static_cast<platform::EventType>(1 + steps.byte() % 7),
                {static_cast<double>(steps.byte()), static_cast<double>(steps.byte() % 120)});
            break;
        case 5:
            desk.input().sendKey(platform::EventType::keyDown, steps.byte(), u"x");
            break;
        case 6: {
            stCommand_mgs open;
            open.pluginID = static_cast<std::uint16_t>(plugin);
            open.ext[0] = 1;
            controller->CommandClient2App(open);
            break;
        }
        case 7:
            // Sizes of 0 leave divisions to floating point.
            controller->setM_clientDimension({steps.byte() % 3 * 80.0, steps.byte() % 3 * 60.0});
            controller->setM_dpID(steps.byte() % 4);
            break;
        default:
            controller->CommandClient2App(recordFrom(steps, plugin));
            break;
        }
        desk.mainThread().drain();
    }
    controller->RecoveryDesktop();
    controller.reset();
    desk.mainThread().drain();
    platform::Platform::install(nullptr);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t longest = 2048;
    play(Steps(data, std::min(size, longest)));
    return 0;
}

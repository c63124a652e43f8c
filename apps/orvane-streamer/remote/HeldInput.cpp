#include "orvane-streamer/remote/HeldInput.h"

#include "orvane-streamer/remote/RecordNumbers.h"

#include <algorithm>

namespace orv::apps {

namespace {

template <std::size_t size>
stCommand_mgs liftingRecord(std::uint16_t plugin, std::uint32_t wparam, std::uint32_t lparam,
                            const std::array<std::uint8_t, size> &words)
{
    stCommand_mgs record{plugin, 1, wparam, lparam, {}};
    std::copy(words.begin(), words.end(), record.ext.begin());
    return record;
}

} // namespace

void HeldInput::follow(std::span<const stCommand_mgs> records)
{
    for (const stCommand_mgs &record : records) {
        if (record.wparam == record_number::mouse) {
            followMouse(held_[record.pluginID], record);
        } else if (record.wparam == record_number::keyboard) {
            followKey(held_[record.pluginID], record);
        }
    }
}

void HeldInput::followMouse(Held &held, const stCommand_mgs &record)
{
    if (record.lparam < mouse_event::first || record.lparam > mouse_event::last) {
        return;
    }
    std::copy_n(record.ext.begin(), held.point.size(), held.point.begin());
    switch (record.lparam) {
    case mouse_event::leftPress:
        held.left = true;
        break;
    case mouse_event::leftRelease:
        held.left = false;
        break;
    case mouse_event::rightPress:
        held.right = true;
        break;
    case mouse_event::rightRelease:
        held.right = false;
        break;
    default:
        break;
    }
}

void HeldInput::followKey(Held &held, const stCommand_mgs &record)
{
    std::array<std::uint8_t, 4> code{};
    std::copy_n(record.ext.begin(), code.size(), code.begin());
    if (record.lparam == key_event::up) {
        held.keys.erase(code);
    } else if (record.lparam == key_event::down && held.keys.size() < mostKeys) {
        held.keys.insert(code);
    }
}

std::vector<stCommand_mgs> HeldInput::lift()
{
    std::vector<stCommand_mgs> records;
    for (const auto &[plugin, held] : held_) {
        if (held.left) {
            records.push_back(
                liftingRecord(plugin, record_number::mouse, mouse_event::leftRelease, held.point));
        }
        if (held.right) {
            records.push_back(
                liftingRecord(plugin, record_number::mouse, mouse_event::rightRelease, held.point));
        }
        for (const auto &key : held.keys) {
            records.push_back(liftingRecord(plugin, record_number::keyboard, key_event::up, key));
        }
    }
    held_.clear();
    return records;
}

} // namespace orv::apps

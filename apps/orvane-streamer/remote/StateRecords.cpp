#include "orvane-streamer/remote/StateRecords.h"

#include "orvane-streamer/remote/RecordNumbers.h"

#include <cstddef>
#include <cstdint>

namespace orv::apps {

namespace {

// Where a mode switch says that it is one; a call for help has the same number and no mark.
constexpr std::size_t kMark = 3;

/// An answer tells the same state as a message that comes unasked.
std::uint32_t kindOf(const stCommand_mgs &record)
{
    return record.wparam & ~record_number::answer;
}

bool isModeSwitch(const stCommand_mgs &record)
{
    return kindOf(record) == record_number::switchMode && record.ext.at(kMark) == 1;
}

bool tellsState(const stCommand_mgs &record)
{
    switch (record.wparam) {
    case record_number::switchMode:
    case record_number::answer | record_number::switchMode:
        return isModeSwitch(record);
    case record_number::keyboardWanted:
    case record_number::coverState:
    case record_number::spotlightState:
    case record_number::pageState:
    case record_number::undoCounts:
    case record_number::recordingState:
    case record_number::answer | record_number::recordingState:
    case record_number::mouse:
    case record_number::keyboard:
        return true;
    default:
        return false;
    }
}

bool isSameState(const stCommand_mgs &one, const stCommand_mgs &other)
{
    return kindOf(one) == kindOf(other) && (!isModeSwitch(one) || one.lparam == other.lparam);
}

} // namespace

void StateRecords::note(const stCommand_mgs &record)
{
    if (!tellsState(record)) {
        return;
    }
    std::erase_if(records_,
                  [&record](const stCommand_mgs &kept) { return isSameState(kept, record); });
    records_.push_back(record);
}

} // namespace orv::apps

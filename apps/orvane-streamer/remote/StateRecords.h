#pragma once

#include "OrvAnnotation/Records.h"

#include <span>
#include <vector>

namespace orv::apps {

/// The library's records that tell how things stand now, for those who come later: the last one of
/// each kind, in the order in which they came.
class StateRecords {
public:
    /// Keeps the record, or passes it over when it tells of no state.
    void note(const stCommand_mgs &record);
    [[nodiscard]] std::span<const stCommand_mgs> all() const { return records_; }

private:
    std::vector<stCommand_mgs> records_;
};

} // namespace orv::apps

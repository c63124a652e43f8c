#pragma once

#include "OrvAnnotation/Records.h"
#include "common/ClientRecords.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace orv::apps {

/// Makes records of a stream of bytes, however it is cut.
class RecordAssembler {
public:
    /// Calls `take(record)` for each record that these bytes complete.
    template <class Take> void add(std::span<const std::uint8_t> bytes, Take &&take)
    {
        while (!bytes.empty()) {
            const std::size_t count = std::min(bytes.size(), buffer_.size() - used_);
            std::copy_n(bytes.begin(), count, buffer_.begin() + static_cast<std::ptrdiff_t>(used_));
            used_ += count;
            bytes = bytes.subspan(count);
            if (used_ == buffer_.size()) {
                used_ = 0;
                take(recordFromBytes(buffer_));
            }
        }
    }
    /// Bytes of a record that is not complete yet.
    [[nodiscard]] std::size_t pending() const { return used_; }

private:
    std::array<std::uint8_t, sizeof(stCommand_mgs)> buffer_{};
    std::size_t used_ = 0;
};

} // namespace orv::apps

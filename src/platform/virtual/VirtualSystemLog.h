#pragma once

#include "platform/ports/SystemLog.h"
#include "platform/virtual/VirtualSettings.h"

namespace orv::platform {

/// Hands each line to the hooks.
///
/// Thread   any.
class VirtualSystemLog final : public SystemLog {
public:
    /// `hooks` outlives this.
    explicit VirtualSystemLog(const VirtualHooks &hooks) : hooks_(hooks) {}

    void write(const std::string &line) override;

private:
    const VirtualHooks &hooks_;
};

} // namespace orv::platform

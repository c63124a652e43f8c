#pragma once

#include "platform/ports/Processes.h"
#include "platform/virtual/VirtualSettings.h"

namespace orv::platform {

/// Starts nothing and tells the hooks what would have been started.
///
/// Thread   any.
class VirtualProcesses final : public Processes {
public:
    /// `hooks` outlives this.
    explicit VirtualProcesses(const VirtualHooks &hooks) : hooks_(hooks) {}

    void start(const std::string &program, const std::vector<std::string> &arguments) override;
    void runScript(const std::string &text) override;

private:
    const VirtualHooks &hooks_;
};

} // namespace orv::platform

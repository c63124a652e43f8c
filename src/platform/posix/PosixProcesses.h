#pragma once

#include "platform/ports/Processes.h"

#include <string>
#include <vector>

namespace orv::platform {

/// Starts programs that run on their own: they outlive this process and leave nothing behind in it.
///
/// Thread   any.
class PosixProcesses : public Processes {
public:
    /// `program` is a path, or a name that is looked up in PATH.
    void start(const std::string &program, const std::vector<std::string> &arguments) override;
    /// There is no script runner here.
    void runScript(const std::string &) override {}
};

} // namespace orv::platform

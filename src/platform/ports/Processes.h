#pragma once

#include <string>
#include <vector>

namespace orv::platform {

/// Programs and settings scripts that the library starts and does not wait for.
///
/// Thread   any.
/// Fails    a program that can't be started is not reported.
class Processes {
public:
    virtual ~Processes() = default;

    /// Standard output and error go to one pipe that nobody reads.
    virtual void start(const std::string &program, const std::vector<std::string> &arguments) = 0;
    /// A script for the desktop's own script runner; does nothing where there is none.
    virtual void runScript(const std::string &text) = 0;
};

} // namespace orv::platform

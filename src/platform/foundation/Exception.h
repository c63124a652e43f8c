#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orv::platform {

/// What operations of `platform/` throw; carries the call stack it was thrown from.
///
/// The logic throws nothing itself. It catches this type where an operation guards itself, and at
/// the boundary to the host.
class Exception : public std::runtime_error {
public:
    /// `reason` is one sentence that names the input at fault.
    explicit Exception(const std::string &reason);

    /// One frame a line, innermost first.
    [[nodiscard]] const std::string &callStack() const { return callStack_; }
    /// Reason and call stack as the log shows them: "%@\n%@".
    [[nodiscard]] std::string description() const;

private:
    std::string callStack_;
};

/// Runs `body` and answers true; on an exception calls `report` with its description (for a
/// foreign exception: its message) and answers false. What `report` throws is dropped. The one door
/// wherever exceptions are caught and logged.
bool guarded(const std::function<void()> &body,
             const std::function<void(const std::string &)> &report) noexcept;

} // namespace orv::platform

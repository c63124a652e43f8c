#pragma once

#include <cstdint>
#include <string>

namespace orv::platform {

/// The other applications of this desktop, as far as the session cares for them.
///
/// Thread   any; an answer may be a moment old.
class Applications {
public:
    virtual ~Applications() = default;

    /// Process ID of the application in front; 0 when there is none.
    [[nodiscard]] virtual std::int32_t frontProcess() const = 0;
    /// Gives the front back to a process; 0 and unknown processes do nothing.
    virtual void setFrontProcess(std::int32_t pid) = 0;
    /// Empty for an unknown process.
    [[nodiscard]] virtual std::string bundleIdentifier(std::int32_t pid) const = 0;
    [[nodiscard]] virtual bool isRunning(const std::string &bundleIdentifier) const = 0;
    /// The identifier of the host program.
    [[nodiscard]] virtual std::string mainBundleIdentifier() const = 0;
    /// Whether the accessibility interface is on.
    [[nodiscard]] virtual bool isAccessibilityEnabled() const = 0;
    /// Brings this application forward, but takes the front from nobody who is active.
    virtual void activateOwn() = 0;
    /// 1 hides the desktop's dock until it is pointed at, 0 shows it as usual.
    virtual void setPresentationOptions(std::uint32_t options) = 0;
};

} // namespace orv::platform

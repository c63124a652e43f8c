#pragma once

#include "platform/ports/Applications.h"
#include "platform/virtual/VirtualSettings.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace orv::platform {

/// The other applications of a virtual desk: what a script says they are.
///
/// Thread   any.
class VirtualApplications final : public Applications {
public:
    /// `hooks` outlives this.
    VirtualApplications(const VirtualSettings &settings, const VirtualHooks &hooks);

    [[nodiscard]] std::int32_t frontProcess() const override;
    void setFrontProcess(std::int32_t pid) override;
    /// Knows every application that was ever in front.
    [[nodiscard]] std::string bundleIdentifier(std::int32_t pid) const override;
    [[nodiscard]] bool isRunning(const std::string &bundleIdentifier) const override;
    [[nodiscard]] std::string mainBundleIdentifier() const override;
    [[nodiscard]] bool isAccessibilityEnabled() const override;
    void activateOwn() override {}
    void setPresentationOptions(std::uint32_t options) override;

    void setFront(const VirtualApplication &application);
    void setRunning(std::vector<std::string> bundleIdentifiers);
    void setAccessibility(bool enabled);

private:
    const VirtualHooks &hooks_;
    const std::string mainBundle_;
    mutable std::mutex mutex_;
    std::int32_t front_ = 0;
    std::map<std::int32_t, std::string> known_;
    std::vector<std::string> running_;
    bool accessibility_;
};

} // namespace orv::platform

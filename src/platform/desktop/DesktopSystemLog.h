#pragma once

#include "platform/ports/SystemLog.h"

#include <string>

namespace orv::platform {

/// Lines on the standard error, each with the moment it was written: where a desktop session's
/// journal picks them up. Thread: any; lines do not mix.
class DesktopSystemLog final : public SystemLog {
public:
    void write(const std::string &line) override;
};

} // namespace orv::platform

#pragma once

#include <string>

namespace orv::platform {

/// Where lines go that no delegate takes. Thread: any.
class SystemLog {
public:
    virtual ~SystemLog() = default;
    virtual void write(const std::string &line) = 0;
};

} // namespace orv::platform

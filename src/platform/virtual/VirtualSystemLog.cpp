#include "platform/virtual/VirtualSystemLog.h"

#include <iostream>

namespace orv::platform {

void VirtualSystemLog::write(const std::string &line)
{
    if (hooks_.systemLog) {
        hooks_.systemLog(line);
    } else {
        std::cerr << line + '\n';
    }
}

} // namespace orv::platform

#include "platform/virtual/VirtualProcesses.h"

namespace orv::platform {

void VirtualProcesses::start(const std::string &program, const std::vector<std::string> &arguments)
{
    if (hooks_.process) {
        std::vector<std::string> command{program};
        command.insert(command.end(), arguments.begin(), arguments.end());
        hooks_.process(command);
    }
}

void VirtualProcesses::runScript(const std::string &text)
{
    if (hooks_.script) {
        hooks_.script(text);
    }
}

} // namespace orv::platform

#include "platform/ports/Pictures.h"

#include "platform/ports/Files.h"
#include "platform/ports/Platform.h"

namespace orv::platform {

std::string pathForImageResource(const std::string &name)
{
    const std::string file = name.find('.') == std::string::npos ? name + ".png" : name;
    return joinPath(Platform::current().files().resourceFolder(), "pictures/" + file);
}

} // namespace orv::platform

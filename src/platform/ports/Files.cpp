#include "platform/ports/Files.h"

namespace orv::platform {

std::string joinPath(std::string_view folder, std::string_view name)
{
    if (folder.empty() || name.empty()) {
        return std::string(folder.empty() ? name : folder);
    }
    while (folder.size() > 1 && folder.ends_with('/')) {
        folder.remove_suffix(1);
    }
    while (name.starts_with('/')) {
        name.remove_prefix(1);
    }
    std::string path(folder);
    if (!path.ends_with('/')) {
        path += '/';
    }
    return path.append(name);
}

} // namespace orv::platform

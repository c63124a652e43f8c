#include "orv-replay/HomeFolder.h"

#include "common/Folders.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace orv::apps {

namespace fs = std::filesystem;

HomeFolder::HomeFolder(const std::string &asked)
{
    if (!asked.empty()) {
        path_ = plainPath(asked);
        return;
    }
    std::string pattern = (fs::temp_directory_path() / "orv-replay-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("a temporary home folder cannot be made as " + pattern);
    }
    path_ = pattern;
    temporary_ = true;
}

HomeFolder::~HomeFolder()
{
    if (temporary_) {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
}

} // namespace orv::apps

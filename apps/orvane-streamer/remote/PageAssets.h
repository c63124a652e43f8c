#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace orv::apps {

/// One file of the remote page.
struct PageAsset {
    std::string type;
    std::string bytes;
};

/// The files of the remote page, held in memory; only their exact names are found.
class PageAssets {
public:
    /// Reads the files of the folder that have a known kind; not those of folders below it. Throws
    /// `std::runtime_error` that names the folder or file when one cannot be read, or there is no
    /// index.html.
    explicit PageAssets(const std::string &folder);

    /// Null when there is none. The assets own it.
    [[nodiscard]] const PageAsset *find(std::string_view name) const;
    [[nodiscard]] const PageAsset &page() const { return *find("index.html"); }

private:
    std::map<std::string, PageAsset, std::less<>> assets_;
};

} // namespace orv::apps

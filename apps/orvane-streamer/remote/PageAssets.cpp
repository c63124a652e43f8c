#include "orvane-streamer/remote/PageAssets.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace orv::apps {

namespace {

namespace fs = std::filesystem;

std::string typeOf(const fs::path &file)
{
    static const std::map<std::string, std::string> types{
        {".html", "text/html; charset=utf-8"},
        {".css", "text/css; charset=utf-8"},
        {".js", "text/javascript; charset=utf-8"},
        {".svg", "image/svg+xml"},
        {".png", "image/png"},
        {".ico", "image/x-icon"},
        {".txt", "text/plain; charset=utf-8"},
        {".webmanifest", "application/manifest+json"},
        {".woff2", "font/woff2"},
    };
    const auto type = types.find(file.extension().string());
    return type == types.end() ? std::string() : type->second;
}

std::string contentOf(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (!in) {
        throw std::runtime_error(
            fmt::format("{}, a part of the remote page, cannot be read.", file.string()));
    }
    return bytes;
}

} // namespace

PageAssets::PageAssets(const std::string &folder)
{
    std::error_code error;
    fs::directory_iterator files(folder, error);
    if (error) {
        throw std::runtime_error(fmt::format(
            "{}, the folder of the remote page, cannot be read: {}.", folder, error.message()));
    }
    for (const fs::directory_entry &file : files) {
        const std::string type = typeOf(file.path());
        if (!type.empty() && file.is_regular_file(error)) {
            assets_.emplace(file.path().filename().string(),
                            PageAsset{type, contentOf(file.path())});
        }
    }
    if (find("index.html") == nullptr) {
        throw std::runtime_error(
            fmt::format("{}, the folder of the remote page, has no index.html.", folder));
    }
}

const PageAsset *PageAssets::find(std::string_view name) const
{
    const auto asset = assets_.find(name);
    return asset == assets_.end() ? nullptr : &asset->second;
}

} // namespace orv::apps

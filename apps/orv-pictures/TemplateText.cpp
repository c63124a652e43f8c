#include "orv-pictures/TemplateText.h"

#include "orv-pictures/PictureError.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace orv::pictures {

namespace fs = std::filesystem;

namespace {

constexpr int kDeepest = 8;
constexpr std::string_view kOpen = "{{";
constexpr std::string_view kClose = "}}";

std::string readText(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file || text.empty()) {
        throw PictureError(path.string() + ": the template is empty or cannot be read.");
    }
    return text;
}

} // namespace

TemplateText::TemplateText(const std::string &folder) : folder_(folder)
{
    std::error_code error;
    fs::recursive_directory_iterator at(folder, error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
        if (at->path().extension() == ".svg") {
            const auto name = fs::path(at->path()).replace_extension().lexically_relative(folder);
            texts_[name.generic_string()] = readText(at->path());
        }
    }
    if (error) {
        throw PictureError(folder + ": the folder of templates cannot be read.");
    }
}

std::string TemplateText::path(const std::string &name) const
{
    return (fs::path(folder_) / (name + ".svg")).string();
}

std::string TemplateText::filled(const std::string &name, const Values &values) const
{
    std::string out;
    append(name, values, 0, out);
    return out;
}

void TemplateText::append(const std::string &name, const Values &values, int depth,
                          std::string &out) const
{
    const auto found = texts_.find(name);
    if (found == texts_.end()) {
        throw PictureError(path(name) + ": there is no such template.");
    }
    if (depth == kDeepest) {
        throw PictureError(path(name) + ": the template takes itself in.");
    }
    const std::string &text = found->second;
    std::size_t at = 0;
    for (auto open = text.find(kOpen); open != std::string::npos; open = text.find(kOpen, at)) {
        const auto close = text.find(kClose, open);
        if (close == std::string::npos) {
            throw PictureError(path(name) + ": a placeholder is not closed.");
        }
        out.append(text, at, open - at);
        at = close + kClose.size();
        std::string key = text.substr(open + kOpen.size(), close - open - kOpen.size());
        const bool isTemplate = key.starts_with('+');
        key.erase(0, isTemplate ? 1 : 0);
        const auto value = values.find(key);
        if (value == values.end()) {
            throw PictureError(path(name) + ": nothing is given for \"" + key + "\".");
        }
        if (isTemplate) {
            append(value->second, values, depth + 1, out);
        } else {
            out += value->second;
        }
    }
    out.append(text, at);
}

} // namespace orv::pictures

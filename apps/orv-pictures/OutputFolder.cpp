#include "orv-pictures/OutputFolder.h"

#include "orv-pictures/PictureError.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace orv::pictures {

namespace fs = std::filesystem;

namespace {

bool holds(const fs::path &path, const QByteArray &bytes)
{
    std::error_code error;
    if (fs::file_size(path, error) != static_cast<std::uintmax_t>(bytes.size()) || error) {
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    const std::string old((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return bytes.toStdString() == old;
}

} // namespace

OutputFolder::OutputFolder(const std::string &path) : path_(path)
{
    std::error_code error;
    fs::create_directories(path, error);
    if (error || !fs::is_directory(path, error)) {
        throw PictureError(path + ": the folder cannot be made.");
    }
}

void OutputFolder::write(const std::string &name, const QByteArray &bytes) const
{
    const fs::path path = fs::path(path_) / name;
    if (holds(path, bytes)) {
        return;
    }
    const fs::path begun = fs::path(path_) / ("." + name + ".begun");
    std::ofstream file(begun, std::ios::binary);
    file.write(bytes.data(), bytes.size());
    file.close();
    std::error_code error;
    if (file) {
        fs::rename(begun, path, error);
    }
    if (!file || error) {
        fs::remove(begun, error);
        throw PictureError(path.string() + ": the file cannot be written.");
    }
}

} // namespace orv::pictures

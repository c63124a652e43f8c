#include "platform/desktop/FolderIcon.h"

#include "platform/foundation/AtomicFile.h"
#include "platform/ports/Files.h"
#include "platform/posix/PosixProcesses.h"
#include "platform/raster/Pictures.h"

#include <QStandardPaths>
#include <QString>
#include <QUrl>

#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace orv::platform {

namespace {

constexpr std::string_view kPictureName = ".OrvAnnotationFolder.png";
constexpr std::string_view kSettingsName = ".directory";
constexpr std::string_view kSettings = "[Desktop Entry]\nIcon=./.OrvAnnotationFolder.png\n";

bool holds(const std::string &path, const Data &bytes)
{
    return readFile(path, bytes.size()) == bytes;
}

bool isThere(const std::string &path)
{
    std::error_code error;
    return std::filesystem::symlink_status(path, error).type() !=
           std::filesystem::file_type::not_found;
}

bool writeWhereDifferent(const std::string &path, const Data &bytes, bool &isNew)
{
    if (holds(path, bytes)) {
        return true;
    }
    isNew = true;
    return writeFileAtomically(path, bytes);
}

} // namespace

bool writeFolderIcon(const std::string &folder, const Image &icon)
{
    std::error_code error;
    const auto itself = std::filesystem::canonical(folder, error);
    const Data png = pngOf(icon);
    if (folder.find('\0') != std::string::npos || !std::filesystem::is_directory(itself, error) ||
        png.empty()) {
        return false;
    }
    const std::string settings = joinPath(itself.string(), kSettingsName);
    const std::string picture = joinPath(itself.string(), kPictureName);
    const Data ours(kSettings.begin(), kSettings.end());
    if (isThere(settings) && !holds(settings, ours)) {
        return true;
    }
    bool isNew = false;
    if (!writeWhereDifferent(picture, png, isNew) || !writeWhereDifferent(settings, ours, isNew)) {
        return false;
    }
    const CommandLine note = isNew ? folderIconNote(itself.string(), picture) : CommandLine{};
    if (!note.empty()) {
        PosixProcesses().start(note.front(), {note.begin() + 1, note.end()});
    }
    return true;
}

CommandLine folderIconNote(const std::string &folder, const std::string &picture)
{
    const char *bus = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    const QString program = QStandardPaths::findExecutable(QStringLiteral("gio"));
    if (bus == nullptr || *bus == '\0' || program.isEmpty()) {
        return {};
    }
    const QByteArray uri =
        QUrl::fromLocalFile(QString::fromStdString(picture)).toEncoded(QUrl::FullyEncoded);
    return {program.toStdString(), "set", "-t", "string", folder, "metadata::custom-icon",
            uri.toStdString()};
}

} // namespace orv::platform

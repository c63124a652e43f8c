#include "channels/AppConstants.h"

#define LIBBSD_NETBSD_VIS
#include <bsd/vis.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <string_view>

namespace orv {

namespace {

std::unique_ptr<AppConstants> &storage()
{
    static std::unique_ptr<AppConstants> constants;
    return constants;
}

constexpr int kVisFlags = VIS_CSTYLE | VIS_TAB | VIS_NL;
constexpr std::string_view kFullwidthColon = "\xEF\xBC\x9A";
// The longest output of vis for one byte is four characters.
constexpr std::size_t kVisBuffer = 8;

void appendVisible(std::string &out, const std::string &name, std::size_t at)
{
    std::array<char, kVisBuffer> buffer{};
    const int next = at + 1 < name.size() ? static_cast<unsigned char>(name[at + 1]) : 0;
    ::vis(buffer.data(), static_cast<unsigned char>(name[at]), kVisFlags, next);
    out += buffer.data();
}

bool isAscii(char c)
{
    return static_cast<unsigned char>(c) <= 0x7F;
}

} // namespace

AppConstants &AppConstants::instance()
{
    auto &constants = storage();
    if (!constants) {
        constants.reset(new AppConstants);
    }
    return *constants;
}

void AppConstants::destroy()
{
    storage().reset();
}

AppConstants::AppConstants() : AppActPid_(::getpid()) {}

void AppConstants::setDeviceName(const std::optional<std::string> &name)
{
    if (name) {
        DeviceName_ = *name;
        SanitizeDeviceName_ = SanitizeName(*name);
    }
}

std::string AppConstants::SanitizeName(const std::string &name)
{
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '/') {
            out += ':';
        } else if (name[i] == ':') {
            out += kFullwidthColon;
        } else if (!isAscii(name[i])) {
            out += name[i];
        } else {
            appendVisible(out, name, i);
        }
    }
    return out;
}

std::string AppConstants::RestoreName(const std::string &name)
{
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == ':') {
            out += '/';
        } else if (!isAscii(name[i])) {
            out += name[i];
        } else {
            appendVisible(out, name, i);
        }
    }
    return out;
}

} // namespace orv

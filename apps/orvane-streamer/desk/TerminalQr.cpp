#include "orvane-streamer/desk/TerminalQr.h"

#include <qrencode.h>

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>

namespace orv::apps {

namespace {

// As wide as the standard of QR codes wants it.
constexpr int kQuietModules = 4;
// Of a module, as the encoder gives it.
constexpr unsigned kDark = 1;

constexpr std::string_view kBlackOnWhite = "\x1b[38;5;16;48;5;231m";
constexpr std::string_view kUsualColours = "\x1b[0m";

class Modules {
public:
    explicit Modules(const std::string &text) : code_(encode(text), &QRcode_free)
    {
        if (!code_) {
            throw std::runtime_error("The text does not fit into a QR code.");
        }
        const auto side = static_cast<std::size_t>(code_->width);
        modules_ = {code_->data, side * side};
    }

    [[nodiscard]] int width() const { return code_->width; }
    /// What lies outside is light.
    [[nodiscard]] bool isDark(int x, int y) const
    {
        if (x < 0 || y < 0 || x >= width() || y >= width()) {
            return false;
        }
        const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(width());
        return (modules_[row + static_cast<std::size_t>(x)] & kDark) != 0;
    }

private:
    static QRcode *encode(const std::string &text)
    {
        if (text.empty() || text.find('\0') != std::string::npos) {
            throw std::runtime_error("A QR code needs a text without zero bytes.");
        }
        return QRcode_encodeString(text.c_str(), 0, QR_ECLEVEL_L, QR_MODE_8, 1);
    }

    std::unique_ptr<QRcode, decltype(&QRcode_free)> code_;
    std::span<const unsigned char> modules_;
};

} // namespace

std::string terminalQr(const std::string &text, bool colours)
{
    constexpr std::array<std::string_view, 4> blocks{" ", "▄", "▀", "█"};
    const Modules modules(text);
    const int end = modules.width() + kQuietModules;
    std::string lines;
    for (int y = -kQuietModules; y < end; y += 2) {
        lines += colours ? kBlackOnWhite : "";
        for (int x = -kQuietModules; x < end; ++x) {
            const std::size_t upper = modules.isDark(x, y) ? 2 : 0;
            const std::size_t lower = modules.isDark(x, y + 1) ? 1 : 0;
            lines += blocks.at(upper + lower);
        }
        lines += colours ? kUsualColours : "";
        lines += '\n';
    }
    return lines;
}

} // namespace orv::apps

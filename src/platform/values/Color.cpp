#include "platform/values/Color.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace orv::platform {

namespace {

// The largest 32-bit float below 256: 1.0 becomes 255 and no value becomes 256.
constexpr double kHexScale = 255.99998474121094;
constexpr double kLightThreshold = 0.8;

unsigned hexByte(double component)
{
    return static_cast<unsigned>(std::clamp(component, 0.0, 1.0) * kHexScale);
}

} // namespace

std::string Color::hexValue() const
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", hexByte(red_), hexByte(green_),
                  hexByte(blue_));
    return text.data();
}

Color Color::colorFromHexValue(std::string_view hex)
{
    if (hex.starts_with('#')) {
        hex.remove_prefix(1);
    }
    const std::string text(hex);
    const auto number = static_cast<std::uint32_t>(std::strtoul(text.c_str(), nullptr, 16));
    return {((number >> 16U) & 0xFFU) / 255.0, ((number >> 8U) & 0xFFU) / 255.0,
            (number & 0xFFU) / 255.0, 1.0};
}

Color Color::lightenColorByValue(float value) const
{
    return {std::min(red_ + value, 1.0), std::min(green_ + value, 1.0),
            std::min(blue_ + value, 1.0), alpha_};
}

Color Color::darkenColorByValue(float value) const
{
    return {std::max(red_ - value, 0.0), std::max(green_ - value, 0.0),
            std::max(blue_ - value, 0.0), alpha_};
}

Color Color::setAlphaValue(float alpha) const
{
    Color copy = *this;
    copy.alpha_ = alpha;
    return copy;
}

bool Color::isLightColor() const
{
    const double brightness = components_ == 2 ? red_ : (red_ + green_ + blue_) / 3.0;
    return brightness > kLightThreshold;
}

} // namespace orv::platform

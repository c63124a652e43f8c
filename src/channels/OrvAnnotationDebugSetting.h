#pragma once

#include "platform/values/Color.h"

#include <string>

namespace orv {

/// Colours and margin of what a canvas shows of itself in debug use.
class OrvAnnotationDebugSetting {
public:
    /// Hexadecimal, with or without a leading "#"; empty for the default colour.
    void setPBorderColorHex(const std::string &hex) { pBorderColorHex_ = hex; }
    [[nodiscard]] const std::string &pBorderColorHex() const { return pBorderColorHex_; }
    void setPDebugInfoColorHex(const std::string &hex) { pDebugInfoColorHex_ = hex; }
    [[nodiscard]] const std::string &pDebugInfoColorHex() const { return pDebugInfoColorHex_; }
    /// Margin of the debug text, in points.
    void setOffset(double offset) { offset_ = offset; }
    [[nodiscard]] double offset() const { return offset_; }

    /// Orange unless a colour is set.
    [[nodiscard]] platform::Color pBorderColor() const
    {
        return colorOr(pBorderColorHex_, platform::Color::orange());
    }
    /// Green unless a colour is set.
    [[nodiscard]] platform::Color pDebugInfoColor() const
    {
        return colorOr(pDebugInfoColorHex_, platform::Color::green());
    }

private:
    static platform::Color colorOr(const std::string &hex, const platform::Color &fallback)
    {
        return hex.empty() ? fallback : platform::Color::colorFromHexValue(hex);
    }

    std::string pBorderColorHex_;
    std::string pDebugInfoColorHex_;
    double offset_ = 0.0;
};

} // namespace orv

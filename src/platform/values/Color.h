#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orv::platform {

/// A colour of four components, each 0.0 to 1.0, not premultiplied.
///
/// A gray colour has one colour component and an alpha; it is kept as three equal ones and says so
/// through `componentCount`. Numbers are painted as they stand: no colour space is converted.
class Color {
public:
    constexpr Color() = default;
    constexpr Color(double red, double green, double blue, double alpha = 1.0)
        : red_(red), green_(green), blue_(blue), alpha_(alpha)
    {
    }

    static constexpr Color clear() { return gray(0.0, 0.0); }
    static constexpr Color black() { return gray(0.0, 1.0); }
    static constexpr Color white() { return gray(1.0, 1.0); }
    static constexpr Color orange() { return {1.0, 0.5, 0.0, 1.0}; }
    static constexpr Color green() { return {0.0, 1.0, 0.0, 1.0}; }
    static constexpr Color gray(double white, double alpha)
    {
        Color color(white, white, white, alpha);
        color.components_ = 2;
        return color;
    }

    [[nodiscard]] constexpr double red() const { return red_; }
    [[nodiscard]] constexpr double greenComponent() const { return green_; }
    [[nodiscard]] constexpr double blue() const { return blue_; }
    [[nodiscard]] constexpr double alpha() const { return alpha_; }
    /// 2 for a gray with alpha, else 4.
    [[nodiscard]] constexpr int componentCount() const { return components_; }

    /// "#rrggbb": each component multiplied by 255.99998474121094 and truncated.
    [[nodiscard]] std::string hexValue() const;
    /// Bits 16-23, 8-15 and 0-7 of the hexadecimal number, with or without a leading "#", each
    /// divided by 255; alpha 1. A text that does not scan counts as 0, which is black.
    [[nodiscard]] static Color colorFromHexValue(std::string_view hex);
    /// Adds to red, green and blue, at most 1.0; alpha is kept.
    [[nodiscard]] Color lightenColorByValue(float value) const;
    /// Subtracts from red, green and blue, at least 0.0; alpha is kept.
    [[nodiscard]] Color darkenColorByValue(float value) const;
    [[nodiscard]] Color setAlphaValue(float alpha) const;
    /// Brightness above 0.8: the gray value of a gray, else the mean of red, green and blue.
    [[nodiscard]] bool isLightColor() const;

    friend bool operator==(const Color &, const Color &) = default;

private:
    double red_ = 0.0;
    double green_ = 0.0;
    double blue_ = 0.0;
    double alpha_ = 1.0;
    int components_ = 4;
};

} // namespace orv::platform

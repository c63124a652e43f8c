#pragma once

#include "platform/ports/GraphicsContext.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace orv::platform {

/// The rasteriser's way to divide by 255: to the nearest but for a few sums just above a half.
inline int dividedBy255(int sum)
{
    return (sum + sum / 256 + 128) / 256;
}

/// What a side of a Porter-Duff operation is multiplied by.
enum class Factor { zero, one, aboveAlpha, belowAlpha, notAboveAlpha, notBelowAlpha };

/// Result = above * a + below * b, all premultiplied bytes.
struct PorterDuff {
    std::string name;
    CompositingOperation operation;
    BlendMode mode;
    Factor aboveFactor;
    Factor belowFactor;

    [[nodiscard]] std::uint32_t of(std::uint32_t above, std::uint32_t below) const
    {
        const int sa = static_cast<int>(above >> 24U);
        const int da = static_cast<int>(below >> 24U);
        std::uint32_t result = 0;
        for (unsigned shift = 0; shift < 32; shift += 8) {
            int whole = 0;
            int products = 0;
            const auto add = [&](Factor factor, std::uint32_t pixel) {
                const int component = static_cast<int>((pixel >> shift) & 0xFFU);
                whole += factor == Factor::one ? component : 0;
                products += component * weight(factor, sa, da);
            };
            add(aboveFactor, above);
            add(belowFactor, below);
            const int sum = std::min(whole + dividedBy255(products), 255);
            result |= static_cast<std::uint32_t>(sum) << shift;
        }
        return result;
    }
    friend std::ostream &operator<<(std::ostream &out, const PorterDuff &p)
    {
        return out << p.name;
    }

private:
    /// In 255ths; what is taken whole is no product.
    static int weight(Factor factor, int sa, int da)
    {
        switch (factor) {
        case Factor::aboveAlpha:
            return sa;
        case Factor::belowAlpha:
            return da;
        case Factor::notAboveAlpha:
            return 255 - sa;
        case Factor::notBelowAlpha:
            return 255 - da;
        case Factor::zero:
        case Factor::one:
            break;
        }
        return 0;
    }
};

inline std::vector<PorterDuff> porterDuffOperations()
{
    using Op = CompositingOperation;
    using Mode = BlendMode;
    using F = Factor;
    return {
        {"clear", Op::clear, Mode::clear, F::zero, F::zero},
        {"copy", Op::copy, Mode::copy, F::one, F::zero},
        {"sourceOver", Op::sourceOver, Mode::normal, F::one, F::notAboveAlpha},
        {"sourceIn", Op::sourceIn, Mode::sourceIn, F::belowAlpha, F::zero},
        {"sourceOut", Op::sourceOut, Mode::sourceOut, F::notBelowAlpha, F::zero},
        {"sourceAtop", Op::sourceAtop, Mode::sourceAtop, F::belowAlpha, F::notAboveAlpha},
        {"destinationOver", Op::destinationOver, Mode::destinationOver, F::notBelowAlpha, F::one},
        {"destinationIn", Op::destinationIn, Mode::destinationIn, F::zero, F::aboveAlpha},
        {"destinationOut", Op::destinationOut, Mode::destinationOut, F::zero, F::notAboveAlpha},
        {"destinationAtop", Op::destinationAtop, Mode::destinationAtop, F::notBelowAlpha,
         F::aboveAlpha},
        {"exclusiveOr", Op::exclusiveOr, Mode::exclusiveOr, F::notBelowAlpha, F::notAboveAlpha},
        {"plusLighter", Op::plusLighter, Mode::plusLighter, F::one, F::one},
    };
}

/// Result = f(above, below) + above (1 - below alpha) + below (1 - above alpha), all 0 to 1 and
/// premultiplied.
struct Separable {
    std::string name;
    BlendMode mode;
    double (*common)(double s, double d, double sa, double da);
    /// By how much a component may be off.
    int tolerance = 1;

    [[nodiscard]] std::uint32_t of(std::uint32_t above, std::uint32_t below) const
    {
        const double sa = (above >> 24U) / 255.0;
        const double da = (below >> 24U) / 255.0;
        const double alpha = sa + da - sa * da;
        auto result = static_cast<std::uint32_t>(std::lround(alpha * 255.0)) << 24U;
        for (unsigned shift = 0; shift < 24; shift += 8) {
            const double s = ((above >> shift) & 0xFFU) / 255.0;
            const double d = ((below >> shift) & 0xFFU) / 255.0;
            const double sum = common(s, d, sa, da) + s * (1.0 - da) + d * (1.0 - sa);
            result |= static_cast<std::uint32_t>(std::lround(sum * 255.0)) << shift;
        }
        return result;
    }
    friend std::ostream &operator<<(std::ostream &out, const Separable &s) { return out << s.name; }
};

namespace formula {

inline double hardLight(double s, double d, double sa, double da)
{
    return 2.0 * s < sa ? 2.0 * s * d : sa * da - 2.0 * (da - d) * (sa - s);
}

inline double colorDodge(double s, double d, double sa, double da)
{
    if (s * da + d * sa > sa * da) {
        return sa * da;
    }
    return s == sa ? 0.0 : d * sa / (1.0 - s / sa);
}

inline double colorBurn(double s, double d, double sa, double da)
{
    if (s * da + d * sa < sa * da || s == 0.0) {
        return s * da + d * sa < sa * da ? 0.0 : d * sa;
    }
    return sa * (s * da + d * sa - sa * da) / s;
}

inline double softLight(double s, double d, double sa, double da)
{
    if (da == 0.0) {
        return 0.0;
    }
    const double ratio = d / da;
    if (2.0 * s <= sa) {
        return d * (sa + (2.0 * s - sa) * (1.0 - ratio));
    }
    const double bent = 4.0 * ratio <= 1.0 ? ((16.0 * ratio - 12.0) * ratio + 3.0) * ratio
                                           : std::sqrt(ratio) - ratio;
    return d * sa + da * (2.0 * s - sa) * bent;
}

} // namespace formula

inline std::vector<Separable> separableModes()
{
    using Mode = BlendMode;
    return {
        {"multiply", Mode::multiply, [](double s, double d, double, double) { return s * d; }},
        {"screen", Mode::screen,
         [](double s, double d, double sa, double da) { return s * da + d * sa - s * d; }},
        {"overlay", Mode::overlay,
         [](double s, double d, double sa, double da) { return formula::hardLight(d, s, da, sa); }},
        {"darken", Mode::darken,
         [](double s, double d, double sa, double da) { return std::min(s * da, d * sa); }},
        {"lighten", Mode::lighten,
         [](double s, double d, double sa, double da) { return std::max(s * da, d * sa); }},
        {"colorDodge", Mode::colorDodge, formula::colorDodge},
        {"colorBurn", Mode::colorBurn, formula::colorBurn},
        {"softLight", Mode::softLight, formula::softLight, 2},
        {"hardLight", Mode::hardLight, formula::hardLight},
        {"difference", Mode::difference,
         [](double s, double d, double sa, double da) {
             return s * da + d * sa - 2.0 * std::min(s * da, d * sa);
         }},
        {"exclusion", Mode::exclusion,
         [](double s, double d, double sa, double da) { return s * da + d * sa - 2.0 * s * d; }},
    };
}

} // namespace orv::platform

#pragma once

#include <cstddef>
#include <cstdint>

namespace orv::platform {

class GraphicsContext;

/// Things that are drawn one over another, told apart so that who draws may keep what stays.
///
/// Only the last one may look otherwise than when it was drawn before; what lies below it stays as
/// it is for as long as the stamps say so.
///
/// Thread   that of the context.
class DrawnList {
public:
    virtual ~DrawnList() = default;

    [[nodiscard]] virtual std::size_t size() const = 0;
    /// As long as this number stands for the first `count` things, they are the same things in the
    /// same order; no two different beginnings of any lists have the same one. 0 for none of them.
    [[nodiscard]] virtual std::uint64_t stamp(std::size_t count) const = 0;
    /// In the state that the context is in, which is left as it was found.
    virtual void draw(std::size_t index, GraphicsContext &context) const = 0;
};

} // namespace orv::platform

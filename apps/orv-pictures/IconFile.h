#pragma once

#include <QByteArray>

#include <string>
#include <vector>

namespace orv::pictures {

/// One size of an icon: a type of four characters and the PNG.
struct IconMember {
    std::string type;
    QByteArray png;
};

/// A size that an icon holds, in pixels a side, and the type that says so.
struct IconSize {
    const char *type;
    int side;
};

[[nodiscard]] const std::vector<IconSize> &iconSizes();

/// An 'icns' container: magic, length of the whole, then each member's type, length and bytes; a
/// length is big-endian and counts its own eight bytes.
[[nodiscard]] QByteArray iconFile(const std::vector<IconMember> &members);

} // namespace orv::pictures

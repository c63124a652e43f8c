#include "orv-pictures/IconFile.h"

#include <QtEndian>

#include <cstdint>

namespace orv::pictures {

namespace {

void appendHead(const char *type, qsizetype length, QByteArray &out)
{
    const auto wire = qToBigEndian(static_cast<std::uint32_t>(length));
    out.append(type, 4);
    out.append(reinterpret_cast<const char *>(&wire), sizeof wire);
}

} // namespace

const std::vector<IconSize> &iconSizes()
{
    static const std::vector<IconSize> sizes{{"ic07", 128}, {"ic08", 256}, {"ic09", 512}};
    return sizes;
}

QByteArray iconFile(const std::vector<IconMember> &members)
{
    constexpr qsizetype head = 8;
    QByteArray body;
    for (const IconMember &member : members) {
        appendHead(member.type.c_str(), head + member.png.size(), body);
        body.append(member.png);
    }
    QByteArray whole;
    appendHead("icns", head + body.size(), whole);
    return whole.append(body);
}

} // namespace orv::pictures

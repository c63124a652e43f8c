#include "platform/raster/IconContainer.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace orv::platform {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::array<std::uint8_t, 4> kMagic{'i', 'c', 'n', 's'};
constexpr std::array<std::uint8_t, 8> kPngSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::size_t kHeaderBytes = 8;
/// A PNG begins with its header chunk: length, name, width, height.
constexpr std::size_t kPngWidthAt = 16;
constexpr std::size_t kPngHeightAt = 20;
constexpr std::size_t kPngSizeEnd = 24;

template <std::size_t count> bool beginsWith(Bytes bytes, const std::array<std::uint8_t, count> &as)
{
    return bytes.size() >= count && std::equal(as.begin(), as.end(), bytes.begin());
}

std::uint64_t numberAt(Bytes bytes, std::size_t place)
{
    std::uint64_t number = 0;
    for (const std::uint8_t byte : bytes.subspan(place, 4)) {
        number = number << 8U | byte;
    }
    return number;
}

/// 0 for what is no PNG.
std::uint64_t pixelsOfPng(Bytes bytes)
{
    return beginsWith(bytes, kPngSignature) && bytes.size() >= kPngSizeEnd
               ? numberAt(bytes, kPngWidthAt) * numberAt(bytes, kPngHeightAt)
               : 0;
}

} // namespace

bool isIconContainer(Bytes bytes)
{
    return beginsWith(bytes, kMagic);
}

Bytes largestPngMember(Bytes container)
{
    if (!isIconContainer(container) || container.size() < kHeaderBytes) {
        return {};
    }
    const std::uint64_t whole = numberAt(container, 4);
    if (whole < kHeaderBytes || whole > container.size()) {
        return {};
    }
    Bytes largest;
    Bytes rest = container.first(static_cast<std::size_t>(whole)).subspan(kHeaderBytes);
    while (!rest.empty()) {
        const std::uint64_t length = rest.size() < kHeaderBytes ? 0 : numberAt(rest, 4);
        if (length < kHeaderBytes || length > rest.size()) {
            return {};
        }
        const Bytes member = rest.first(static_cast<std::size_t>(length)).subspan(kHeaderBytes);
        if (pixelsOfPng(member) > pixelsOfPng(largest)) {
            largest = member;
        }
        rest = rest.subspan(static_cast<std::size_t>(length));
    }
    return largest;
}

} // namespace orv::platform

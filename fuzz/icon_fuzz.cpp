#include "platform/raster/IconContainer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

// Icon files that somebody else made: whatever their lengths claim, a member lies in its container.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::span<const std::uint8_t> bytes(data, size);
    if (!orv::platform::isIconContainer(bytes)) {
        return 0;
    }
    const auto member = orv::platform::largestPngMember(bytes);
    const bool isInside =
        member.empty() || (member.data() >= data && member.data() + member.size() <= data + size);
    if (!isInside) {
        std::abort();
    }
    return 0;
}

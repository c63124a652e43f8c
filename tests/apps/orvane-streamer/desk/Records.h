#pragma once

#include "OrvAnnotation/Records.h"

#include <cstddef>
#include <cstdint>

namespace orv::apps::test {

inline void putWord(stCommand_mgs &record, std::size_t offset, std::uint32_t value)
{
    for (std::size_t i = 0; i < 4; ++i) {
        record.ext.at(offset + i) = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
}

inline stCommand_mgs record(std::uint32_t wparam, std::uint32_t lparam, std::uint32_t first,
                            std::uint32_t second)
{
    stCommand_mgs made;
    made.headerWord2 = 1;
    made.wparam = wparam;
    made.lparam = lparam;
    putWord(made, 0, first);
    putWord(made, 4, second);
    return made;
}

inline stCommand_mgs mouse(std::uint32_t event, std::uint32_t first, std::uint32_t second)
{
    return record(0xEFFD, event, first, second);
}

inline stCommand_mgs key(std::uint32_t code, bool down)
{
    return record(0xEFFE, down ? 1 : 2, code, 0);
}

inline stCommand_mgs typed(std::uint32_t unit)
{
    return record(0xEFFE, 64, 0, unit);
}

} // namespace orv::apps::test

#pragma once

#include "platform/foundation/UserInfo.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orv::platform {

/// Writes a binary property list from the leaves up: each value is written once its parts are.
///
/// Equal strings and numbers get one reference. References are 32 bits wide, so that values
/// need not wait until their number is known.
///
/// Fails     with an Exception when there are more values than references can tell apart.
class BinaryPropertyListWriter {
public:
    /// The number of a value in the file.
    using Ref = std::uint32_t;

    BinaryPropertyListWriter();

    Ref addInt(std::int64_t value);
    Ref addFloat(float value);
    Ref addDouble(double value);
    Ref addBool(bool value);
    /// UTF-8; a malformed byte becomes U+FFFD.
    Ref addString(std::string_view text);
    Ref addData(std::span<const std::uint8_t> bytes);
    /// Not looked up among the older ones: the caller keeps track of its UIDs.
    Ref addUid(std::uint32_t uid);
    Ref addArray(std::span<const Ref> values);
    /// An array that many values share; an equal one is not written again.
    Ref addSharedArray(std::span<const Ref> values);
    /// As many keys, which are strings, as values.
    Ref addDictionary(std::span<const Ref> keys, std::span<const Ref> values);

    /// Closes the list with its offset table and gives the bytes; the writer is then spent.
    [[nodiscard]] Data finish(Ref top);

private:
    /// Looks up encoded bytes without a copy of them.
    struct BytesHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view bytes) const
        {
            return std::hash<std::string_view>{}(bytes);
        }
    };

    Ref begin();
    Ref addUnique();
    /// So many more bytes at the end.
    std::uint8_t *room(std::size_t count);
    void putByte(std::uint8_t byte);
    void putBigEndian(std::uint64_t value, std::size_t width);
    void putCount(std::uint8_t kind, std::size_t count);
    void putRefs(std::span<const Ref> refs);

    Data bytes_;
    /// By reference: where the value begins.
    std::vector<std::uint64_t> offsets_;
    /// By encoded bytes: the values of which equal ones are not written again.
    std::unordered_map<std::string, Ref, BytesHash, std::equal_to<>> unique_;
};

} // namespace orv::platform

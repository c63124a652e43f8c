#pragma once

#include "platform/foundation/UserInfo.h"

#include <endian.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace orv::platform {

/// The values of a binary property list, each read in place when it is asked for.
///
/// The constructor looks at every value once: each lies inside the bytes, and all together take no
/// more bytes than there are, so that no walk over all values costs more than the file's size.
/// Whether values contain each other in a circle is for the caller to guard.
///
/// Owns      the bytes.
/// Fails     with an Exception that names the value and its place.
class BinaryPropertyList {
public:
    /// The number of a value, from 0.
    using Ref = std::uint32_t;
    enum class Type {
        null,
        boolean,
        integer,
        real,
        date,
        data,
        asciiString,
        utf16String,
        uid,
        array,
        set,
        dictionary,
    };
    /// Where a value's content lies.
    struct Item {
        Type type;
        /// Bytes of a number, UID, data or ASCII string, units of a UTF-16 string, values of a
        /// list, entries of a dictionary; the value itself of a boolean.
        std::size_t count;
        /// Where the content begins, counted from the first byte.
        std::size_t body;
    };

    explicit BinaryPropertyList(Data bytes);

    [[nodiscard]] Ref top() const { return top_; }
    [[nodiscard]] Ref size() const { return size_; }
    [[nodiscard]] std::size_t byteCount() const { return bytes_.size(); }

    [[nodiscard]] Item item(Ref ref) const;

    /// An integer of the file may have 128 bits; one that 64 signed bits can't hold throws.
    [[nodiscard]] std::int64_t integer(const Item &item) const;
    [[nodiscard]] double real(const Item &item) const;
    [[nodiscard]] std::uint64_t uid(const Item &item) const;
    [[nodiscard]] std::span<const std::uint8_t> data(const Item &item) const;
    /// UTF-8; a surrogate without its partner becomes U+FFFD.
    [[nodiscard]] std::string text(const Item &item) const;
    /// Takes no longer than `text` is long.
    [[nodiscard]] bool isText(const Item &item, std::string_view text) const;
    /// A value of a list; the caller keeps `index` below the count.
    [[nodiscard]] Ref element(const Item &item, std::size_t index) const;
    [[nodiscard]] Ref key(const Item &item, std::size_t index) const;
    [[nodiscard]] Ref value(const Item &item, std::size_t index) const;
    /// Whether two lists of as many values, or the keys of two dictionaries of as many entries, are
    /// the same values in the same order.
    [[nodiscard]] bool haveSameReferences(const Item &a, const Item &b) const;

private:
    void readTrailer();
    void checkValues() const;
    [[nodiscard]] Item itemAt(std::size_t offset) const;
    [[nodiscard]] Item countedItemAt(std::size_t offset) const;
    [[nodiscard]] std::size_t bodyBytes(const Item &item) const;
    /// `width` is from 1 to 8.
    [[nodiscard]] std::uint64_t bigEndian(std::size_t offset, std::size_t width) const
    {
        // The trailer behind all numbers is long enough to read the widest of them anywhere.
        std::uint64_t value = 0;
        std::memcpy(&value, bytes_.data() + offset, sizeof value);
        return be64toh(value) >> (8U * (sizeof value - width));
    }
    [[nodiscard]] Ref reference(std::size_t offset) const;

    Data bytes_;
    std::size_t offsetWidth_ = 0;
    std::size_t refWidth_ = 0;
    /// Where the values end and the table of their places begins.
    std::size_t table_ = 0;
    Ref size_ = 0;
    Ref top_ = 0;
};

} // namespace orv::platform
